#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <mutex>

namespace brivane {

/// Bytes that one thread gathers and another takes.
class DataCollector {
public:
    void append(QByteArrayView bytes)
    {
        const std::lock_guard lock(m_mutex);
        m_data.append(bytes);
    }

    [[nodiscard]] QByteArray data() const
    {
        const std::lock_guard lock(m_mutex);
        return m_data;
    }

private:
    mutable std::mutex m_mutex;
    QByteArray m_data; ///< guarded by m_mutex
};

} // namespace brivane
