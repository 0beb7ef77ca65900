#include "platform/linux/TreeRemoval.h"

#include "platform/PathText.h"
#include "platform/linux/FolderEntries.h"
#include "platform/linux/FolderStack.h"
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
    void sweep();
    void removeEntry(const QByteArray& name, bool isKnown);
    void finishLevel();
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
    const bool isRoot = m_levels.size() == 1;
    const char* name = folder.name.constData();
    FileDescriptor opened;
    FileStatus status;
    int code = openFolder(m_stack.current(), name, opened);
    // Swapped for something else in between: that is in the tree as well, and is no way out of it.
    if ((code == ENOTDIR || code == ELOOP) && !isRoot)
        return conclude(removeAt(m_stack.current(), name), folder.name);
    // An empty folder need not be readable to be removed.
    if (code == EACCES && removeAt(m_stack.current(), name, AT_REMOVEDIR) == 0)
        return conclude(0, folder.name);
    if (code == 0)
        code = readStatus(opened.get(), status);
    if (code == 0 && isRoot && !status.identity.isSameObject(m_root.identity))
        code = ESTALE;
    if (code == 0 && !status.isOnSameMount(m_root))
        code = EXDEV;
    if (code == 0 && m_target.filter && !m_target.filter(status))
        code = ESTALE;
    if (code != 0) {
        if (code != ENOENT)
            fail(code, FileOperation::Open, m_stack.path() + '/' + folder.name);
        return;
    }
    m_stack.enter(folder.name, std::move(opened), status);
    m_levels.push_back({.folder = std::move(folder), .pending = {}});
    sweep();
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
        if (const int code = readStatus(m_stack.current(), name.constData(), status))
            return conclude(code, name);
        if (status.isDirectory())
            return m_levels.back().pending.push_back({name});
        if (m_target.filter && !m_target.filter(status))
            return conclude(ESTALE, name);
    }
    const int code = removeAt(m_stack.current(), name.constData());
    if (code == EISDIR)
        m_levels.back().pending.push_back({name});
    else
        conclude(code, name);
}

void FolderRemoval::finishLevel()
{
    Level done = std::move(m_levels.back());
    m_levels.pop_back();
    if (const int code = m_stack.leave()) {
        m_levels.back().pending.clear();
        return fail(code, FileOperation::Open, m_stack.path());
    }
    if (done.keepsSomething) {
        m_levels.back().keepsSomething = true;
        return;
    }
    PendingFolder& folder = done.folder;
    const int code = removeAt(m_stack.current(), folder.name.constData(), AT_REMOVEDIR);
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
    return posix::removeTarget(
        {.folder = place->folder(), .name = place->name(), .path = path, .expected = expected});
}

} // namespace brivane
