#include "platform/linux/TreeCopy.h"

#include "platform/PathText.h"
#include "platform/linux/FileContent.h"
#include "platform/linux/FolderEntries.h"
#include "platform/linux/FolderStack.h"
#include "platform/linux/LentAccess.h"

#include <climits>

namespace brivane::posix {

namespace {

constexpr mode_t modeWhileCopied = 0700;

/// A folder whose content is being copied.
struct Level {
    FileStatus status;
    std::vector<QByteArray> pending = {}; ///< the folders in it that wait
    LentAccess access = {};               ///< to the source's
};

/// One copy, as two ways down that go in step. Their first levels are the folders that hold the
/// source and the copy; all names below the first step are the same on both sides.
class Copy {
public:
    Copy(const PathPlace& from, const FileStatus& found, const QByteArray& name)
        : m_from(from)
        , m_root(found)
        , m_name(name)
    {
    }

    Result<CopiedObjects> run(int toFolder);

private:
    [[nodiscard]] int open(int toFolder);
    [[nodiscard]] int copyEntry(const QByteArray& name);
    [[nodiscard]] int copyFile(const QByteArray& name, const FileStatus& found);
    [[nodiscard]] int copyLink(const QByteArray& name, const FileStatus& found);
    [[nodiscard]] int linkToCopy(const QByteArray& name, const FileStatus& found, bool& isLinked);
    [[nodiscard]] int enter(const QByteArray& name);
    [[nodiscard]] int openSource(const QByteArray& name, LentAccess& access, FileDescriptor& opened,
                                 FileStatus& status);
    [[nodiscard]] int examine(int folder, FileStatus& status) const;
    [[nodiscard]] int listFolder();
    [[nodiscard]] int finishLevel();
    [[nodiscard]] int leaveLevel();
    [[nodiscard]] const char* nameOfCopy(const QByteArray& name) const
    {
        return m_levels.size() == 1 ? m_name.constData() : name.constData();
    }

    const PathPlace& m_from;
    const FileStatus& m_root;
    const QByteArray& m_name;
    std::optional<FolderStack> m_source;
    std::optional<FolderStack> m_copy;
    std::vector<Level> m_levels;
    QByteArray m_failedName; ///< the entry of the current folder that an error is about
    CopiedObjects m_copied;
    /// Where the first copy of a file with several links lies, from the folder of the whole copy.
    std::unordered_map<std::uint64_t, QByteArray> m_firstLinks;
};

Result<CopiedObjects> Copy::run(int toFolder)
{
    int code = open(toFolder);
    if (code == 0)
        code = copyEntry(m_from.name());
    while (code == 0 && (m_levels.size() > 1 || !m_levels.back().pending.empty())) {
        std::vector<QByteArray>& pending = m_levels.back().pending;
        if (pending.empty()) {
            code = finishLevel();
            continue;
        }
        const QByteArray name = std::move(pending.back());
        pending.pop_back();
        code = enter(name);
    }
    if (code == 0)
        return std::move(m_copied);
    QString path = m_from.path();
    if (m_levels.size() > 1) {
        QByteArray below = m_source->path().sliced(qsizetype(qstrlen(m_from.name())) + 1);
        if (!m_failedName.isEmpty())
            below += '/' + m_failedName;
        path += PathText::fromBytes(below);
    }
    while (m_levels.size() > 1)
        (void)leaveLevel();
    return FileError{code, path, FileOperation::Copy};
}

int Copy::open(int toFolder)
{
    FileDescriptor source;
    FileDescriptor copy;
    FileStatus sourceStatus;
    FileStatus copyStatus;
    int code = stepInto(m_from.folder(), ".", ParentLinks::Refuse, source);
    if (code == 0)
        code = stepInto(toFolder, ".", ParentLinks::Refuse, copy);
    if (code == 0)
        code = readStatus(source.get(), sourceStatus);
    if (code == 0)
        code = readStatus(copy.get(), copyStatus);
    if (code == 0 && m_root.mount != sourceStatus.mount)
        code = EBUSY;
    m_source.emplace(std::move(source), sourceStatus);
    m_copy.emplace(std::move(copy), copyStatus);
    m_levels.push_back({.status = sourceStatus});
    return code;
}

int Copy::copyEntry(const QByteArray& name)
{
    m_failedName = name;
    FileStatus found;
    int code = readStatus(m_source->current(), name.constData(), found);
    // A folder that may be listed and not searched. Never the one that holds the source.
    if (code == EACCES && m_levels.size() > 1 &&
        m_levels.back().access.lend(m_source->current()) == 0)
        code = readStatus(m_source->current(), name.constData(), found);
    if (code != 0)
        return code;
    if (m_levels.size() == 1 && !found.identity.isSameObject(m_root.identity))
        return ESTALE;
    if (!found.isOnSameMount(m_root))
        return EXDEV;
    if (found.isDirectory()) {
        m_levels.back().pending.push_back(name);
        return 0;
    }
    bool isLinked = false;
    if (found.links > 1)
        code = linkToCopy(name, found, isLinked);
    if (code != 0 || isLinked)
        return code;
    if (S_ISREG(found.mode)) {
        code = copyFile(name, found);
    } else if (S_ISLNK(found.mode)) {
        code = copyLink(name, found);
    } else if (S_ISFIFO(found.mode)) {
        code = errorOf(
            [&] { return ::mkfifoat(m_copy->current(), nameOfCopy(name), modeWhileCopied); });
    } else {
        return ENOTSUP;
    }
    if (code == 0 && !S_ISREG(found.mode))
        code = copyAttributesByName(m_copy->current(), nameOfCopy(name), found);
    if (code == 0)
        m_copied.add(found);
    return code;
}

int Copy::linkToCopy(const QByteArray& name, const FileStatus& found, bool& isLinked)
{
    const QByteArray place = m_copy->path() + '/' + nameOfCopy(name);
    const auto added = m_firstLinks.try_emplace(found.identity.inode, place.sliced(1));
    const QByteArray& first = added.first->second;
    // A link with a path too long for one call becomes a file of its own.
    if (added.second || first.size() >= PATH_MAX || !m_copied.holds(found))
        return 0;
    const int code = errorOf([&] {
        return ::linkat(m_copy->root(), first.constData(), m_copy->current(), nameOfCopy(name), 0);
    });
    // So does one whose first copy lies in a folder that is finished, and locked as its source.
    isLinked = code != EACCES;
    return isLinked ? code : 0;
}

int Copy::copyFile(const QByteArray& name, const FileStatus& found)
{
    FileDescriptor from;
    FileDescriptor to;
    FileStatus before;
    FileStatus after;
    int code =
        openAt(m_source->current(), name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY, from);
    if (code == 0)
        code = readStatus(from.get(), before);
    if (code == 0 && !found.identity.matches(before.identity))
        code = ESTALE;
    if (code == 0) {
        code = openAt(m_copy->current(), nameOfCopy(name), O_WRONLY | O_CREAT | O_EXCL, to,
                      S_IRUSR | S_IWUSR);
    }
    if (code == 0)
        code = copyContent(from.get(), to.get(), found.size);
    if (code == 0)
        code = copyAttributes(from.get(), to.get(), found);
    if (code == 0)
        code = errorOf([&] { return ::fsync(to.get()); });
    if (code == 0)
        code = readStatus(from.get(), after);
    if (code == 0 && !found.identity.matches(after.identity))
        code = ESTALE;
    return code;
}

int Copy::copyLink(const QByteArray& name, const FileStatus& found)
{
    QByteArray target(static_cast<qsizetype>(found.size) + 1, '\0');
    const ssize_t size = uninterrupted([&] {
        return ::readlinkat(m_source->current(), name.constData(), target.data(),
                            static_cast<std::size_t>(target.size()));
    });
    if (size < 0)
        return errno;
    if (size == target.size())
        return ESTALE; // it was made longer meanwhile
    target.resize(size);
    return errorOf(
        [&] { return ::symlinkat(target.constData(), m_copy->current(), nameOfCopy(name)); });
}

int Copy::enter(const QByteArray& name)
{
    m_failedName = name;
    const char* copyName = nameOfCopy(name);
    FileDescriptor from;
    FileDescriptor to;
    FileStatus status;
    FileStatus copyStatus;
    LentAccess access;
    int code = openSource(name, access, from, status);
    if (code == 0) {
        code = errorOf([&] { return ::mkdirat(m_copy->current(), copyName, modeWhileCopied); });
    }
    if (code == 0)
        code = openFolder(m_copy->current(), copyName, to);
    if (code == 0)
        code = readStatus(to.get(), copyStatus);
    if (code != 0) {
        access.giveBack(from.get());
        return code;
    }
    m_copy->enter(copyName, std::move(to), copyStatus);
    m_source->enter(name, std::move(from), status);
    m_levels.push_back({.status = status, .access = access});
    return listFolder();
}

int Copy::openSource(const QByteArray& name, LentAccess& access, FileDescriptor& opened,
                     FileStatus& status)
{
    int code = openFolder(m_source->current(), name.constData(), opened);
    if (code == 0)
        return examine(opened.get(), status);
    if (code != EACCES)
        return code;
    FileDescriptor place;
    code = stepInto(m_source->current(), name.constData(), ParentLinks::Refuse, place);
    if (code == 0)
        code = examine(place.get(), status);
    return code == 0 ? access.open(place.get(), opened) : code;
}

int Copy::examine(int folder, FileStatus& status) const
{
    if (const int code = readStatus(folder, status))
        return code;
    if (m_levels.size() == 1 && !status.identity.isSameObject(m_root.identity))
        return ESTALE;
    return status.isOnSameMount(m_root) ? 0 : EXDEV;
}

int Copy::listFolder()
{
    FolderEntries entries(m_source->current());
    while (const dirent64* entry = entries.next()) {
        if (const int code = copyEntry(entry->d_name))
            return code;
    }
    m_failedName.clear();
    return entries.error();
}

int Copy::finishLevel()
{
    m_failedName.clear();
    const Level& level = m_levels.back();
    int code = copyAttributes(m_source->current(), m_copy->current(), level.status);
    if (code == 0)
        code = errorOf([&] { return ::fsync(m_copy->current()); });
    if (code != 0)
        return code;
    m_copied.add(level.status);
    return leaveLevel();
}

int Copy::leaveLevel()
{
    LentAccess access = m_levels.back().access;
    m_levels.pop_back();
    FileDescriptor left;
    FileDescriptor leftCopy;
    const int code = m_source->leave(left);
    access.giveBack(left.get());
    const int copyCode = m_copy->leave(leftCopy);
    return code != 0 ? code : copyCode;
}

} // namespace

void CopiedObjects::add(const FileStatus& status)
{
    FileIdentity identity = status.identity;
    // These times change when another link of the file, or what the folder holds, is removed.
    if (status.links > 1 || status.isDirectory())
        identity.changedAt.reset();
    if (status.isDirectory()) {
        identity.modifiedAt.reset();
        identity.size.reset();
    }
    m_objects[identity.inode] = identity;
}

bool CopiedObjects::holds(const FileStatus& status) const
{
    const auto found = m_objects.find(status.identity.inode);
    return found != m_objects.end() && found->second.matches(status.identity);
}

Result<CopiedObjects> copyTree(const PathPlace& from, const FileStatus& found, int folder,
                               const QByteArray& name)
{
    return Copy(from, found, name).run(folder);
}

} // namespace brivane::posix
