#include "platform/FileMove.h"

#include "platform/FileWriting.h"
#include "platform/PathText.h"
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
    [[nodiscard]] int rename();
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

/// Renames what is described by `status`, never over something.
int renameOrLink(int fromFolder, const char* from, int toFolder, const char* to,
                 const FileStatus& status)
{
    int code = renameWithoutReplacing(fromFolder, from, toFolder, to);
    if (code != EINVAL || status.isDirectory())
        return code;
    // This file system cannot do that. A link is never made over something, either.
    code = errorOf([&] { return ::linkat(fromFolder, from, toFolder, to, 0); });
    if (code != 0)
        return code;
    code = removeAt(fromFolder, from);
    if (code != 0)
        (void)removeAt(toFolder, to);
    return code;
}

Result<Moved> Move::run()
{
    if (const int code = m_from.readStatus(m_found))
        return m_from.error(code, FileOperation::Move);
    if (m_options.expected && !m_options.expected->matches(m_found.identity))
        return m_from.error(ESTALE, FileOperation::Move);
    const int code = rename();
    if (code == 0)
        return Moved{};
    if (code == EEXIST)
        return m_to.error(code, FileOperation::Move);
    if (code == EXDEV && m_options.otherDevice == OtherDevice::Copy)
        return copyOver();
    return m_from.error(code, FileOperation::Move);
}

int Move::rename()
{
    const int code =
        renameOrLink(m_from.folder(), m_from.name(), m_to.folder(), m_to.name(), m_found);
    if (code == EINVAL && !m_to.path().startsWith(m_from.path() + u'/'))
        return ENOTSUP;
    FileStatus moved;
    if (code != 0 || !m_options.expected || readStatus(m_to.folder(), m_to.name(), moved) != 0 ||
        moved.identity.isSameObject(m_found.identity)) {
        return code;
    }
    // Another object took the place between the look and the rename: back with it.
    const int back =
        renameOrLink(m_to.folder(), m_to.name(), m_from.folder(), m_from.name(), moved);
    return back == 0 ? ESTALE : back;
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
        const QString folder = m_to.path().first(m_to.path().lastIndexOf(u'/') + 1);
        return FileError{code == 0 ? EEXIST : code, folder + PathText::fromBytes(temporary),
                         FileOperation::Copy};
    }
    const auto copied = copyTree(m_from, m_to.folder(), temporary);
    if (!copied) {
        discard(m_to, temporary);
        return copied.error();
    }
    code = copied->holds(m_found) ? 0 : ESTALE;
    if (code == 0)
        code = readStatus(m_to.folder(), temporary.constData(), made);
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
        .expected = {},
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
