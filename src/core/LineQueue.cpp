#include "core/LineQueue.h"

#include <utility>

namespace brivane {

void LineQueue::append(QByteArrayView bytes)
{
    const std::lock_guard lock(m_mutex);
    if (!m_isCancelled)
        m_bytes.append(bytes);
    m_hasChanged.notify_one();
}

void LineQueue::close()
{
    const std::lock_guard lock(m_mutex);
    m_isClosed = true;
    m_hasChanged.notify_one();
}

void LineQueue::cancel()
{
    const std::lock_guard lock(m_mutex);
    m_isCancelled = true;
    m_bytes = {};
    m_hasChanged.notify_one();
}

QByteArray LineQueue::waitForBytes()
{
    std::unique_lock lock(m_mutex);
    m_hasChanged.wait(lock, [this] { return !m_bytes.isEmpty() || m_isClosed || m_isCancelled; });
    return std::exchange(m_bytes, {});
}

void LineQueue::forEachLine(const std::function<void(std::string_view)>& take)
{
    std::string unfinished;
    const auto takeUnfinished = [&] {
        if (!unfinished.empty())
            take(unfinished);
        unfinished.clear();
    };
    for (QByteArray bytes = waitForBytes(); !bytes.isEmpty(); bytes = waitForBytes()) {
        std::string_view rest(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        for (std::size_t end = rest.find('\n'); end != std::string_view::npos;
             end = rest.find('\n')) {
            if (!unfinished.empty()) {
                unfinished.append(rest.substr(0, end));
                takeUnfinished();
            } else if (end > 0) {
                take(rest.substr(0, end));
            }
            rest.remove_prefix(end + 1);
        }
        unfinished.append(rest);
    }
    const std::lock_guard lock(m_mutex);
    if (!m_isCancelled)
        takeUnfinished();
}

} // namespace brivane
