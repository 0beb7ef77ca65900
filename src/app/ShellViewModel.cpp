#include "app/ShellViewModel.h"

#include "app/KeyboardMap.h"
#include "app/ModeColors.h"
#include "core/ActivityTracker.h"
#include "core/CleaningSessionState.h"
#include "core/Composition.h"
#include "core/Navigation.h"
#include "core/NotificationNames.h"
#include "platform/Host.h"

#include <QPointer>

#include <algorithm>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

QUrl screenFile(QLatin1StringView file)
{
    return QUrl("qrc:/qt/qml/Brivane/"_L1 + file);
}

} // namespace

ShellViewModel::ShellViewModel(Composition& composition, std::span<const Module> rows,
                               QObject* parent)
    : QObject(parent)
    , m_composition(composition)
    , m_rows(rows)
    , m_navigation(composition.get<Navigation>())
    , m_tracker(composition.get<ActivityTracker>())
    , m_cleaning(composition.get<CleaningSessionState>())
    , m_modes(*this)
{
    connect(&m_navigation, &Navigation::appModeChanged, this, &ShellViewModel::enter);
    connect(&m_tracker, &ActivityTracker::activeProcessesChanged, this,
            &ShellViewModel::backgroundActivityChanged);
    connect(&m_cleaning, &CleaningSessionState::sessionActiveChanged, this,
            &ShellViewModel::navigationShownChanged);
    for (const Module& module : m_rows) {
        if (!module.sidebar.isEmpty())
            open(&module);
    }
    enter();
}

ShellViewModel::~ShellViewModel() = default;

const Module* ShellViewModel::row(AppMode::Mode mode) const
{
    const auto found = std::ranges::find(m_rows, mode, &Module::mode);
    return found != m_rows.end() ? &*found : nullptr;
}

AppMode::Mode ShellViewModel::appMode() const
{
    return m_navigation.appMode();
}

void ShellViewModel::setAppMode(AppMode::Mode mode)
{
    m_navigation.setAppMode(mode);
}

void ShellViewModel::enter()
{
    Q_EMIT appModeChanged();
    const Module* module = row(appMode());
    if (module && module->make && !viewModel(module->mode))
        open(module);
    else
        Q_EMIT screenEntered();
}

QCoro::Task<> ShellViewModel::open(const Module* module)
{
    if (!module->make || !m_opening.insert(module->mode).second)
        co_return;
    const QPointer<ShellViewModel> self(this);
    QCoro::Task<std::unique_ptr<QObject>> making = module->make(m_composition);
    std::unique_ptr<QObject> made = co_await making;
    if (!self)
        co_return;
    m_opening.erase(module->mode);
    if (!made)
        co_return;
    m_viewModels[module->mode] = std::move(made);
    if (!module->sidebar.isEmpty())
        Q_EMIT sidebarPartsChanged();
    if (appMode() == module->mode)
        Q_EMIT screenEntered();
}

void ShellViewModel::setHovered(AppMode::Mode mode, bool isHovered)
{
    if (isHovered == (m_hoveredMode == mode))
        return;
    m_hoveredMode = isHovered ? std::optional(mode) : std::nullopt;
    Q_EMIT hoveredModeChanged();
}

bool ShellViewModel::modeHasBackgroundActivity(AppMode::Mode mode) const
{
    const Module* module = row(mode);
    return module && m_tracker.isActive(module->activity);
}

bool ShellViewModel::isNavigationShown() const
{
    return !m_cleaning.isSessionActive();
}

void ShellViewModel::post(const QString& notification)
{
    if (isNavigationShown())
        m_composition.host().notifications.post(notification);
}

void ShellViewModel::perform(const KeyboardCommand& command)
{
    if (!command.mode)
        post(NotificationNames::rescan);
    else if (isNavigationShown())
        setAppMode(*command.mode);
}

QObject* ShellViewModel::viewModel(AppMode::Mode mode) const
{
    const auto found = m_viewModels.find(mode);
    return found != m_viewModels.end() ? found->second.get() : nullptr;
}

QUrl ShellViewModel::screen() const
{
    const Module* module = row(appMode());
    if (!module || module->screen.isEmpty())
        return screenFile("App/MissingModule.qml"_L1);
    if (module->make && !viewModel(module->mode))
        return {};
    return screenFile(module->screen);
}

QVariantMap ShellViewModel::screenProperties() const
{
    const Module* module = row(appMode());
    if (!module || module->screen.isEmpty())
        return {{u"shell"_s, QVariant::fromValue(const_cast<ShellViewModel*>(this))}};
    if (QObject* object = viewModel(module->mode))
        return {{u"viewModel"_s, QVariant::fromValue(object)}};
    return {};
}

QVariantList ShellViewModel::sidebarParts() const
{
    QVariantList parts;
    for (const Module& module : m_rows) {
        QObject* object = viewModel(module.mode);
        if (module.sidebar.isEmpty() || (module.make && !object))
            continue;
        QVariantMap properties;
        if (object)
            properties.insert(u"viewModel"_s, QVariant::fromValue(object));
        parts +=
            QVariantMap{{u"source"_s, screenFile(module.sidebar)}, {u"properties"_s, properties}};
    }
    return parts;
}

QColor ShellViewModel::accent() const
{
    return modeAccentColor(appMode());
}

} // namespace brivane
