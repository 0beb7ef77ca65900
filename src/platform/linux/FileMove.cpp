#include "platform/FileMove.h"

#include "platform/FileWriting.h"
#include "platform/LiesIn.h"
#include "platform/PathText.h"
#include "platform/linux/LentAccess.h"
#include "platform/linux/PathPlace.h"
#include "platform/linux/TreeCopy.h"
#include "platform/linux/TreeRemoval.h"

namespace brivane {

using namespace posix;

namespace {

/// One move, from one open folder to another.
class Move {
public:
    Move(const PathPlace& from, const PathPlace& to, const MoveOptions& options)
        : m_from(from)
        , m_to(to)
        , m_options(options)
    {
    }

    Result<Moved> run();

private:
    [[nodiscard]] Result<Moved> checkRenamed() const;
    [[nodiscard]] Result<Moved> copyOver();
    [[nodiscard]] Result<Moved> removeSource(const CopiedObjects& copied,
                                             const FileStatus& made) const;
    [[nodiscard]] bool sourceStands() const;

    const PathPlace& m_from;
    const PathPlace& m_to;
    const MoveOptions& m_options;
    FileStatus m_found;
};

/// Takes back a copy that was not to be. With `made`, only if it is still that very object.
void discard(const PathPlace& place, const QByteArray& name, const FileStatus* made = nullptr)
{
    std::optional<FileIdentity> expected;
    if (made)
        expected = {.device = made->identity.device, .inode = made->identity.inode};
    (void)removeTarget(
        {.folder = place.folder(), .name = name, .path = place.path(), .expected = expected});
}

/// Renames a folder over an empty one that is made for it. Somebody else's empty folder that takes
/// the place of that one in between is replaced; nothing else can be.
int renameOverOwn(int fromFolder, const char* from, int toFolder, const char* to)
{
    int code = errorOf([&] { return ::mkdirat(toFolder, to, S_IRWXU); });
    if (code != 0)
        return code;
    FileStatus made;
    FileStatus now;
    const bool isKnown = readStatus(toFolder, to, made) == 0;
    code = errorOf([&] { return ::renameat(fromFolder, from, toFolder, to); });
    if (code == 0)
        return 0;
    const bool isAnother =
        isKnown && readStatus(toFolder, to, now) == 0 && !now.identity.isSameObject(made.identity);
    if (!isAnother)
        (void)removeAt(toFolder, to, AT_REMOVEDIR);
    return code == ENOTEMPTY || code == ENOTDIR ? EEXIST : code;
}

/// Renames what is described by `status`, never over something.
int renameOrLink(int fromFolder, const char* from, int toFolder, const char* to,
                 const FileStatus& status)
{
    int code = renameWithoutReplacing(fromFolder, from, toFolder, to);
    if (code != EINVAL)
        return code;
    // This file system cannot do that.
    if (status.isDirectory())
        return renameOverOwn(fromFolder, from, toFolder, to);
    // A link is never made over something, either.
    code = errorOf([&] { return ::linkat(fromFolder, from, toFolder, to, 0); });
    if (code != 0)
        return code;
    code = removeAt(fromFolder, from);
    if (code != 0)
        (void)removeAt(toFolder, to);
    return code;
}

int rename(const PathPlace& from, const PathPlace& to, const FileStatus& status)
{
    // Into itself: so the system says, too, but for file systems that cannot do the rename it asks.
    if (to.path() != from.path() && liesIn(to.path(), from.path()))
        return EINVAL;
    return moveLending(
        from, status,
        [&] { return renameOrLink(from.folder(), from.name(), to.folder(), to.name(), status); },
        [&] { return mayChange(to.folder()); });
}

/// The path of what is named `name` beside `place`.
QString pathBeside(const PathPlace& place, const QByteArray& name)
{
    QString path = place.path();
    while (path.endsWith(u'/'))
        path.chop(1);
    return path.first(path.lastIndexOf(u'/') + 1) + PathText::fromBytes(name);
}

Result<Moved> Move::run()
{
    if (const int code = m_from.readStatus(m_found))
        return m_from.error(code, FileOperation::Move);
    if (m_options.expected && !m_options.expected->matches(m_found.identity))
        return m_from.error(ESTALE, FileOperation::Move);
    const int code = rename(m_from, m_to, m_found);
    if (code == 0)
        return checkRenamed();
    if (code == EEXIST)
        return m_to.error(code, FileOperation::Move);
    if (code == EXDEV && m_options.otherDevice == OtherDevice::Copy)
        return copyOver();
    return m_from.error(code, FileOperation::Move);
}

/// Takes back a rename that turns out to have moved another object, which took the place of the
/// meant one between the look and the rename.
Result<Moved> Move::checkRenamed() const
{
    if (!m_options.expected)
        return Moved{};
    FileStatus moved = m_found;
    const int code = readStatus(m_to.folder(), m_to.name(), moved);
    if (code == 0 && moved.identity.isSameObject(m_found.identity))
        return Moved{};
    const int back = rename(m_to, m_from, moved);
    if (back == 0)
        return m_from.error(code == 0 ? ESTALE : code, FileOperation::Move);
    FileError error = m_to.error(ESTALE, FileOperation::Move);
    error.detail = QStringLiteral("Another item had taken its place, and was moved here");
    return error;
}

Result<Moved> Move::copyOver()
{
    FileStatus made;
    int code = readStatus(m_to.folder(), m_to.name(), made);
    if (code != ENOENT)
        return m_to.error(code == 0 ? EEXIST : code, FileOperation::Move);

    const QByteArray temporary = m_options.temporaryName.isEmpty()
                                     ? temporaryName()
                                     : PathText::toBytes(m_options.temporaryName);
    code = readStatus(m_to.folder(), temporary.constData(), made);
    if (code != ENOENT) {
        return FileError{code == 0 ? EEXIST : code, pathBeside(m_to, temporary),
                         FileOperation::Copy};
    }
    const auto copied = copyTree(m_from, m_found, m_to.folder(), temporary);
    if (!copied) {
        discard(m_to, temporary);
        return copied.error();
    }
    code = copied->holds(m_found) ? 0 : ESTALE;
    if (code == 0)
        code = readStatus(m_to.folder(), temporary.constData(), made);
    if (code == 0 && m_options.onceWhole)
        m_options.onceWhole(made.identity);
    if (code == 0) {
        code = renameOrLink(m_to.folder(), temporary.constData(), m_to.folder(), m_to.name(), made);
    }
    if (code != 0) {
        discard(m_to, temporary);
        return m_to.error(code, FileOperation::Move);
    }
    code = syncFolder(m_to.folder());
    if (code != 0) {
        discard(m_to, m_to.name(), &made);
        return m_to.error(code, FileOperation::Sync);
    }
    return removeSource(*copied, made);
}

Result<Moved> Move::removeSource(const CopiedObjects& copied, const FileStatus& made) const
{
    RemovalReport removal = removeTarget({
        .folder = m_from.folder(),
        .name = m_from.name(),
        .path = m_from.path(),
        .expected =
            FileIdentity{.device = m_found.identity.device, .inode = m_found.identity.inode},
        .filter = [&](const FileStatus& status) { return copied.holds(status); },
    });
    if (!removal.isComplete() && removal.removed == 0 && sourceStands()) {
        discard(m_to, m_to.name(), &made);
        return removal.failures.front();
    }
    return Moved{.leftBehind = std::move(removal.failures)};
}

bool Move::sourceStands() const
{
    FileStatus now;
    return readStatus(m_from.folder(), m_from.name(), now) == 0 &&
           now.identity.isSameObject(m_found.identity);
}

} // namespace

Result<Moved> moveWithoutReplacing(const QString& from, const QString& to,
                                   const MoveOptions& options)
{
    if (!options.temporaryName.isEmpty() && !isTemporaryName(options.temporaryName))
        return FileError{EINVAL, options.temporaryName, FileOperation::Move};
    const auto source = PathPlace::find(from, FileOperation::Move);
    if (!source)
        return source.error();
    const auto destination = PathPlace::find(to, FileOperation::Move, options.toParents);
    if (!destination)
        return destination.error();
    return Move(*source, *destination, options).run();
}

} // namespace brivane
