#include "cleaning/JunkHome.h"

#include "platform/PropertyList.h"
#include "sandbox/SandboxMachine.h"

#include <numeric>
#include <random>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// A place with its share of all files. A "%" in the folder is the number of one of so many, in the
/// name that of the file.
struct Place {
    QStringView folder;
    int share;
    int folders = 1;
    QStringView name = u"file-%.bin";
};

constexpr Place places[] = {
    {u"~/Library/Caches/com.example.tool-%", 120, 60},
    {u"~/Library/Caches/com.apple.Safari/Blobs-%", 20, 4},
    {u"~/Library/Caches/Google/Chrome/Default/Cache-%", 60, 8},
    {u"~/Library/Caches/Firefox/Profiles/robin/cache-%", 40, 4},
    {u"~/Library/Logs/Tool %", 20, 40, u"session-%.log"},
    {u"~/Library/Logs/DiagnosticReports", 10, 1, u"report-%.ips"},
    {u"~/Downloads/Installers %", 8, 8, u"Installer %.dmg"},
    {u"~/Downloads/Papers %", 30, 40, u"Paper %.pdf"},
    {u"~/Desktop", 4, 1, u"Screenshot %.png"},
    {u"~/Library/Application Support/com.example.gone-%", 30, 20},
    {u"~/Library/Application Support/com.example.there-%", 30, 20},
    {u"~/Library/Preferences", 2, 1, u"com.example.old-%.plist"},
    {u"~/Library/Caches/com.apple.Music/Artwork-%", 10, 4},
    {u"~/Library/Containers/com.apple.mail/Data/Library/Mail Downloads/%", 10, 200},
    {u"~/Library/Developer/Xcode/DerivedData/Project %/Build", 120, 12},
    {u"~/Library/Developer/CoreSimulator/Devices/%/data", 60, 8},
    {u"~/.Trash/Thing %", 20, 40},
    {u"~/Library/Containers/com.docker.docker/Data/layer-%", 30, 10},
    {u"~/Projects/project-%/node_modules/parts", 160, 16},
    {u"~/.npm/_cacache/%", 50, 100},
    {u"~/Library/Caches/Homebrew/downloads", 2},
    {u"~/Library/Application Support/Code/User/workspaceStorage/%", 12, 60},
    {u"~/Library/Application Support/Cursor/CachedData/%", 8, 10},
    {u"~/Library/Application Support/MobileSync/Backup/device-%", 80, 3},
    {u"~/Documents/Letters %", 40, 30},
    {u"~/Developer/source-%", 24, 20},
};

constexpr unsigned largestFile = 64 << 10;
constexpr int hiddenFiles = 20; ///< few enough for the scanner to look at all there are
constexpr qint64 hiddenSize = qint64(200) << 20;

} // namespace

int buildJunkHome(const SandboxMachine& machine, int files)
{
    std::mt19937 random(20240229);
    const QDateTime old = QDateTime::currentDateTimeUtc().addDays(-90);
    const int shares = std::accumulate(std::begin(places), std::end(places), 0,
                                       [](int sum, const Place& p) { return sum + p.share; });
    int made = 0;
    for (const Place& place : places) {
        const auto count = static_cast<int>(qint64(files) * place.share / shares);
        for (int i = 0; i < count; ++i, ++made) {
            const QString folder =
                place.folder.toString().replace(u'%', QString::number(i % place.folders));
            const QString path =
                folder + u'/' + place.name.toString().replace(u'%', QString::number(i));
            machine.file(path, SandboxMachine::Size{static_cast<qint64>(random() % largestFile)});
            if (!path.startsWith(u"~/Library"))
                machine.setTimes(path, old, old);
            if (place.folder.startsWith(u"~/Downloads"))
                machine.setTimes(folder, old, old);
        }
    }
    for (int i = 0; i < hiddenFiles; ++i, ++made)
        machine.file(u"~/Library/Application Support/com.example.there-%1/Pack.zip"_s.arg(i),
                     SandboxMachine::Size{hiddenSize});
    for (int i = 0; i < 20; ++i)
        machine.file(u"/Applications/There %1.app/Contents/Info.plist"_s.arg(i),
                     *PropertyList::write(
                         QVariantMap{{u"CFBundleIdentifier"_s, u"com.example.there-%1"_s.arg(i)}},
                         PropertyList::Encoding::Binary));
    return made;
}

QStringList junkRoots(const SandboxMachine& machine)
{
    QStringList roots;
    for (const QStringView place : {u"~/Library", u"~/.Trash", u"~/.npm", u"~/Downloads",
                                    u"~/Desktop", u"~/Documents", u"~/Developer", u"~/Projects"})
        roots += machine.path(place);
    return roots;
}

} // namespace brivane
