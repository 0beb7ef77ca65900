#pragma once

#include "app/MenuModel.h"
#include "app/Module.h"
#include "app/NavigationModel.h"
#include "core/AppMode.h"

#include <QColor>
#include <QCoroTask>
#include <QObject>
#include <QUrl>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <map>
#include <memory>
#include <optional>
#include <set>

namespace brivane {

class ActivityTracker;
class CleaningSessionState;
class Composition;
class Navigation;
struct KeyboardCommand;

/// The frame that the modules live in: which of them is on screen, which are busy, what the keys
/// and the menu do. It knows them by their rows only. Screens come and go with the module; the view
/// models that do the work are made here and stay. GUI thread.
///
/// Keys and menu post notifications, to which the modules listen. During a cleaning session they
/// have no effect.
class ShellViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application brings it")
    Q_PROPERTY(brivane::AppMode::Mode appMode READ appMode WRITE setAppMode NOTIFY appModeChanged)
    /// The QML file of the module on screen, empty until what it works on is there, and the initial
    /// properties that it is made with.
    Q_PROPERTY(QUrl screen READ screen NOTIFY screenEntered)
    Q_PROPERTY(QVariantMap screenProperties READ screenProperties NOTIFY screenEntered)
    Q_PROPERTY(QString title READ title NOTIFY appModeChanged)
    Q_PROPERTY(QString iconName READ iconName NOTIFY appModeChanged)
    Q_PROPERTY(QColor accent READ accent NOTIFY appModeChanged)
    Q_PROPERTY(bool isNavigationShown READ isNavigationShown NOTIFY navigationShownChanged)
    /// What modules add to the sidebar, from the top: each with `source` and `properties`.
    Q_PROPERTY(QVariantList sidebarParts READ sidebarParts NOTIFY sidebarPartsChanged)
    Q_PROPERTY(brivane::NavigationModel* modes READ modes CONSTANT)
    Q_PROPERTY(brivane::MenuModel* menu READ menu CONSTANT)

public:
    /// Both have to outlive this.
    explicit ShellViewModel(Composition& composition, std::span<const Module> rows = modules(),
                            QObject* parent = nullptr);
    ~ShellViewModel() override;

    /// The module on screen; the dashboard at first.
    [[nodiscard]] AppMode::Mode appMode() const;
    void setAppMode(AppMode::Mode mode);
    /// The module whose row is under the pointer.
    [[nodiscard]] std::optional<AppMode::Mode> hoveredMode() const { return m_hoveredMode; }
    /// The pointer came to, or left, the row of `mode`. Rows may report in any order.
    Q_INVOKABLE void setHovered(brivane::AppMode::Mode mode, bool isHovered);

    /// Whether work of `mode` goes on that its row should tell of.
    [[nodiscard]] bool modeHasBackgroundActivity(AppMode::Mode mode) const;
    /// False during a cleaning session: the module has the window to itself.
    [[nodiscard]] bool isNavigationShown() const;

    /// Posts a notification of the menu.
    Q_INVOKABLE void post(const QString& notification);
    void perform(const KeyboardCommand& command);

    /// What the screen of `mode` works on; null before it was made, and where it is of another
    /// type.
    template<typename ViewModel>
    [[nodiscard]] ViewModel* viewModel(AppMode::Mode mode) const
    {
        return qobject_cast<ViewModel*>(viewModel(mode));
    }
    [[nodiscard]] QObject* viewModel(AppMode::Mode mode) const;

    [[nodiscard]] QUrl screen() const;
    [[nodiscard]] QVariantMap screenProperties() const;
    [[nodiscard]] QVariantList sidebarParts() const;
    [[nodiscard]] QString title() const { return AppMode::title(appMode()); }
    [[nodiscard]] QString iconName() const { return AppMode::iconName(appMode()); }
    [[nodiscard]] QColor accent() const;
    [[nodiscard]] NavigationModel* modes() { return &m_modes; }
    [[nodiscard]] MenuModel* menu() { return &m_menu; }

Q_SIGNALS:
    void appModeChanged();
    /// What the module of `appMode` needs is there: its screen can be made. Mostly at once.
    void screenEntered();
    void hoveredModeChanged();
    void backgroundActivityChanged();
    void navigationShownChanged();
    void sidebarPartsChanged();

private:
    [[nodiscard]] const Module* row(AppMode::Mode mode) const;
    void enter();
    QCoro::Task<> open(const Module* module);

    Composition& m_composition;
    const std::span<const Module> m_rows;
    Navigation& m_navigation;
    ActivityTracker& m_tracker;
    CleaningSessionState& m_cleaning;
    std::map<AppMode::Mode, std::unique_ptr<QObject>> m_viewModels;
    std::set<AppMode::Mode> m_opening; ///< whose view model is being made
    std::optional<AppMode::Mode> m_hoveredMode;
    NavigationModel m_modes;
    MenuModel m_menu;
};

} // namespace brivane
