#include "removal/ManifestSaver.h"

#include <QtConcurrentRun>

#include <utility>

namespace brivane {

ManifestSaver::ManifestSaver(QuarantineManifest manifest, List list)
    : m_manifest(std::make_shared<QuarantineManifest>(std::move(manifest)))
    , m_list(std::move(list))
{
    m_writer.setMaxThreadCount(1);
}

ManifestSaver::~ManifestSaver()
{
    m_writer.waitForDone();
}

QFuture<void> ManifestSaver::save()
{
    if (!m_next) {
        m_next = std::make_shared<QPromise<void>>();
        m_next->start();
        m_last = m_next->future();
        if (!m_isSaving)
            start();
    }
    return m_last;
}

void ManifestSaver::start()
{
    m_isSaving = true;
    QtConcurrent::run(&m_writer, [items = m_list(), manifest = m_manifest] {
        // What could not be written is in memory still, and is tried again with the next save.
        (void)manifest->save(items);
    }).then(this, [this, written = std::exchange(m_next, nullptr)] {
        m_isSaving = false;
        written->finish();
        if (m_next)
            start();
    });
}

} // namespace brivane
