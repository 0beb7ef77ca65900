#include "app/TrayHost.h"

#include "core/Publish.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

const QString service = u"org.kde.StatusNotifierWatcher"_s;
const QString object = u"/StatusNotifierWatcher"_s;

} // namespace

TrayHost::TrayHost(QDBusConnection bus, QObject* parent)
    : QObject(parent)
    , m_bus(std::move(bus))
    , m_watcher(service, m_bus)
{
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayHost::ask);
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        ++m_questions;
        setAvailable(false);
    });
    // The watcher may be there before anyone who shows what it watches, and after.
    for (const QString& signal :
         {u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s})
        m_bus.connect(service, object, service, signal, this, SLOT(hostsChanged()));
    ask();
}

void TrayHost::ask()
{
    const unsigned question = ++m_questions;
    QDBusMessage message = QDBusMessage::createMethodCall(
        service, object, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    message << service << u"IsStatusNotifierHostRegistered"_s;
    message.setAutoStartService(false);
    auto* answer = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, question, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        // Anything but a truth is no answer; Qt would not take it for one either.
        if (question == m_questions)
            setAvailable(reply.isValid() && reply.value().variant() == QVariant(true));
        answer->deleteLater();
    });
}

void TrayHost::setAvailable(bool isAvailable)
{
    publish(m_isAvailable, isAvailable, this, &TrayHost::isAvailableChanged);
}

} // namespace brivane
