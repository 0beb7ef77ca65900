#include "platform/linux/TreeRemoval.h"

#include "platform/PathText.h"
#include "platform/linux/FolderEntries.h"
#include "platform/linux/FolderStack.h"
#include "platform/linux/LentAccess.h"
#include "platform/linux/PathPlace.h"

namespace brivane {

namespace posix {

namespace {

/// How often a folder that turns out not to be empty after all is gone through again.
constexpr int maximumSweeps = 8;

/// A folder that waits to be removed.
struct PendingFolder {
    QByteArray name;
    int sweeps = 0;
};

/// What there is still to do in a folder on the way down.
struct Level {
    PendingFolder folder;
    std::vector<PendingFolder> pending;
    bool keepsSomething = false;
    LentAccess access = {};
};

/// One removal of a folder. Its parent is the first level, where only the one name is pending.
///
/// Each folder is listed once: what is no folder goes at once, the folders in it wait until the
/// listing is over, so that a level can be left and come back to without its place in the listing.
class FolderRemoval {
public:
    FolderRemoval(const RemovalTarget& target, FileDescriptor parent,
                  const FileStatus& parentStatus, const FileStatus& root, RemovalReport& report)
        : m_target(target)
        , m_root(root)
        , m_report(report)
        , m_stack(std::move(parent), parentStatus)
    {
    }

    void run();

private:
    void enter(PendingFolder folder);
    /// Opens the folder `name` of the current one, if it is one that may go.
    [[nodiscard]] int open(const char* name, FileDescriptor& opened, FileStatus& status);
    [[nodiscard]] int openLocked(const char* name, LentAccess& access, FileDescriptor& opened,
                                 FileStatus& status);
    /// Reads the status of an open folder, and says whether it may be removed.
    [[nodiscard]] int examine(int folder, FileStatus& status) const;
    void sweep();
    void removeEntry(const QByteArray& name, bool isKnown);
    void finishLevel();
    /// Makes a call in the current folder, and once more after opening that up if it is what
    /// refuses. Never the folder that holds the target: that one is not being removed.
    template<typename Call>
    [[nodiscard]] int inCurrent(Call call)
    {
        const int code = call();
        const bool isOpenedUp = code == EACCES && m_levels.size() > 1 &&
                                m_levels.back().access.lend(m_stack.current()) == 0;
        return isOpenedUp ? call() : code;
    }
    [[nodiscard]] int removeFromCurrent(const QByteArray& name, int flags = 0)
    {
        return inCurrent([&] { return removeAt(m_stack.current(), name.constData(), flags); });
    }
    /// Counts what an unlink achieved; what is gone already is nobody's failure.
    void conclude(int code, const QByteArray& name);
    void fail(int code, FileOperation operation, const QByteArray& place);

    const RemovalTarget& m_target;
    const FileStatus& m_root;
    RemovalReport& m_report;
    FolderStack m_stack;
    std::vector<Level> m_levels; ///< one for each level of m_stack
};

void FolderRemoval::run()
{
    m_levels.push_back({.folder = {}, .pending = {{m_target.name}}});
    for (;;) {
        std::vector<PendingFolder>& pending = m_levels.back().pending;
        if (!pending.empty()) {
            PendingFolder folder = std::move(pending.back());
            pending.pop_back();
            enter(std::move(folder));
        } else if (m_levels.size() > 1) {
            finishLevel();
        } else {
            return;
        }
    }
}

void FolderRemoval::enter(PendingFolder folder)
{
    const char* name = folder.name.constData();
    LentAccess access;
    FileDescriptor opened;
    FileStatus status;
    int code = inCurrent([&] { return open(name, opened, status); });
    if (code == EACCES)
        code = openLocked(name, access, opened, status);
    // Swapped for something else in between: that is in the tree as well, and is no way out of it.
    if ((code == ENOTDIR || code == ELOOP) && m_levels.size() > 1)
        return conclude(removeFromCurrent(folder.name), folder.name);
    if (code != 0) {
        if (code != ENOENT)
            fail(code, FileOperation::Open, m_stack.path() + '/' + folder.name);
        return;
    }
    m_stack.enter(folder.name, std::move(opened), status);
    m_levels.push_back({.folder = std::move(folder), .pending = {}, .access = access});
    sweep();
}

int FolderRemoval::open(const char* name, FileDescriptor& opened, FileStatus& status)
{
    const int code = openFolder(m_stack.current(), name, opened);
    return code == 0 ? examine(opened.get(), status) : code;
}

int FolderRemoval::openLocked(const char* name, LentAccess& access, FileDescriptor& opened,
                              FileStatus& status)
{
    FileDescriptor place;
    int code = stepInto(m_stack.current(), name, ParentLinks::Refuse, place);
    if (code == 0)
        code = examine(place.get(), status);
    if (code != 0)
        return code;
    // An empty folder need not be readable to be removed.
    if (removeAt(m_stack.current(), name, AT_REMOVEDIR) == 0) {
        conclude(0, name);
        return ENOENT;
    }
    return access.open(place.get(), opened);
}

int FolderRemoval::examine(int folder, FileStatus& status) const
{
    if (const int code = readStatus(folder, status))
        return code;
    if (m_levels.size() == 1 && !status.identity.isSameObject(m_root.identity))
        return ESTALE;
    if (!status.isOnSameMount(m_root))
        return EXDEV;
    return m_target.filter && !m_target.filter(status) ? ESTALE : 0;
}

void FolderRemoval::sweep()
{
    FolderEntries entries(m_stack.current());
    while (const dirent64* entry = entries.next()) {
        if (entry->d_type == DT_DIR)
            m_levels.back().pending.push_back({entry->d_name});
        else
            removeEntry(entry->d_name, entry->d_type != DT_UNKNOWN && !m_target.filter);
    }
    if (entries.error() != 0)
        fail(entries.error(), FileOperation::List, m_stack.path());
}

void FolderRemoval::removeEntry(const QByteArray& name, bool isKnown)
{
    if (!isKnown) {
        FileStatus status;
        const int code =
            inCurrent([&] { return readStatus(m_stack.current(), name.constData(), status); });
        if (code != 0)
            return conclude(code, name);
        if (status.isDirectory())
            return m_levels.back().pending.push_back({name});
        if (m_target.filter && !m_target.filter(status))
            return conclude(ESTALE, name);
    }
    const int code = removeFromCurrent(name);
    if (code == EISDIR)
        m_levels.back().pending.push_back({name});
    else
        conclude(code, name);
}

void FolderRemoval::finishLevel()
{
    Level done = std::move(m_levels.back());
    m_levels.pop_back();
    FileDescriptor left;
    const int leaving = m_stack.leave(left);
    // Before the folder goes, so that it has its mode whether it goes or stays.
    done.access.giveBack(left.get());
    if (leaving != 0) {
        m_levels.back().pending.clear();
        return fail(leaving, FileOperation::Open, m_stack.path());
    }
    if (done.keepsSomething) {
        m_levels.back().keepsSomething = true;
        return;
    }
    PendingFolder& folder = done.folder;
    const int code = removeFromCurrent(folder.name, AT_REMOVEDIR);
    // Something has come in, or the listing of this file system skips entries under removal.
    if ((code == ENOTEMPTY || code == EEXIST) && ++folder.sweeps < maximumSweeps)
        m_levels.back().pending.push_back(std::move(folder));
    else
        conclude(code, folder.name);
}

void FolderRemoval::conclude(int code, const QByteArray& name)
{
    if (code == 0)
        ++m_report.removed;
    else if (code != ENOENT)
        fail(code, FileOperation::Remove, m_stack.path() + '/' + name);
}

void FolderRemoval::fail(int code, FileOperation operation, const QByteArray& place)
{
    m_levels.back().keepsSomething = true;
    const QByteArray below = place.sliced(m_target.name.size() + 1);
    m_report.failures.push_back({code, m_target.path + PathText::fromBytes(below), operation});
}

} // namespace

RemovalReport removeTarget(const RemovalTarget& target)
{
    FileDescriptor parent;
    FileStatus parentStatus;
    FileStatus found;
    int code = stepInto(target.folder, ".", ParentLinks::Refuse, parent);
    if (code == 0)
        code = readStatus(parent.get(), parentStatus);
    if (code == 0)
        code = readStatus(parent.get(), target.name.constData(), found);
    found.identity.folder = {parentStatus.identity.device, parentStatus.identity.inode};
    if (code == 0 && found.mount != parentStatus.mount)
        code = EBUSY;
    if (code == 0 && ((target.expected && !target.expected->matches(found.identity)) ||
                      (target.filter && !target.filter(found))))
        code = ESTALE;

    RemovalReport report;
    if (code == 0 && found.isDirectory()) {
        FolderRemoval(target, std::move(parent), parentStatus, found, report).run();
        return report;
    }
    if (code == 0)
        code = removeAt(parent.get(), target.name.constData());
    if (code == 0)
        ++report.removed;
    else
        report.failures.push_back({code, target.path, FileOperation::Remove});
    return report;
}

} // namespace posix

RemovalReport removeTree(const QString& path, const std::optional<FileIdentity>& expected)
{
    const auto place = posix::PathPlace::find(path, FileOperation::Remove);
    if (!place)
        return {.removed = 0, .failures = {place.error()}};
    // What cannot go itself is not emptied either.
    posix::FileStatus found;
    const bool isMeant = posix::readStatus(place->folder(), place->name(), found) == 0 &&
                         found.isDirectory() &&
                         (!expected || expected->isSameObject(found.identity));
    if (isMeant && ::faccessat(place->folder(), ".", W_OK | X_OK, AT_EACCESS) != 0)
        return {.removed = 0, .failures = {{errno, path, FileOperation::Remove}}};
    return posix::removeTarget(
        {.folder = place->folder(), .name = place->name(), .path = path, .expected = expected});
}

} // namespace brivane
