#include "platform/linux/RunningApplications.h"

#include "platform/PathText.h"
#include "platform/linux/DesktopEntries.h"
#include "platform/linux/SystemCall.h"
#include "platform/linux/UserProcesses.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <filesystem>

#include <unistd.h>

namespace brivane {

using namespace posix;

namespace {

/// Longer names are no help to anybody.
constexpr qsizetype longestName = 120;

QString folderOf(const QString& path)
{
    return path.first(std::max<qsizetype>(path.lastIndexOf(u'/'), 0));
}

/// `path` without links; empty when nothing is there.
QString withoutLinks(const QString& path)
{
    std::error_code failure;
    const auto real = std::filesystem::canonical(PathText::toBytes(path).toStdString(), failure);
    return failure ? QString() : PathText::fromBytes(real.native());
}

/// What `program`, a name or a path, starts, without links; empty when there is no such thing.
QString executableOf(const QString& program, const QStringList& folders)
{
    if (program.startsWith(u'/'))
        return withoutLinks(program);
    if (program.isEmpty() || program.contains(u'/'))
        return {};
    for (const QString& folder : folders) {
        const QString path = folder + u'/' + program;
        if (::access(PathText::toBytes(path).constData(), X_OK) == 0)
            return withoutLinks(path);
    }
    return {};
}

bool isScript(const QString& path)
{
    const QByteArray bytes = PathText::toBytes(path);
    struct stat status = {};
    if (::stat(bytes.constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    const FileDescriptor file(::open(bytes.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    char start[2] = {};
    return file.isValid() && ::read(file.get(), start, sizeof start) == sizeof start &&
           start[0] == '#' && start[1] == '!';
}

/// Tells which desktop entry a process belongs to.
class Matching {
public:
    explicit Matching(const SoftwarePlaces& places)
        : m_entries(DesktopEntries::read(places).entries)
    {
        std::ranges::stable_sort(m_entries, isPreferred);
        for (std::size_t at = 0; at < m_entries.size(); ++at) {
            const DesktopEntry& entry = m_entries[at];
            const auto note = [&](QHash<QString, std::size_t>& index, const QString& key) {
                if (!key.isEmpty() && !index.contains(key))
                    index.insert(key, at);
            };
            note(m_byFlatpak, entry.flatpak);
            note(m_bySnap, entry.snap);
            const QString executable = executableOf(entry.program, places.programs);
            if (executable.isEmpty())
                continue;
            note(m_byExecutable, executable);
            if (!entry.program.startsWith(u'/') ||
                places.programs.contains(folderOf(entry.program))) {
                note(m_byName, PathText::lastComponent(entry.program).toLower());
                note(m_byName, entry.windowClass.toLower());
            }
            if (!places.programs.contains(folderOf(executable)) && isScript(executable))
                note(m_byFolder, folderOf(executable));
        }
        for (const QString& folder : places.programs)
            m_programFolders.insert(withoutLinks(folder));
    }

    /// Null for what no entry starts.
    [[nodiscard]] const DesktopEntry* entryOf(const UserProcess& process) const
    {
        if (!process.flatpak.isEmpty())
            return find(m_byFlatpak, process.flatpak);
        if (!process.snap.isEmpty())
            return find(m_bySnap, process.snap);
        for (const QString& script : process.script) {
            const QString real = withoutLinks(script);
            if (real != process.executable) {
                if (const DesktopEntry* entry = find(m_byExecutable, real))
                    return entry;
            }
        }
        if (const DesktopEntry* entry = find(m_byExecutable, process.executable))
            return entry;
        // Started by a script or a program of the same name that lies in the PATH, as
        // "/usr/lib/firefox-esr/firefox-esr" and "/opt/google/chrome/chrome" are.
        const QString folder = folderOf(process.executable);
        if (m_programFolders.contains(folder))
            return nullptr;
        if (const DesktopEntry* entry = find(m_byFolder, folder))
            return entry;
        return find(m_byName, PathText::lastComponent(process.executable).toLower());
    }

private:
    /// Of several entries for one program that one stands for it which a user would call the
    /// program: shown, and started without arguments.
    static bool isPreferred(const DesktopEntry& one, const DesktopEntry& other)
    {
        if (one.isShown != other.isShown)
            return one.isShown;
        return one.arguments < other.arguments;
    }

    [[nodiscard]] const DesktopEntry* find(const QHash<QString, std::size_t>& index,
                                           const QString& key) const
    {
        const auto found = index.find(key);
        return found == index.end() ? nullptr : &m_entries[*found];
    }

    std::vector<DesktopEntry> m_entries;
    QHash<QString, std::size_t> m_byFlatpak;
    QHash<QString, std::size_t> m_bySnap;
    QHash<QString, std::size_t> m_byExecutable; ///< by the real path
    QHash<QString, std::size_t> m_byFolder;     ///< of the script that starts it
    QHash<QString, std::size_t>
        m_byName; ///< of the program, as the entry has it, and of its windows
    QSet<QString> m_programFolders;
};

} // namespace

std::vector<RunningApplication> readRunningApplications(const SoftwarePlaces& places)
{
    const Matching matching(places);
    QSet<QString> seen;
    std::vector<RunningApplication> applications;
    for (const UserProcess& process : readUserProcesses(places.system(u"/proc"))) {
        const DesktopEntry* entry = matching.entryOf(process);
        if (entry == nullptr || seen.contains(entry->id))
            continue;
        seen.insert(entry->id);
        applications.push_back(
            {entry->id, PathText::forDisplay(entry->localizedName.left(longestName)).simplified(),
             entry->isShown && !entry->isTerminal});
    }
    return applications;
}

} // namespace brivane
