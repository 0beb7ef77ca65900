#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <algorithm>
#include <mutex>

namespace brivane {

/// Bytes that one thread gathers and another takes, up to a limit.
class DataCollector {
public:
    explicit DataCollector(qsizetype limit)
        : m_limit(limit)
    {
    }

    /// Whether all of `bytes` were taken. What is beyond the limit is not.
    bool append(QByteArrayView bytes)
    {
        const std::lock_guard lock(m_mutex);
        const qsizetype taken = std::min(bytes.size(), m_limit - m_data.size());
        m_data.append(bytes.first(taken));
        return taken == bytes.size();
    }

    [[nodiscard]] QByteArray data() const
    {
        const std::lock_guard lock(m_mutex);
        return m_data;
    }

private:
    const qsizetype m_limit;
    mutable std::mutex m_mutex;
    QByteArray m_data; ///< guarded by m_mutex
};

} // namespace brivane
