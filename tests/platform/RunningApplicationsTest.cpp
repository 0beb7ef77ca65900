#include "platform/linux/RunningApplications.h"

#include "platform/Locations.h"
#include "sandbox/SandboxMachine.h"
#include "support/FileTestSupport.h"
#include "support/Variable.h"

#include <QProcess>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace brivane;
using brivane::testing::Variable;
using namespace Qt::StringLiterals;

namespace {

/// A desktop in a folder, whose processes are those of this system or of the folder.
class RunningApplications : public ::testing::Test {
protected:
    /// What runs, as "identifier name", with "-" in front of what is not regular.
    std::vector<std::string> running(const QString& root = {}) const
    {
        const SoftwarePlaces places = SoftwarePlaces::of(Locations::onLinux(), root);
        std::vector<std::string> found;
        for (const RunningApplication& application : readRunningApplications(places)) {
            if (application.bundleIdentifier.startsWith(u"brivane-test"))
                found.push_back(
                    (application.isRegular ? "" : "-") +
                    (application.bundleIdentifier.sliced(13) + u' ' + application.localizedName)
                        .toStdString());
        }
        return found;
    }
    void addEntry(QStringView name, const QByteArray& lines) const
    {
        m_machine.file(QString(u"/data/applications/brivane-test-%1.desktop"_s).arg(name),
                       "[Desktop Entry]\nType=Application\n" + lines);
    }
    QByteArray path(QStringView place) const { return PathText::toBytes(m_machine.path(place)); }

    const SandboxMachine m_machine = SandboxMachine::temporary();
    const Variable m_home{"HOME", path(u"~")};
    const Variable m_data{"XDG_DATA_HOME", path(u"/data")};
    const Variable m_dirs{"XDG_DATA_DIRS", "/missing"};
    const Variable m_path{"PATH", path(u"/bin") + ":/usr/bin:/bin"};
    const Variable m_languages{"LANGUAGE", "de"};
    const Variable m_locale{"LC_ALL", "de_DE.UTF-8"};
};

} // namespace

TEST_F(RunningApplications, ProcessesAreKnownByWhatTheirEntryStarts)
{
    const QByteArray sleep = readFile("/bin/sleep");
    const auto program = [&](QStringView place, const QByteArray& content) {
        m_machine.file(place, content);
        m_machine.setMode(place, 0755);
        return m_machine.path(place);
    };
    const QByteArray script = "#!/bin/sh\nread line\n";
    const QString plain = program(u"/bin/plain viewer", sleep);
    const QString engine = program(u"/opt/suite/engine", sleep);
    program(u"/opt/suite/start", script);
    m_machine.link(u"/bin/suite", "../opt/suite/start");
    const QString named = program(u"/usr/lib/named/named", sleep);
    program(u"/bin/named", script);
    const QString scripted = program(u"/bin/scripted", script);
    program(u"/bin/idle", sleep);
    const QString loose = program(u"/bin/loose", sleep); // nobody's window

    addEntry(u"plain", "Name=Viewer\nName[de]=Betrachter\\n\u202E\nExec=\"plain viewer\" %U\n");
    addEntry(u"window", "Name=New Window\nExec=\"plain viewer\" --new-window %U\n");
    addEntry(u"suite", "Name=Suite\nNoDisplay=true\nExec=suite\n");
    addEntry(u"named", "Name=Named\nExec=env A=b named\n");
    addEntry(u"scripted", "Name=Scripted\nTerminal=true\nExec=scripted\n");
    addEntry(u"idle", "Name=Idle\nStartupWMClass=loose\nExec=idle\n");
    EXPECT_THAT(running(), ::testing::IsEmpty());

    QProcess processes[6];
    const QString executables[] = {plain, plain, engine, named, scripted, loose};
    for (std::size_t at = 0; at < std::size(executables); ++at) {
        processes[at].start(executables[at], {u"60"_s});
        ASSERT_TRUE(processes[at].waitForStarted()) << qPrintable(executables[at]);
    }
    // The text of a direction has no place in a name.
    const std::vector<std::string> expected = {"plain Betrachter\uFFFD\uFFFD", "-suite Suite",
                                               "named Named", "-scripted Scripted"};
    EXPECT_THAT(running(), ::testing::UnorderedElementsAreArray(expected));
    ASSERT_EQ(::unlink(PathText::toBytes(named)), 0); // as an update does
    EXPECT_THAT(running(), ::testing::UnorderedElementsAreArray(expected));
    for (QProcess& process : processes) {
        process.kill();
        process.waitForFinished();
    }
    EXPECT_THAT(running(), ::testing::IsEmpty());
}

TEST_F(RunningApplications, SandboxedOnesAreKnownByTheirSandbox)
{
    addEntry(u"flat", "Name=Flat\nExec=/usr/bin/flatpak run --command=x com.a.Fl-at @@u %U @@\n");
    addEntry(u"info", "Name=Info\nX-Flatpak=com.a.Info\nExec=/usr/bin/flatpak run com.a.Info\n");
    addEntry(u"snap", "Name=Snap\nX-SnapInstanceName=snapped\nExec=/snap/bin/snapped %U\n");
    m_machine.file(u"/proc/11/cgroup",
                   QByteArray("0::/user.slice/app-flatpak-com.a.Fl\\x2dat-11.scope\n"));
    m_machine.file(u"/proc/12/root/.flatpak-info",
                   QByteArray("[Instance]\nname=com.a.Fl-at\n[Application]\nname=com.a.Info\n"));
    m_machine.link(u"/proc/12/ns/mnt", "mnt:[12]");
    m_machine.file(u"/proc/13/cgroup", QByteArray("0::/user.slice/snap.snapped.hook-1.scope\n"));
    m_machine.file(u"/proc/notes/cgroup", QByteArray());
    EXPECT_THAT(running(m_machine.path(u"/")),
                ::testing::UnorderedElementsAre("flat Flat", "info Info", "snap Snap"));
}
