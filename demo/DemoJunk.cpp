#include "demo/DemoJunk.h"

#include "demo/DemoFiles.h"
#include "platform/PropertyList.h"
#include "sandbox/SandboxMachine.h"

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr DemoHeap heaps[] = {
    // What browsers keep.
    {u"~/Library/Caches/com.apple.Safari/WebKitCache/Blobs", u"blob-%", 90, 0, 12 * kB, 14 * MB, 0,
     60},
    {u"~/Library/Caches/com.apple.Safari.SafeBrowsing", u"list-%.db", 6, 0, 400 * kB, 9 * MB, 0,
     20},
    {u"~/Library/Caches/Google/Chrome/Default/Cache/Cache_Data", u"f_%", 220, 0, 20 * kB, 60 * MB,
     0, 40},
    {u"~/Library/Application Support/Google/Chrome/Default/Cache", u"data_%", 4, 0, 2 * MB, 90 * MB,
     2, 300},
    {u"~/Library/Caches/Firefox/Profiles/robin.default/cache2/entries", u"entry-%", 160, 0, 8 * kB,
     18 * MB, 0, 60},
    {u"~/Library/Caches/BraveSoftware/Brave-Browser/Default/Cache", u"f_%", 30, 0, 30 * kB, 8 * MB,
     90, 200},
    {u"~/Library/Caches/Microsoft Edge/Default/Cache", u"f_%", 12, 0, 30 * kB, 3 * MB, 90, 200},
    {u"~/Library/Caches/com.operasoftware.Opera/Cache", u"f_%", 8, 0, 30 * kB, 2 * MB, 200, 400},
    {u"~/Library/Caches/company.thebrowser.Browser/Cache", u"f_%", 40, 0, 40 * kB, 16 * MB, 1, 90},

    // What other programs keep, and what they have noted down.
    {u"~/Library/Caches/com.example.foldcraft/Meshes", u"mesh-%.cache", 40, 0, 4 * MB, 90 * MB, 2,
     200},
    {u"~/Library/Caches/Glasshouse", u"pane-%.cache", 30, 0, 60 * kB, 12 * MB, 2, 200},
    {u"~/Library/Logs/Pigeon Post Box", u"post-%.log", 30, 0, 2 * kB, 700 * kB, 0, 90},
    {u"~/Library/Logs/DiagnosticReports", u"Reelbarn-%.ips", 26, 0, 30 * kB, 2 * MB, 1, 200},
    {u"~/Library/Logs/CoreSimulator/device-%", u"system-%.log", 12, 4, 80 * kB, 30 * MB, 5, 200},

    // Installers and downloads, to be taken and to be left.
    {u"~/Desktop", u"Foldcraft Studio %.dmg", 2, 0, 700 * MB, 1.6 * GB, 20, 300},
    {u"~/Desktop/To sort", u"Rescue disk %.iso", 2, 0, 300 * MB, 1.3 * GB, 100, 900},
    {u"~/Downloads/Printers", u"Office printer %.pkg", 4, 0, 20 * MB, 120 * MB, 60, 700},
    {u"~/Downloads/Bundled.pkg/Contents", u"part-%", 4, 0, 40 * kB, 900 * kB, 60, 90},
    {u"~/Downloads/Typefaces of the fair", u"Face %.otf", 18, 0, 80 * kB, 4 * MB, 200, 300},
    {u"~/Downloads", u"Ticket %.pdf", 8, 0, 60 * kB, 900 * kB, 0, 20},

    // Music and mail.
    {u"~/Library/Caches/com.apple.Music/Artwork", u"cover-%.jpg", 120, 0, 30 * kB, 4 * MB, 1, 200},
    {u"~/Library/Caches/com.apple.podcasts/Episodes", u"episode-%.tmp", 14, 0, 12 * MB, 140 * MB, 1,
     90},
    {u"~/Library/Containers/com.apple.mail/Data/Library/Mail Downloads/%", u"Attachment %.pdf", 60,
     20, 60 * kB, 22 * MB, 2, 500},
    {u"~/Library/Caches/com.apple.mail/Messages", u"part-%.emlx", 80, 0, 4 * kB, 2 * MB, 0, 200},

    // What is made of programs and for them.
    {u"~/Library/Developer/Xcode/Archives/Orchard %.xcarchive", u"Orchard-%.ipa", 6, 3, 60 * MB,
     400 * MB, 30, 400},
    {u"~/Library/Developer/Xcode/iOS Device Logs", u"device-%.db", 3, 0, 2 * MB, 40 * MB, 30, 400},
    {u"~/Library/Developer/CoreSimulator/Caches/dyld", u"cache-%", 5, 0, 60 * MB, 300 * MB, 30,
     300},
    {u"~/Library/Caches/com.apple.dt.Xcode/Downloads", u"part-%", 12, 0, 2 * MB, 90 * MB, 10, 200},
    {u"~/Library/Caches/org.swift.swiftpm/repositories/package-%", u"pack-%.pack", 24, 8, 100 * kB,
     40 * MB, 10, 300},
    {u"~/Library/Developer/Xcode/UserData/Previews/Simulator Devices", u"preview-%", 10, 0, 3 * MB,
     90 * MB, 10, 100},
    {u"~/Library/Containers/com.docker.docker/Data/log/vm", u"service-%.log", 20, 0, 30 * kB,
     12 * MB, 0, 90},
    {u"~/Library/Caches/com.docker.docker", u"update-%.cache", 3, 0, 20 * MB, 300 * MB, 5, 60},
    {u"~/Library/Logs/Docker", u"host-%.log", 8, 0, 40 * kB, 6 * MB, 0, 60},
    {u"~/.npm/_logs", u"run-%-debug.log", 30, 0, 1 * kB, 90 * kB, 0, 60},
    {u"~/Library/Caches/Yarn/v6/package-%", u"file-%.tgz", 120, 30, 4 * kB, 5 * MB, 20, 400},
    {u"~/Library/pnpm/store/v3/files/%", u"blob-%", 200, 40, 2 * kB, 4 * MB, 20, 300},
    {u"~/Projects/ferry/client/node_modules/part-%/lib", u"module-%.js", 240, 30, 900, 400 * kB,
     100, 200},
    {u"~/Documents/Workshop/node_modules/part-%", u"module-%.js", 160, 20, 900, 300 * kB, 300, 600},
    {u"~/Library/Caches/Homebrew/downloads", u"%--bottle.tar.gz", 40, 0, 300 * kB, 160 * MB, 3,
     300},
    {u"~/Library/Logs/Homebrew/formula-%", u"0%.make", 24, 12, 2 * kB, 700 * kB, 10, 300},
    {u"~/Library/Application Support/Code/Cache/Cache_Data", u"f_%", 60, 0, 20 * kB, 4 * MB, 0, 90},
    {u"~/Library/Application Support/Code/CachedData/%", u"chunk-%", 40, 5, 60 * kB, 9 * MB, 0,
     120},
    {u"~/Library/Application Support/Code/User/workspaceStorage/%", u"state-%.vscdb", 24, 12,
     20 * kB, 14 * MB, 10, 400},
    {u"~/Library/Application Support/Code/logs", u"window-%.log", 20, 0, 2 * kB, 900 * kB, 0, 40},
    {u"~/Library/Application Support/Cursor/Cache/Cache_Data", u"f_%", 40, 0, 20 * kB, 4 * MB, 0,
     90},
    {u"~/Library/Application Support/Cursor/CachedData/%", u"chunk-%", 20, 3, 60 * kB, 9 * MB, 0,
     120},
    {u"~/Library/Application Support/Cursor/User/workspaceStorage/%", u"state-%.vscdb", 12, 6,
     20 * kB, 9 * MB, 10, 300},
    {u"~/Library/Application Support/Cursor/logs", u"window-%.log", 10, 0, 2 * kB, 900 * kB, 0, 40},

    // Large files out of sight; some are no junk by their endings.
    {u"~/Library/Application Support/Tonebench/Incoming", u"Pack %.zip", 5, 0, 130 * MB, 800 * MB,
     20, 400},
    {u"~/Library/Application Support/Starfarer Trail/Updates", u"update-%.part", 1, 0, 400 * MB,
     1.5 * GB, 20, 200},
    {u"~/Library/iTunes/iPhone Software Updates", u"Restore %.ipsw", 1, 0, 1.5 * GB, 3 * GB, 90,
     500},
    {u"~/Library/Containers/com.example.quillhaven/Data/Documents", u"Export %.tar.gz", 2, 0,
     140 * MB, 400 * MB, 90, 300},
    {u"~/Library/Containers/com.example.quillhaven/Data/Documents", u"Vault %.store", 2, 0,
     140 * MB, 400 * MB, 9, 30},
    {u"~/Library/Logs/Reelbarn", u"render-%.log", 2, 0, 150 * MB, 700 * MB, 9, 60},

    {u"~/Pictures/Screenshots", u"Screen Shot %.png", 16, 0, 300 * kB, 6 * MB, 40, 500},
    {u"~/Pictures/Screenshots", u"Screenshot recording %.mov", 4, 0, 20 * MB, 300 * MB, 5, 200},
    {u"~/Library/Application Support/MobileSync/Backup/old-tablet", u"part-%", 20, 0, 10 * MB,
     60 * MB, 700, 900},
    {u"~/.Trash/Sketches of the boat", u"Sketch %.psd", 12, 0, 3 * MB, 80 * MB, 3, 40},
};

/// Entries beyond this many bytes count as what a program left behind.
constexpr double leftover = 10'240;

class Junk {
public:
    Junk(DemoFiles& files, const SandboxMachine& machine)
        : m_files(files)
        , m_machine(machine)
    {
    }

    void add()
    {
        for (const DemoHeap& heap : heaps)
            m_files.pile(heap);
        // The disk of all containers.
        m_files.sparse(u"~/Library/Containers/com.docker.docker/Data/vms/0/data/Docker.raw"_s,
                       4.2 * GB, 1, 3);
        for (const QStringView identifier : {u"com.example.lanternfish", u"com.example.oldpress",
                                             u"org.example.skylark", u"net.example.paperkite"})
            leaveBehind(identifier);
        // Programs that are there have the same, and more of it.
        for (const QStringView identifier : {u"com.example.tonebench", u"com.example.inkbarrel"})
            leaveBehind(identifier);
        backups();
        const QVariantMap screenshots{{u"location"_s, u"~/Pictures/Screenshots"_s},
                                      {u"type"_s, u"png"_s}};
        list(u"~/Library/Preferences/com.apple.screencapture.plist"_s, screenshots,
             PropertyList::Encoding::Binary);
    }

private:
    void list(const QString& path, const QVariantMap& values, PropertyList::Encoding encoding)
    {
        m_machine.file(path, *PropertyList::write(values, encoding));
    }

    /// Folders and preferences that a program makes for itself.
    void leaveBehind(QStringView identifier)
    {
        m_files.sparse(u"~/Library/Application Support/%1/store.db"_s.arg(identifier),
                       leftover + 240 * MB * m_files.chance(), 90, 700);
        m_files.sparse(
            u"~/Library/Saved Application State/%1.savedState/windows.data"_s.arg(identifier),
            leftover + 3 * MB * m_files.chance(), 90, 700);
        QVariantList recent;
        for (int i = 1; i <= 400; ++i)
            recent += u"~/Documents/Letters/Letter %1.pages"_s.arg(m_files.random() % 90 + 1);
        const QString preferences = u"~/Library/Preferences/%1.plist"_s.arg(identifier);
        list(preferences, {{u"lastVersion"_s, u"1.0"_s}, {u"recentDocuments"_s, recent}},
             PropertyList::Encoding::Xml);
        m_files.age(preferences, 90, 700);
    }

    /// Two of the backups tell whose they are, the third does not.
    void backups()
    {
        const QString folder = u"~/Library/Application Support/MobileSync/Backup/"_s;
        list(folder + u"backup-1/Info.plist"_s,
             {{u"Device Name"_s, u"Robin’s Phone"_s}, {u"Product Version"_s, u"16.4"_s}},
             PropertyList::Encoding::Xml);
        list(folder + u"backup-2/Info.plist"_s,
             {{u"Device Name"_s, u"Tablet in the kitchen"_s}, {u"Product Version"_s, u"15.7"_s}},
             PropertyList::Encoding::Binary);
    }

    DemoFiles& m_files;
    const SandboxMachine& m_machine;
};

} // namespace

void addDemoJunk(DemoFiles& files, const SandboxMachine& machine)
{
    Junk(files, machine).add();
}

} // namespace brivane
