#pragma once

#include "cleaner/CleanerService.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <mutex>

namespace brivane {

/// Brings the progress of a worker to the GUI thread, at a rate that a screen can use, however fast
/// the work is: what comes in between is passed over. Held by shared_ptr; its receiver outlives the
/// work.
class CleanProgressRelay : public std::enable_shared_from_this<CleanProgressRelay> {
public:
    using Publish = std::function<void(const CleanProgress&)>;

    /// `publish` is called on the thread of `receiver`, and not when that has gone.
    CleanProgressRelay(QObject& receiver, Publish publish)
        : m_receiver(receiver)
        , m_publish(std::move(publish))
    {
    }

    /// Any thread.
    void tell(const CleanProgress& progress)
    {
        const std::lock_guard lock(m_mutex);
        m_latest = progress;
        if (m_isPending)
            return;
        m_isPending = true;
        QMetaObject::invokeMethod(
            &m_receiver, [self = shared_from_this()] { self->publishLatest(); },
            Qt::QueuedConnection);
    }

    /// Nothing is published any more. The receiver's thread.
    void end()
    {
        const std::lock_guard lock(m_mutex);
        m_isPending = true;
        m_latest.reset();
    }

private:
    void publishLatest()
    {
        constexpr int interval = 50; // ms
        std::optional<CleanProgress> latest;
        {
            const std::lock_guard lock(m_mutex);
            latest.swap(m_latest);
            m_isPending = latest.has_value();
        }
        if (!latest)
            return;
        m_publish(*latest);
        QTimer::singleShot(interval, &m_receiver,
                           [self = shared_from_this()] { self->publishLatest(); });
    }

    QObject& m_receiver;
    const Publish m_publish;
    std::mutex m_mutex;
    std::optional<CleanProgress> m_latest; ///< guarded by m_mutex; what nobody has been told
    bool m_isPending = false;              ///< likewise
};

} // namespace brivane
