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
            return std::make_shared<QuarantineContents>(QuarantineContents::read(host, dir));
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

} // namespace brivane
