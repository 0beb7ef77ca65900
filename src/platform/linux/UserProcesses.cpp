#include "platform/linux/UserProcesses.h"

#include "platform/PathText.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/FolderEntries.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace brivane {

using namespace posix;

namespace {

constexpr qsizetype mostRead = 16384;

/// The beginning of a file of the process. Only a plain file is opened: what stands at a path below
/// "root" is what the process has put there.
QByteArray readStart(int process, const char* name)
{
    FileDescriptor file;
    struct stat status = {};
    if (::fstatat(process, name, &status, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) != 0 ||
        !S_ISREG(status.st_mode) || openAt(process, name, O_RDONLY | O_NONBLOCK, file) != 0)
        return {};
    QByteArray bytes(mostRead, Qt::Uninitialized);
    qsizetype size = 0;
    while (size < mostRead) {
        const ssize_t got = uninterrupted([&] {
            return ::read(file.get(), bytes.data() + size,
                          static_cast<std::size_t>(mostRead - size));
        });
        if (got <= 0)
            break;
        size += got;
    }
    bytes.truncate(size);
    return bytes;
}

QByteArray readLink(int process, const char* name)
{
    QByteArray text(4096, Qt::Uninitialized);
    const ssize_t size =
        ::readlinkat(process, name, text.data(), static_cast<std::size_t>(text.size()));
    text.truncate(std::clamp<qsizetype>(size, 0, text.size()));
    return text;
}

/// The name of a unit of systemd, whose bytes that it may not hold stand as \xNN.
QByteArray unescaped(QByteArray name)
{
    for (qsizetype at = name.indexOf("\\x"); at >= 0; at = name.indexOf("\\x", at + 1))
        name.replace(at, 4, QByteArray::fromHex(name.mid(at + 2, 2)));
    return name;
}

/// What the control group says: desktops start each application in one of its own.
void readGroup(int process, UserProcess& result)
{
    const QList<QByteArray> lines = readStart(process, "cgroup").split('\n');
    for (const QByteArray& line : lines) {
        const QByteArray unit = line.mid(line.lastIndexOf('/') + 1);
        if (!unit.endsWith(".scope"))
            continue;
        if (unit.startsWith("app-flatpak-")) // app-flatpak-ID-NUMBER.scope
            result.flatpak = QString::fromUtf8(
                unescaped(unit.mid(12, std::max<qsizetype>(unit.lastIndexOf('-') - 12, 0))));
        else if (unit.startsWith("snap.")) // snap.NAME.PROGRAM-NUMBER.scope
            result.snap = QString::fromUtf8(unescaped(unit.mid(5, unit.indexOf('.', 5) - 5)));
    }
}

/// What Flatpak has put into the sandbox of the process, where it sees other files than we do.
void readFlatpakInfo(int process, const QByteArray& ownMounts, UserProcess& result)
{
    if (readLink(process, "ns/mnt") == ownMounts)
        return;
    const QList<QByteArray> lines = readStart(process, "root/.flatpak-info").split('\n');
    const qsizetype begin = lines.indexOf("[Application]");
    for (qsizetype at = begin + 1; begin >= 0 && at < lines.size(); ++at) {
        if (lines[at].startsWith('['))
            return;
        if (lines[at].startsWith("name="))
            result.flatpak = QString::fromUtf8(lines[at].mid(5));
    }
}

QStringList readScript(int process)
{
    QStringList paths;
    const QList<QByteArray> arguments = readStart(process, "cmdline").split('\0');
    for (const QByteArray& argument : arguments.mid(0, 4)) {
        if (argument.startsWith('/'))
            paths += PathText::fromBytes(argument);
    }
    return paths;
}

} // namespace

std::vector<UserProcess> readUserProcesses(const QString& proc)
{
    std::vector<UserProcess> processes;
    const FileDescriptor folder(
        ::open(PathText::toBytes(proc).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isValid())
        return processes;
    const QByteArray ownMounts = readLink(folder.get(), "self/ns/mnt");
    FolderEntries entries(folder.get());
    while (const dirent64* entry = entries.next()) {
        FileDescriptor process;
        struct stat status = {};
        if (entry->d_name[0] < '1' || entry->d_name[0] > '9' ||
            openFolder(folder.get(), entry->d_name, process) != 0 ||
            ::fstat(process.get(), &status) != 0 || status.st_uid != ::geteuid())
            continue;
        UserProcess found;
        QByteArray executable = readLink(process.get(), "exe");
        if (executable.endsWith(" (deleted)")) // replaced by an update
            executable.chop(10);
        found.executable = PathText::fromBytes(executable);
        readGroup(process.get(), found);
        if (found.flatpak.isEmpty() && found.snap.isEmpty())
            readFlatpakInfo(process.get(), ownMounts, found);
        // Asked of interpreters alone: the answer waits for a process that hangs in its memory.
        if (isInterpreter(PathText::lastComponent(found.executable)))
            found.script = readScript(process.get());
        processes.push_back(std::move(found));
    }
    return processes;
}

} // namespace brivane
