#pragma once

#include "platform/PathText.h"
#include "sandbox/SandboxMachine.h"
#include "tests/support/AwaitTask.h"

#include <QProcess>

#include <stdexcept>

namespace brivane::testing {

/// A session bus of the test's own, on which nothing is started; the session's while it lives. (Not
/// GTestDBus, which waits for the end of a connection that GIO keeps.)
class SessionBus {
public:
    /// Its socket lies in a folder of `machine`.
    explicit SessionBus(const SandboxMachine& machine)
    {
        const QByteArray folder =
            PathText::toBytes(machine.directory(u"/bus")).toPercentEncoding("/");
        const QString configuration = machine.file(
            u"/bus.conf",
            "<busconfig><type>session</type><listen>unix:dir=" + folder +
                "</listen><policy context='default'><allow send_destination='*' "
                "eavesdrop='true'/><allow eavesdrop='true'/><allow own='*'/></policy></busconfig>");
        m_daemon.setProcessChannelMode(QProcess::SeparateChannels);
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                        QStringLiteral("--config-file"), configuration});
        if (!waitUntil([&] { return m_daemon.canReadLine(); }))
            throw std::runtime_error("no bus could be started");
        m_address = m_daemon.readLine().trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_address);
    }
    ~SessionBus()
    {
        m_daemon.kill();
        m_daemon.waitForFinished(5000);
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    }
    [[nodiscard]] QString address() const { return QString::fromLatin1(m_address); }

private:
    QProcess m_daemon;
    QByteArray m_address;
};

} // namespace brivane::testing
