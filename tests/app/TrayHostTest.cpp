#include "app/TrayHost.h"

#include "tests/support/SessionBus.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace brivane;
using namespace brivane::testing;

namespace {

const QString watcherName = u"org.kde.StatusNotifierWatcher"_s;

/// What a desktop brings, at some time: it knows whether anybody shows the icons.
class Watcher : public QDBusVirtualObject {
public:
    explicit Watcher(const SessionBus& bus)
        : m_bus(QDBusConnection::connectToBus(bus.address(), u"watcher"_s))
    {
        m_bus.registerVirtualObject(u"/StatusNotifierWatcher"_s, this);
        EXPECT_TRUE(m_bus.registerService(watcherName));
    }
    ~Watcher() override { QDBusConnection::disconnectFromBus(u"watcher"_s); }

    void setHost(bool isThere)
    {
        m_hasHost = isThere;
        m_bus.send(QDBusMessage::createSignal(u"/StatusNotifierWatcher"_s, watcherName,
                                              isThere ? u"StatusNotifierHostRegistered"_s
                                                      : u"StatusNotifierHostUnregistered"_s));
    }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        wasAsked = true;
        return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(m_hasHost))));
    }
    QString introspect(const QString& /*path*/) const override { return {}; }

    bool wasAsked = false;

private:
    QDBusConnection m_bus;
    bool m_hasHost = false;
};

} // namespace

TEST(TrayHost, ADesktopMayBringItsTrayLateAndTakeItAway)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    const SessionBus bus(machine);
    const TrayHost host(QDBusConnection::connectToBus(bus.address(), u"program"_s));
    EXPECT_FALSE(host.isAvailable());
    {
        Watcher watcher(bus);
        ASSERT_TRUE(waitUntil([&] { return watcher.wasAsked; }));
        EXPECT_FALSE(host.isAvailable()) << "nobody shows icons yet";
        for (const bool isThere : {true, false, true}) {
            watcher.setHost(isThere);
            EXPECT_TRUE(waitUntil([&] { return host.isAvailable() == isThere; }));
        }
    }
    EXPECT_TRUE(waitUntil([&] { return !host.isAvailable(); }));
    QDBusConnection::disconnectFromBus(u"program"_s);
}
