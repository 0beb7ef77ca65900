#include "app/SingleInstance.h"
#include "core/Log.h"
#include "tests/support/AppWindow.h"

#include <QFile>
#include <QProcess>

using namespace Qt::StringLiterals;
using namespace brivane;
using namespace brivane::testing;

namespace {

/// The real program as a process of its own, with its home and everything else in `machine`.
class Program {
public:
    enum Descriptors { Open, Closed };

    explicit Program(const SandboxMachine& machine, const QByteArray& token = {},
                     Descriptors descriptors = Open)
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, machine.directory(u"/home"));
        environment.insert(u"XDG_RUNTIME_DIR"_s, runtimeDirectory(machine));
        for (const char* name : {"XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            environment.remove(QString::fromLatin1(name));
        if (!token.isEmpty())
            environment.insert(u"XDG_ACTIVATION_TOKEN"_s, QString::fromLatin1(token));
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        const QString line =
            u"exec \"$0\""_s + (descriptors == Closed ? u" <&- >&- 2>&-"_s : QString());
        m_process.start(u"/bin/sh"_s, {u"-c"_s, line, QStringLiteral(BRIVANE_PROGRAM)});
    }
    ~Program()
    {
        m_process.kill();
        m_process.waitForFinished(5000);
    }

    static QString runtimeDirectory(const SandboxMachine& machine)
    {
        const QString directory = machine.directory(u"/run");
        machine.setMode(u"/run", 0700);
        return directory;
    }

    /// Whether it came to its end, well, by itself.
    bool ended()
    {
        return waitUntil([&] { return m_process.state() == QProcess::NotRunning; }) &&
               m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
    }
    bool isRunning() { return m_process.state() != QProcess::NotRunning; }
    /// What the standard descriptors lead to.
    QStringList standardDescriptors()
    {
        QStringList targets;
        for (int number = 0; number < 3; ++number)
            targets +=
                QFile::symLinkTarget(u"/proc/%1/fd/%2"_s.arg(m_process.processId()).arg(number));
        return targets;
    }
    void crash()
    {
        m_process.kill();
        m_process.waitForFinished(5000);
    }

private:
    QProcess m_process;
};

} // namespace

TEST(SecondStart, BringsTheFirstWindowToTheFrontAndEnds)
{
    const AppMachine machine;
    AppWindow app(machine);
    SingleInstance first(machine.machine.directory(u"/run/brivane"));
    machine.machine.setMode(u"/run/brivane", 0700);
    ASSERT_EQ(first.start(), SingleInstance::Start::First);
    QByteArray token;
    QObject::connect(&first, &SingleInstance::activationRequested, &app.app(),
                     [&](const QByteArray& given) {
                         token = given;
                         app.app().bringToFront(given);
                     });
    app.window().showMinimized();
    ASSERT_TRUE(waitUntil([&] { return app.window().windowState() == Qt::WindowMinimized; }));

    Program second(machine.machine, "token of the desktop");
    EXPECT_TRUE(second.ended());
    EXPECT_EQ(token, "token of the desktop");
    EXPECT_NE(app.window().windowState(), Qt::WindowMinimized);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&app.window(), 5000));
}

TEST(SecondStart, DeadPredecessorDoesNotBlock)
{
    const AppMachine machine;
    const QString socket = machine.machine.path(u"/run/brivane/instance.socket");
    const auto isListening = [&] { return QFile::exists(socket); };
    machine.machine.file(u"/run/brivane/instance.lock", ""); // of one that came no further
    Program first(machine.machine, {}, Program::Closed);
    ASSERT_TRUE(waitUntil(isListening));
    EXPECT_EQ(first.standardDescriptors(), QStringList(3, u"/dev/null"_s));
    Program second(machine.machine);
    EXPECT_TRUE(second.ended());
    ASSERT_TRUE(first.isRunning());

    first.crash();
    ASSERT_TRUE(isListening()) << "nothing was left behind";
    Program third(machine.machine);
    Program fourth(machine.machine);
    // One of both went on, the other one was answered by it.
    ASSERT_TRUE(waitUntil([&] { return !third.isRunning() || !fourth.isRunning(); }));
    EXPECT_TRUE((third.isRunning() ? fourth : third).ended());
    EXPECT_TRUE(third.isRunning() || fourth.isRunning());
}

TEST(SecondStart, WhereThereCanBeNoSocketBothGoOnAndSaySo)
{
    const SandboxMachine machine = SandboxMachine::temporary();
    machine.file(u"/taken/instance.socket/file", "");
    machine.file(u"/locked/instance.lock/file", "");
    for (const QString& folder : {u"/"_s + QString(90, u'x'), u"/taken"_s, u"/locked"_s}) {
        const QString directory = machine.directory(folder);
        const LogCapture log;
        SingleInstance first(directory);
        SingleInstance second(directory);
        EXPECT_EQ(first.start(), SingleInstance::Start::First);
        EXPECT_EQ(second.start(), SingleInstance::Start::First) << qPrintable(folder);
        EXPECT_EQ(log.lines().size(), 2U);
    }
}
