#include "removal/ManifestSaver.h"

#include <QCoroFuture>
#include <QPointer>

#include <cerrno>
#include <utility>

namespace brivane {

namespace {

void finish(QPromise<Result<>>& promise, const Result<>& result)
{
    promise.addResult(result);
    promise.finish();
}

} // namespace

ManifestSaver::ManifestSaver(QuarantineManifest manifest, List list)
    : m_manifest(std::make_shared<QuarantineManifest>(std::move(manifest)))
    , m_list(std::move(list))
{
    m_writer.run([shared = m_manifest] { shared->makeReserve(); });
}

ManifestSaver::~ManifestSaver()
{
    m_writer.waitForDone();
    for (const auto& unheard : {m_current, m_next}) {
        if (unheard)
            finish(*unheard, FileError{ECANCELED, {}, FileOperation::Write});
    }
}

QFuture<Result<>> ManifestSaver::save()
{
    if (!m_next) {
        m_next = std::make_shared<QPromise<Result<>>>();
        m_next->start();
        m_last = m_next->future();
        if (!m_current)
            write();
    }
    return m_last;
}

QCoro::Task<> ManifestSaver::write()
{
    const QPointer<ManifestSaver> self(this);
    m_current = std::exchange(m_next, nullptr);
    // What cannot be written is in memory still, and is tried again with the next save.
    const QFuture<Result<>> writing =
        m_writer.run([items = m_list(), manifest = m_manifest] { return manifest->save(items); });
    const Result<> result = co_await writing;
    if (!self)
        co_return;
    const auto written = std::exchange(m_current, nullptr);
    if (m_next)
        write();
    finish(*written, result);
}

} // namespace brivane
