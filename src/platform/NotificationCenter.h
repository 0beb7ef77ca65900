#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <mutex>

namespace brivane {

/// Signals between parts of the program that do not know each other: a name, nothing else.
///
/// May be used from any thread. A callback runs on its receiver's thread: at once when the poster
/// is on that thread, through its event loop otherwise. A receiver is never kept alive, and its
/// subscriptions end with it.
class NotificationCenter {
public:
    NotificationCenter() = default;
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;

    void post(const QString& name);

    /// Calls `callback` for each post of `name` until `receiver` is gone.
    void subscribe(const QString& name, QObject* receiver, std::function<void()> callback);

private:
    class Channel;
    std::shared_ptr<Channel> channel(const QString& name);

    std::mutex m_mutex;
    std::map<QString, std::shared_ptr<Channel>> m_channels; ///< guarded by m_mutex
};

} // namespace brivane
