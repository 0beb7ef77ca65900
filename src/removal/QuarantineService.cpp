#include "removal/QuarantineService.h"

#include "core/Publish.h"
#include "removal/RestoreJournal.h"
#include "removal/StoreNames.h"

#include <cerrno>

namespace brivane {

QuarantineService::QuarantineService(Host& host, const AppSettings& settings,
                                     const QString& quarantineDir, QObject* parent)
    : QuarantineService(host, settings, quarantineDir,
                        QuarantineContents::read(host, quarantineDir), parent)
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

QFuture<Result<>> QuarantineService::save()
{
    if (m_saver)
        return m_saver->save();
    const FileError missing{ENOENT, m_quarantineDir, FileOperation::Write};
    return QtFuture::makeReadyFuture(Result<>(missing));
}

QList<QuarantineItem> QuarantineService::itemsToRecord() const
{
    QList<QuarantineItem> all = items();
    for (const auto& [handOver, announced] : m_announced)
        all += announced;
    return all;
}

void QuarantineService::setLastResult(const QString& text)
{
    publish(m_lastResult, text, this, &QuarantineService::lastResultChanged);
}

void QuarantineService::setProgress(const std::optional<OperationProgress>& progress)
{
    m_progress = progress;
    Q_EMIT progressChanged();
}

QVariant QuarantineService::progressVariant() const
{
    return m_progress ? QVariant::fromValue(*m_progress) : QVariant();
}

void QuarantineService::setReadOnlyReason(const QString& reason)
{
    publish(m_readOnlyReason, reason, this, &QuarantineService::readOnlyReasonChanged);
}

} // namespace brivane
