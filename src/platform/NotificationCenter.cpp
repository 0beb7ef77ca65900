#include "platform/NotificationCenter.h"

#include <utility>

namespace brivane {

/// One name. Its subscriptions are Qt connections, which are weak to the receiver, deliver on the
/// receiver's thread and may be made and used from any thread.
class NotificationCenter::Channel : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void posted();
};

void NotificationCenter::post(const QString& name)
{
    Q_EMIT channel(name)->posted();
}

void NotificationCenter::subscribe(const QString& name, QObject* receiver,
                                   std::function<void()> callback)
{
    QObject::connect(channel(name).get(), &Channel::posted, receiver, std::move(callback));
}

std::shared_ptr<NotificationCenter::Channel> NotificationCenter::channel(const QString& name)
{
    const std::lock_guard lock(m_mutex);
    std::shared_ptr<Channel>& found = m_channels[name];
    if (!found)
        found = std::make_shared<Channel>();
    return found;
}

} // namespace brivane

#include "NotificationCenter.moc"
