#include "platform/PrivateDirectory.h"

#include "platform/FileDescriptor.h"
#include "platform/PathText.h"

#include <cerrno>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brivane {

namespace {

/// The parent of `path`, opened; invalid unless only this user and root can change its entries.
FileDescriptor trustedParent(const QByteArray& path)
{
    const QByteArray parent = path.first(std::max<qsizetype>(path.lastIndexOf('/'), 1));
    FileDescriptor directory(::open(parent.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat facts = {};
    if (!directory.isValid() || ::fstat(directory.get(), &facts) != 0)
        return {};
    const bool isOurs = facts.st_uid == ::geteuid() || facts.st_uid == 0;
    const bool isShared = (facts.st_mode & (S_IWGRP | S_IWOTH)) != 0;
    const bool isSticky = (facts.st_mode & S_ISVTX) != 0;
    return isOurs && (!isShared || isSticky) ? std::move(directory) : FileDescriptor();
}

} // namespace

bool makePrivateDirectory(const QString& path)
{
    const QByteArray bytes = PathText::toBytes(path);
    const QByteArray name = bytes.sliced(bytes.lastIndexOf('/') + 1);
    const FileDescriptor parent = trustedParent(bytes);
    if (!parent.isValid() || name.isEmpty())
        return false;
    if (::mkdirat(parent.get(), name.constData(), 0700) != 0 && errno != EEXIST)
        return false;
    const FileDescriptor directory(
        ::openat(parent.get(), name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat facts = {};
    if (!directory.isValid() || ::fstat(directory.get(), &facts) != 0 ||
        facts.st_uid != ::geteuid())
        return false;
    return (facts.st_mode & 07777) == 0700 || ::fchmod(directory.get(), 0700) == 0;
}

QString makeUniquePrivateDirectory(const QString& path)
{
    QByteArray bytes = PathText::toBytes(path);
    if (!trustedParent(bytes).isValid())
        return {};
    bytes += "-XXXXXX";
    return ::mkdtemp(bytes.data()) != nullptr ? PathText::fromBytes(bytes) : QString();
}

bool keepToOurselves(const QString& path)
{
    // A FIFO would wait for a writer otherwise.
    constexpr int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const FileDescriptor file(::open(PathText::toBytes(path).constData(), flags));
    if (!file.isValid())
        return errno == ENOENT;
    struct stat facts = {};
    return ::fstat(file.get(), &facts) == 0 && S_ISREG(facts.st_mode) && facts.st_nlink == 1 &&
           facts.st_uid == ::geteuid() && ::fchmod(file.get(), 0700) == 0;
}

} // namespace brivane
