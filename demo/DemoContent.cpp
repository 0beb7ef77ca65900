#include "demo/DemoContent.h"

#include "demo/DemoFiles.h"
#include "demo/DemoJunk.h"
#include "demo/DemoPictures.h"
#include "sandbox/SandboxMachine.h"

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr DemoHeap heaps[] = {
    {u"/Library/Application Support/Shared Fonts", u"Typeface %.ttc", 60, 0, 2 * MB, 40 * MB, 200,
     900},
    {u"/Library/Caches/com.example.updates", u"package-%.cache", 24, 0, 8 * MB, 400 * MB, 3, 200},
    {u"/Library/Logs/DiagnosticReports", u"report-%.ips", 60, 0, 40 * kB, 3 * MB, 1, 120},
    {u"/System/Library/Frameworks/Kit %.framework", u"binary-%", 240, 40, 2 * MB, 180 * MB, 300,
     700},
    {u"/private/var/log", u"system-%.log", 40, 0, 100 * kB, 60 * MB, 0, 60},
    {u"/usr/share/man/man1", u"command-%.1", 200, 0, 2 * kB, 30 * kB, 300, 700},
    {u"~/.Trash", u"Old export %.mov", 9, 0, 80 * MB, 900 * MB, 10, 90},
    {u"~/.npm/_cacache/content-v2/%", u"blob-%", 400, 40, 4 * kB, 9 * MB, 1, 300},
    {u"~/Desktop", u"Screenshot %.png", 24, 0, 12 * kB, 48 * kB, 1, 220},
    {u"~/Developer/atlas/node_modules/part-%/lib", u"module-%.js", 1400, 90, 600, 300 * kB, 100,
     400},
    {u"~/Developer/atlas/src", u"component-%.ts", 120, 0, 600, 40 * kB, 1, 100},
    {u"~/Developer/lighthouse/node_modules/part-%/lib", u"module-%.js", 900, 60, 600, 400 * kB, 300,
     700},
    {u"~/Developer/orchard/build/objects", u"unit-%.o", 300, 0, 60 * kB, 12 * MB, 2, 80},
    {u"~/Documents/Contracts", u"Agreement %.pdf", 70, 0, 80 * kB, 12 * MB, 20, 1400},
    {u"~/Documents/Invoices", u"Invoice %.pdf", 41, 0, 60 * kB, 900 * kB, 20, 900},
    {u"~/Documents/Lectures", u"Lecture %.key", 32, 0, 20 * MB, 500 * MB, 60, 900},
    {u"~/Documents/Letters", u"Letter %.pages", 90, 0, 30 * kB, 3 * MB, 10, 1500},
    {u"~/Documents/Receipts", u"Receipt %.pdf", 40, 0, 40 * kB, 700 * kB, 20, 900},
    {u"~/Downloads", u"Archive %.zip", 22, 0, 20 * MB, 900 * MB, 2, 400},
    {u"~/Downloads", u"Installer %.dmg", 14, 0, 60 * MB, 2.2 * GB, 5, 500},
    {u"~/Downloads", u"Manual %.pdf", 40, 0, 200 * kB, 60 * MB, 1, 500},
    {u"~/Library/Application Support/Contourly/Tiles/%", u"tile-%.db", 160, 12, 8 * MB, 180 * MB, 5,
     300},
    {u"~/Library/Application Support/MobileSync/Backup/backup-%", u"part-%", 90, 2, 60 * MB,
     320 * MB, 60, 420},
    {u"~/Library/Application Support/Tonebench/Sounds/Pack %", u"sample-%.wav", 260, 14, 6 * MB,
     160 * MB, 200, 900},
    {u"~/Library/Caches/com.example.contourly", u"view-%.bin", 90, 0, 2 * MB, 160 * MB, 0, 90},
    {u"~/Library/Caches/com.example.reelbarn/Renders", u"frame-%.cache", 140, 0, 4 * MB, 220 * MB,
     0, 120},
    {u"~/Library/Caches/com.example.pigeonbox", u"message-%.cache", 220, 0, 8 * kB, 20 * MB, 0, 60},
    {u"~/Library/Caches/com.example.driftlook/Pages", u"page-%.cache", 500, 0, 4 * kB, 12 * MB, 0,
     40},
    {u"~/Library/Containers/com.example.quillhaven/Data/Library/Caches", u"draft-%.db", 60, 0,
     1 * MB, 80 * MB, 1, 200},
    {u"~/Library/Developer/CoreSimulator/Devices/device-%/data", u"image-%.bin", 24, 6, 200 * MB,
     900 * MB, 20, 500},
    {u"~/Library/Developer/Xcode/DerivedData/Project %/Build", u"product-%.o", 320, 8, 200 * kB,
     160 * MB, 1, 200},
    {u"~/Library/Logs/Reelbarn", u"session-%.log", 80, 0, 20 * kB, 40 * MB, 0, 300},
    {u"~/Library/Logs/Quillhaven", u"quillhaven-%.log", 40, 0, 4 * kB, 4 * MB, 0, 300},
    {u"~/Library/Mail/Messages", u"message-%.emlx", 5000, 0, 2 * kB, 400 * kB, 1, 1800},
    {u"~/Movies/Films", u"Film %.mov", 14, 0, 1.2 * GB, 6 * GB, 100, 1600},
    {u"~/Movies/Holiday %", u"Clip %.mov", 120, 5, 40 * MB, 900 * MB, 60, 1800},
    {u"~/Music/Collection/Album %", u"Track %.m4a", 620, 48, 5 * MB, 40 * MB, 200, 2400},
    {u"~/Pictures/Family.photoslibrary/originals/%", u"IMG_%.heic", 900, 16, 2 * MB, 60 * MB, 10,
     2200},
    {u"~/Pictures/Scans", u"Negative %.dng", 60, 0, 30 * MB, 120 * MB, 300, 2000},
};

struct Application {
    QStringView name;
    QStringView identifier;
    double size; ///< bytes
};

constexpr Application applications[] = {
    {u"Abacus", u"com.example.abacus", 0.2 * GB},
    {u"Contourly", u"com.example.contourly", 1.9 * GB},
    {u"Reelbarn", u"com.example.reelbarn", 5.6 * GB},
    {u"Glasshouse", u"com.example.glasshouse", 0.7 * GB},
    {u"Hourglass", u"com.example.hourglass", 0.1 * GB},
    {u"Inkbarrel", u"com.example.inkbarrel", 2.4 * GB},
    {u"Pigeon Post Box", u"com.example.pigeonbox", 0.4 * GB},
    {u"Foldcraft Studio", u"com.example.foldcraft", 3.1 * GB},
    {u"Quillhaven", u"com.example.quillhaven", 0.3 * GB},
    {u"Starfarer Trail", u"com.example.starfarer", 7.8 * GB},
    {u"Tonebench", u"com.example.tonebench", 4.2 * GB},
    {u"Driftlook", u"com.example.driftlook", 0.9 * GB},
    {u"Chrome", u"com.google.Chrome", 1.1 * GB},
};

class Demo {
public:
    Demo(const SandboxMachine& machine, const QDateTime& now)
        : m_machine(machine)
        , m_now(now)
        , m_files(machine, now)
    {
    }

    void fill()
    {
        for (const DemoHeap& heap : heaps)
            m_files.pile(heap);
        for (const Application& application : applications)
            install(application);
        leftovers();
        personal();
        oddities();
        commands();
        addDemoJunk(m_files, m_machine);
    }

private:
    void install(const Application& application)
    {
        const QString contents = u"/Applications/%1.app/Contents"_s.arg(application.name);
        m_machine.file(contents + u"/Info.plist"_s,
                       demoPropertyList(demoEntry(u"CFBundleIdentifier", application.identifier) +
                                        demoEntry(u"CFBundleName", application.name) +
                                        demoEntry(u"CFBundleShortVersionString", u"3.2")));
        m_files.sparse(u"%1/MacOS/%2"_s.arg(contents, application.name), application.size * 0.2, 40,
                       500);
        for (int i = 1; i <= 8; ++i)
            m_files.sparse(contents + u"/Resources/assets-%1.car"_s.arg(i), application.size * 0.1,
                           40, 500);
        m_machine.file(u"~/Library/Preferences/%1.plist"_s.arg(application.identifier),
                       demoPropertyList(demoEntry(u"theme", u"dark")));
        m_files.sparse(u"~/Library/Saved Application State/%1.savedState/window.data"_s.arg(
                           application.identifier),
                       900 * kB * m_files.chance() + 1000, 1, 90);
        m_files.sparse(u"~/Library/Application Support/%1/state.db"_s.arg(application.name),
                       300 * MB * m_files.chance() + 1000, 1, 90);
    }

    /// What programs left behind that are no longer there, and what starts with the machine.
    void leftovers()
    {
        for (const QStringView identifier : {u"com.example.lanternfish", u"com.example.oldpress"}) {
            const QString name = identifier.sliced(12).toString();
            m_machine.file(u"~/Library/Preferences/%1.plist"_s.arg(identifier),
                           demoPropertyList(demoEntry(u"lastVersion", u"1.0")));
            m_files.sparse(u"~/Library/Caches/%1/store.cache"_s.arg(identifier), 420 * MB, 300,
                           500);
            m_files.sparse(u"~/Library/Application Support/%1/library.db"_s.arg(name), 900 * MB,
                           300, 500);
        }
        for (const QStringView agent :
             {u"com.example.pigeonbox.fetch", u"com.example.starfarer.updater"}) {
            m_machine.file(u"~/Library/LaunchAgents/%1.plist"_s.arg(agent),
                           demoPropertyList(demoEntry(u"Label", agent) +
                                            demoEntry(u"Program", u"/Applications/helper") +
                                            u"<key>RunAtLoad</key><true/>"_s));
        }
    }

    /// Pictures that resemble each other, and documents that are there more than once.
    void personal()
    {
        for (unsigned scene = 1; scene <= 5; ++scene) {
            for (unsigned variant = 0; variant < 3; ++variant) {
                const QString path =
                    u"~/Pictures/Walks/Walk %1-%2.jpg"_s.arg(scene).arg(variant + 1);
                m_machine.file(path, demoPicture(scene, variant));
                m_files.age(path, 100, 800);
            }
        }
        for (int group = 1; group <= 4; ++group) {
            QByteArray content(qsizetype(1'400'000) + 100'000 * group, '\0');
            for (qsizetype i = 0; i < content.size(); i += 512)
                content[i] = static_cast<char>(m_files.random());
            for (const QString& place : {u"~/Documents/Reports/Report %1.pdf"_s.arg(group),
                                         u"~/Downloads/Report %1 (1).pdf"_s.arg(group),
                                         u"~/Desktop/To sort/Report %1 copy.pdf"_s.arg(group)}) {
                m_machine.file(place, content);
                m_files.age(place, 20, 600);
            }
        }
        m_files.sparse(u"~/Virtual Machines/Test Bench.img"_s, 26 * GB, 30, 90);
    }

    /// Deep nesting, names that need care, and a folder that lets nobody in.
    void oddities()
    {
        QString deep = u"~/Documents/Archive"_s;
        for (int level = 1; level <= 30; ++level)
            deep += u"/Year %1"_s.arg(level);
        m_files.sparse(deep + u"/Ledger.pdf"_s, 3 * MB, 900, 1500);
        m_files.sparse(u"~/Documents/Ärger & Maß – 測試.txt"_s, 12 * kB, 10, 20);
        m_machine.link(u"~/Desktop/Films", "../Movies/Films");
        m_machine.link(u"~/Desktop/Gone", "../Nowhere");
        const QString sealed = u"~/Library/Application Support/Sealed Vault"_s;
        m_files.sparse(sealed + u"/vault.db"_s, 200 * MB, 10, 20);
        m_machine.setMode(sealed, 0);
    }

    void commands()
    {
        QByteArray snapshots = "Snapshots for disk /:\n";
        for (int hours : {3, 27, 75}) {
            const QString date = m_now.addSecs(-hours * 3600).toString(u"yyyy-MM-dd-HHmmss"_s);
            snapshots += "com.apple.TimeMachine." + date.toLatin1() + ".local\n";
        }
        m_machine.command(u"/usr/bin/tmutil")
            .answer({.output = snapshots, .when = {u"listlocalsnapshots"_s}});
        m_machine.command(u"/bin/ps")
            .answer({.output = "  PID  %CPU %MEM COMM\n"
                               "  512  18.4  6.1 Reelbarn\n"
                               "  388   7.2  2.4 Driftlook\n"
                               "  120   3.1  1.8 windowd\n"
                               "  641   1.6  3.0 Tonebench\n"
                               "  702   0.4  0.9 Quillhaven\n"});
        // All others succeed and say nothing.
        for (const QStringView path :
             {u"/bin/launchctl", u"/usr/bin/dscacheutil", u"/usr/bin/killall", u"/usr/bin/mdutil",
              u"/usr/bin/osascript", u"/usr/bin/qlmanage", u"/usr/bin/sqlite3",
              u"/usr/sbin/system_profiler"})
            m_machine.command(path);
    }

    const SandboxMachine& m_machine;
    QDateTime m_now;
    DemoFiles m_files;
};

} // namespace

void fillWithDemoContent(const SandboxMachine& machine, const QDateTime& now)
{
    Demo(machine, now).fill();
}

} // namespace brivane
