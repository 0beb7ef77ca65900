#include "platform/Workspace.h"

#include "platform/PathText.h"
#include "sandbox/SandboxMachine.h"
#include "tests/support/AwaitTask.h"

#include <QElapsedTimer>
#include <QProcess>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

// GIO's headers have names that are Qt's keywords elsewhere; they stand alone here.
#include <gio/gio.h>

using namespace Qt::StringLiterals;
using namespace brivane;
using brivane::testing::waitUntil;

namespace {

constexpr auto fileManager = "org.freedesktop.FileManager1";

/// A machine on which folders are opened by a command that records it. One for the whole program,
/// since GIO looks for its configuration once.
class OpeningMachine : public ::testing::Environment {
public:
    void SetUp() override
    {
        m_machine = std::make_unique<SandboxMachine>(SandboxMachine::temporary());
        const QByteArray command = PathText::toBytes(m_machine->command(u"/usr/bin/opener").path());
        m_machine->file(
            u"/data/applications/opener.desktop",
            "[Desktop Entry]\nType=Application\nName=Opener\nMimeType=inode/directory;\n"
            "Exec=\"" +
                command + "\" %u\n");
        m_machine->file(u"/config/mimeapps.list",
                        QByteArray("[Default Applications]\ninode/directory=opener.desktop\n"));
        const auto lead = [this](const char* name, QStringView folder) {
            qputenv(name, PathText::toBytes(m_machine->directory(folder)));
        };
        lead("HOME", u"~");
        lead("XDG_CONFIG_HOME", u"/config");
        lead("XDG_CONFIG_DIRS", u"/none");
        lead("XDG_DATA_HOME", u"/data");
        lead("XDG_DATA_DIRS", u"/none");
        lead("XDG_RUNTIME_DIR", u"/none");
        qputenv("GIO_USE_VFS", "local");
    }
    void TearDown() override { m_machine.reset(); }

    static const SandboxMachine& machine() { return *m_machine; }
    static QList<QStringList> opened() { return m_machine->command(u"/usr/bin/opener").calls(); }

private:
    static inline std::unique_ptr<SandboxMachine> m_machine;
};

const auto* const environment = ::testing::AddGlobalTestEnvironment(new OpeningMachine);

/// A session bus of the test's own, on which nothing is started; the session's while it lives. (Not
/// GTestDBus, which waits for the end of a connection that GIO keeps.)
class SessionBus {
public:
    SessionBus()
    {
        const SandboxMachine& machine = OpeningMachine::machine();
        const QByteArray folder =
            PathText::toBytes(machine.directory(u"/bus")).toPercentEncoding("/");
        const QString configuration = machine.file(
            u"/bus.conf",
            "<busconfig><type>session</type><listen>unix:dir=" + folder +
                "</listen><policy context='default'><allow send_destination='*' "
                "eavesdrop='true'/><allow eavesdrop='true'/><allow own='*'/></policy></busconfig>");
        m_daemon.setProcessChannelMode(QProcess::SeparateChannels);
        m_daemon.start(u"dbus-daemon"_s,
                       {u"--nofork"_s, u"--print-address"_s, u"--config-file"_s, configuration});
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
    [[nodiscard]] const char* address() const { return m_address.constData(); }

private:
    QProcess m_daemon;
    QByteArray m_address;
};

/// A file manager on that bus. It answers while waitFor() runs.
class FileManager {
public:
    explicit FileManager(const SessionBus& bus)
        : m_connection(g_dbus_connection_new_for_address_sync(
              bus.address(),
              static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
              nullptr, nullptr, nullptr))
    {
        GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(
            "<node><interface name='org.freedesktop.FileManager1'><method name='ShowItems'>"
            "<arg type='as' direction='in'/><arg type='s' direction='in'/>"
            "</method></interface></node>",
            nullptr);
        static constexpr GDBusInterfaceVTable table = {&FileManager::answer, nullptr, nullptr, {}};
        g_dbus_connection_register_object(m_connection, "/org/freedesktop/FileManager1",
                                          node->interfaces[0], &table, this, nullptr, nullptr);
        g_dbus_node_info_unref(node);
        g_variant_unref(g_dbus_connection_call_sync(
            m_connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "RequestName", g_variant_new("(su)", fileManager, 0U), nullptr, G_DBUS_CALL_FLAGS_NONE,
            -1, nullptr, nullptr));
    }
    FileManager(const FileManager&) = delete;
    FileManager& operator=(const FileManager&) = delete;
    ~FileManager()
    {
        g_dbus_connection_close_sync(m_connection, nullptr, nullptr);
        g_object_unref(m_connection);
    }

    bool showed(qsizetype items)
    {
        return waitUntil([&] {
            g_main_context_iteration(nullptr, FALSE);
            return shown.size() == items;
        });
    }

    QByteArrayList shown;
    bool refuses = false;

private:
    static void answer(GDBusConnection* /*connection*/, const char* /*sender*/,
                       const char* /*path*/, const char* /*interface*/, const char* /*method*/,
                       GVariant* arguments, GDBusMethodInvocation* invocation, gpointer self)
    {
        auto& manager = *static_cast<FileManager*>(self);
        const char** uris = nullptr;
        g_variant_get(arguments, "(^a&ss)", &uris, nullptr);
        manager.shown << QByteArrayList(uris, uris + g_strv_length(const_cast<char**>(uris)));
        g_free(uris);
        if (manager.refuses)
            g_dbus_method_invocation_return_dbus_error(invocation, "org.example.No", "No");
        else
            g_dbus_method_invocation_return_value(invocation, nullptr);
    }

    GDBusConnection* m_connection;
};

} // namespace

TEST(Workspace, FileManagerIsGivenEveryByteOfThePath)
{
    const SessionBus bus;
    FileManager manager(bus);
    const auto before = OpeningMachine::opened();
    {
        const auto workspace = Workspace::ofThisMachine();
        for (const QByteArray path : {"/", "/a b/50% #1?", "/Grüße/c\n", "/invalid \xFF\xC3"}) {
            workspace->reveal(PathText::fromBytes(path));
            ASSERT_TRUE(manager.showed(manager.shown.size() + 1)) << path.constData();
        }
    }
    EXPECT_EQ(manager.shown,
              (QByteArrayList{"file:///", "file:///a%20b/50%25%20%231%3F",
                              "file:///Gr%C3%BC%C3%9Fe/c%0A", "file:///invalid%20%FF%C3"}));
    EXPECT_EQ(OpeningMachine::opened(), before) << "the folder was opened as well";
}

TEST(Workspace, FolderIsOpenedWhereNoFileManagerHelps)
{
    const auto workspace = Workspace::ofThisMachine();
    const SandboxMachine& machine = OpeningMachine::machine();
    const QString folder = machine.directory(PathText::fromBytes("~/invalid \xFF"));
    const auto opensIt = [&] {
        const QList<QStringList> before = OpeningMachine::opened();
        workspace->reveal(folder + u"/item"_s);
        return waitUntil([&] {
            g_main_context_iteration(nullptr, FALSE);
            return OpeningMachine::opened() == before + QList<QStringList>{{folder}};
        });
    };
    EXPECT_TRUE(opensIt()) << "there is no bus";
    const SessionBus bus;
    EXPECT_TRUE(opensIt()) << "no file manager is on the bus";
    FileManager manager(bus);
    manager.refuses = true;
    EXPECT_TRUE(opensIt()) << "the file manager refuses";
    EXPECT_EQ(manager.shown.size(), 1);
}

TEST(Workspace, SilentBusHoldsUpNeitherTheCallerNorTheEnd)
{
    const QByteArray path = PathText::toBytes(OpeningMachine::machine().directory(u"/bus")) + "/s";
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), static_cast<qsizetype>(sizeof address.sun_path));
    std::copy(path.begin(), path.end(), address.sun_path);
    const int silent = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(::bind(silent, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(silent, 5), 0);
    const timeval longestWait = {10, 0};
    ::setsockopt(silent, SOL_SOCKET, SO_RCVTIMEO, &longestWait, sizeof longestWait);
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path);
    const auto before = OpeningMachine::opened();

    QElapsedTimer clock;
    clock.start();
    auto workspace = Workspace::ofThisMachine();
    workspace->reveal(u"/first"_s);
    workspace->reveal(u"/second"_s);
    int asked = -1;
    do
        asked = ::accept4(silent, nullptr, nullptr, SOCK_CLOEXEC);
    while (asked < 0 && errno == EINTR); // children of the other tests end
    EXPECT_GE(asked, 0) << "nobody asked the bus";
    workspace.reset();
    EXPECT_LT(clock.elapsed(), 5000);
    EXPECT_EQ(OpeningMachine::opened(), before);
    ::close(asked);
    ::close(silent);
    ::unlink(path.constData());
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
}
