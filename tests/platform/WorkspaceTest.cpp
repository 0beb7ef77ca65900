#include "platform/Workspace.h"

#include "platform/Pasteboard.h"
#include "platform/PathText.h"
#include "sandbox/SandboxMachine.h"
#include "tests/support/AwaitTask.h"
#include "tests/support/SessionBus.h"

#include <QClipboard>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLocalServer>
#include <QMimeData>
#include <QProcess>

#include <gtest/gtest.h>

// GIO's headers have names that are Qt's keywords elsewhere; they stand alone here.
#include <gio/gio.h>

using namespace Qt::StringLiterals;
using namespace brivane;
using namespace brivane::testing;

namespace {

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

/// A file manager on that bus. It answers while showed() runs.
class FileManager : public QDBusVirtualObject {
public:
    explicit FileManager(const SessionBus& bus)
        : m_connection(QDBusConnection::connectToBus(bus.address(), name()))
    {
        m_connection.registerVirtualObject(u"/org/freedesktop/FileManager1"_s, this);
        EXPECT_TRUE(m_connection.registerService(name()));
    }
    ~FileManager() override { QDBusConnection::disconnectFromBus(name()); }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        shown += message.arguments().value(0).toStringList();
        return connection.send(refuses ? message.createErrorReply(u"org.example.No"_s, u"No"_s)
                                       : message.createReply());
    }
    QString introspect(const QString& /*path*/) const override { return {}; }

    bool showed(qsizetype items)
    {
        return waitUntil([&] {
            g_main_context_iteration(nullptr, FALSE);
            return shown.size() == items;
        });
    }

    QStringList shown;
    bool refuses = false;

private:
    static QString name() { return u"org.freedesktop.FileManager1"_s; }

    QDBusConnection m_connection;
};

} // namespace

TEST(Workspace, FileManagerIsGivenEveryByteOfThePath)
{
    const SessionBus bus(OpeningMachine::machine());
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
              QStringList({u"file:///"_s, u"file:///a%20b/50%25%20%231%3F"_s,
                           u"file:///Gr%C3%BC%C3%9Fe/c%0A"_s, u"file:///invalid%20%FF%C3"_s}));
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
    const SessionBus bus(OpeningMachine::machine());
    EXPECT_TRUE(opensIt()) << "no file manager is on the bus";
    FileManager manager(bus);
    manager.refuses = true;
    EXPECT_TRUE(opensIt()) << "the file manager refuses";
    EXPECT_EQ(manager.shown.size(), 1);
}

TEST(Workspace, SilentBusHoldsUpNeitherTheCallerNorTheEnd)
{
    const QByteArray path = PathText::toBytes(OpeningMachine::machine().directory(u"/bus")) + "/s";
    QLocalServer silent;
    ASSERT_TRUE(silent.listen(PathText::fromBytes(path)));
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path);
    const auto before = OpeningMachine::opened();

    QElapsedTimer clock;
    clock.start();
    auto workspace = Workspace::ofThisMachine();
    workspace->reveal(u"/first"_s);
    workspace->reveal(u"/second"_s);
    EXPECT_TRUE(silent.waitForNewConnection(10'000)) << "nobody asked the bus";
    workspace.reset();
    EXPECT_LT(clock.elapsed(), 5000);
    EXPECT_EQ(OpeningMachine::opened(), before);
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
}

TEST(Pasteboard, PathLosesNoByteAndIsNoFileToCopy)
{
    const auto pasteboard = Pasteboard::ofThisMachine();
    for (const QByteArray path : {"/plain", "/Grüße #1\n", "/invalid \xFF\xC3"}) {
        pasteboard->setPath(PathText::fromBytes(path));
        const QMimeData& pasted = *QGuiApplication::clipboard()->mimeData();
        for (const QString& kind : {u"text/plain"_s, u"text/plain;charset=utf-8"_s})
            EXPECT_EQ(pasted.data(kind), path) << kind.toStdString();
        EXPECT_EQ(pasted.text(), QString::fromUtf8(path));
        EXPECT_FALSE(pasted.hasUrls());
        EXPECT_EQ(pasted.formats().size(), 2);
    }
}
