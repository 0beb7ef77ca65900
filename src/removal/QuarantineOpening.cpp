// How a QuarantineService comes to its store: when it is made, and when it tries again.

#include "core/AppSettings.h"
#include "core/NotificationNames.h"
#include "core/Publish.h"
#include "removal/QuarantineService.h"
#include "removal/RestoreJournal.h"
#include "removal/StoreNames.h"

#include <QCoroFuture>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

QuarantineContents read(Host& host, const QString& quarantineDir)
{
    return QuarantineContents::read(quarantineDir, host.locations.home(), host.fileSystem,
                                    host.clock.now());
}

} // namespace

QuarantineService::QuarantineService(Host& host, const AppSettings& settings,
                                     const QString& quarantineDir, QObject* parent)
    : QuarantineService(host, settings, quarantineDir, read(host, quarantineDir), parent)
{
}

QuarantineService::QuarantineService(Host& host, const AppSettings& settings, QString quarantineDir,
                                     QuarantineContents contents, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_settings(settings)
    , m_quarantineDir(std::move(quarantineDir))
    , m_journal(std::make_shared<RestoreJournal>(m_quarantineDir + u'/' + StoreNames::journal,
                                                 host.fileSystem))
{
    connect(&m_items, &QuarantineItemModel::totalSizeChanged, this,
            &QuarantineService::totalSizeChanged);
    adopt(std::move(contents));
}

QuarantineService::~QuarantineService()
{
    using namespace std::chrono_literals;
    m_sweeper.leave(500ms);
}

void QuarantineService::adopt(QuarantineContents contents)
{
    const auto purgeDays = m_settings.quarantinePurgeDays();
    for (QuarantineItem& item : contents.items)
        item.purgeDays = purgeDays;
    m_items.replaceAll(contents.items);
    m_hasFolder = contents.hasFolder;
    m_lock = std::move(contents.lock);
    setReadOnlyReason(contents.refusal);
    if (!m_lock)
        return;
    m_saver = std::make_unique<ManifestSaver>(std::move(contents.manifest),
                                              [this] { return itemsToRecord(); });
    m_stored.run([leftovers = contents.leftovers, &fileSystem = m_host.fileSystem] {
        for (const QString& path : leftovers)
            (void)fileSystem.removeItem(path);
    });
    m_sweeper.run([journal = m_journal] { journal->sweep(); });
    if (contents.hasUnrecorded)
        (void)save();
    purgeExpired();
}

QCoro::Task<bool> QuarantineService::makeWritable()
{
    if (m_lock)
        co_return true;
    const QPointer<QuarantineService> self(this);
    if (!m_opening) {
        m_opening = m_stored.run([&host = m_host, dir = m_quarantineDir] {
            return std::make_shared<QuarantineContents>(read(host, dir));
        });
    }
    const Opening opening = *m_opening;
    const std::shared_ptr<QuarantineContents> contents = co_await opening;
    if (!self)
        co_return false;
    // The first of those who wait for it.
    if (m_opening) {
        m_opening.reset();
        adopt(std::move(*contents));
    }
    co_return m_lock != nullptr;
}

QCoro::Task<> QuarantineService::refresh()
{
    QCoro::Task<bool> trying = makeWritable();
    co_await trying;
}

void QuarantineService::purgeExpired()
{
    constexpr double millisecondsOfDay = 86'400'000;
    const QDateTime now = m_host.clock.now();
    const double limit = static_cast<double>(m_settings.quarantinePurgeDays()) * millisecondsOfDay;
    QStringList expired;
    for (const QuarantineItem& item : items()) {
        if (static_cast<double>(item.quarantineDate.msecsTo(now)) > limit)
            expired += item.quarantinePath;
    }
    if (!expired.isEmpty())
        removeExpired(std::move(expired));
}

QCoro::Task<> QuarantineService::removeExpired(QStringList quarantinePaths)
{
    const QPointer<QuarantineService> self(this);
    const QFuture<QSet<QString>> removing = startRemoval(std::move(quarantinePaths));
    const QSet<QString> removed = co_await removing;
    if (!self)
        co_return;
    m_items.removeStored(removed);
    (void)save();
    m_host.notifications.post(NotificationNames::diskSpaceChanged);
}

void QuarantineService::setReadOnlyReason(const QString& reason)
{
    publish(m_readOnlyReason, reason, this, &QuarantineService::readOnlyReasonChanged);
}

} // namespace brivane
