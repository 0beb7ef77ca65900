#include "sandbox/SandboxMachine.h"

#include "platform/FileDescriptor.h"
#include "platform/PathText.h"
#include "sandbox/ClearFolder.h"
#include "sandbox/NastyTree.h"

#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brivane {

namespace {

[[noreturn]] void fail(const QByteArray& what)
{
    throw std::system_error(errno, std::generic_category(), what.toStdString());
}

void check(bool success, const QByteArray& what)
{
    if (!success)
        fail(what);
}

/// Makes `directory` with what is missing on the way to it.
void makeDirectories(const QByteArray& directory)
{
    if (::mkdir(directory.constData(), 0755) == 0 || errno == EEXIST)
        return;
    check(errno == ENOENT, directory);
    makeDirectories(directory.first(directory.lastIndexOf('/')));
    check(::mkdir(directory.constData(), 0755) == 0 || errno == EEXIST, directory);
}

/// Does `make`, which gives a negative number on failure, once more with the folder made when the
/// folder is what is missing: most files join others that are there.
template<typename Make>
int inFolder(const QByteArray& path, Make make)
{
    int result = make();
    if (result < 0 && errno == ENOENT) {
        makeDirectories(path.first(path.lastIndexOf('/')));
        result = make();
    }
    check(result >= 0, path);
    return result;
}

FileDescriptor openFile(const QByteArray& path, int more)
{
    return FileDescriptor(inFolder(path, [&] {
        return ::open(path.constData(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC | more, 0644);
    }));
}

QByteArray makeTemporary(const QByteArray& directory)
{
    QByteArray folder = directory + "/brivane-sandbox-XXXXXX";
    return ::mkdtemp(folder.data()) != nullptr ? folder : QByteArray();
}

timespec timeOf(const QDateTime& time)
{
    const qint64 milliseconds = time.toMSecsSinceEpoch();
    const qint64 seconds = milliseconds >= 0 ? milliseconds / 1000 : (milliseconds - 999) / 1000;
    return {seconds, (milliseconds - seconds * 1000) * 1'000'000};
}

} // namespace

SandboxMachine::SandboxMachine(QByteArray folder, Ending ending)
    : m_folder(std::move(folder))
    , m_ending(ending)
    , m_locations(Locations::insideFolder(PathText::fromBytes(m_folder)))
{
    makeDirectories(PathText::toBytes(m_locations.home()));
    makeDirectories(m_folder + "/commands");
}

SandboxMachine::SandboxMachine(const QString& folder)
    : SandboxMachine(PathText::toBytes(folder), Ending::Stays)
{
}

SandboxMachine SandboxMachine::temporary()
{
    const QByteArray directory = qgetenv("TMPDIR");
    const QByteArray folder = makeTemporary(directory.startsWith('/') ? directory : "/tmp");
    check(!folder.isEmpty(), directory);
    return {folder, Ending::IsRemoved};
}

SandboxMachine::SandboxMachine(SandboxMachine&& other) noexcept
    : m_folder(std::exchange(other.m_folder, {}))
    , m_ending(other.m_ending)
    , m_locations(other.m_locations)
    , m_secondDevice(std::exchange(other.m_secondDevice, {}))
{
}

SandboxMachine::~SandboxMachine()
{
    if (!m_secondDevice.isEmpty())
        clearFolder(m_secondDevice);
    if (m_ending == Ending::IsRemoved && !m_folder.isEmpty())
        clearFolder(m_folder);
}

QString SandboxMachine::folder() const
{
    return PathText::fromBytes(m_folder);
}

QString SandboxMachine::path(QStringView cataloguePath) const
{
    return m_locations.path(cataloguePath);
}

QString SandboxMachine::file(QStringView cataloguePath, Size size) const
{
    const QString place = path(cataloguePath);
    const QByteArray bytes = PathText::toBytes(place);
    check(::ftruncate(openFile(bytes, 0).get(), size.bytes) == 0, bytes);
    return place;
}

QString SandboxMachine::file(QStringView cataloguePath, const QByteArray& content) const
{
    const QString place = path(cataloguePath);
    const QByteArray bytes = PathText::toBytes(place);
    const FileDescriptor file = openFile(bytes, O_TRUNC);
    for (qsizetype at = 0; at < content.size();) {
        const ssize_t written = ::write(file.get(), content.constData() + at,
                                        static_cast<std::size_t>(content.size() - at));
        check(written > 0, bytes);
        at += written;
    }
    return place;
}

QString SandboxMachine::directory(QStringView cataloguePath) const
{
    const QString place = path(cataloguePath);
    makeDirectories(PathText::toBytes(place));
    return place;
}

QString SandboxMachine::link(QStringView cataloguePath, const QByteArray& text) const
{
    const QString place = path(cataloguePath);
    const QByteArray bytes = PathText::toBytes(place);
    inFolder(bytes, [&] { return ::symlink(text.constData(), bytes.constData()); });
    return place;
}

void SandboxMachine::setTimes(QStringView cataloguePath, const QDateTime& modified,
                              const QDateTime& accessed) const
{
    const QByteArray bytes = PathText::toBytes(path(cataloguePath));
    const timespec times[] = {timeOf(accessed), timeOf(modified)};
    check(::utimensat(AT_FDCWD, bytes.constData(), times, AT_SYMLINK_NOFOLLOW) == 0, bytes);
}

void SandboxMachine::setMode(QStringView cataloguePath, mode_t mode) const
{
    const QByteArray bytes = PathText::toBytes(path(cataloguePath));
    check(::chmod(bytes.constData(), mode) == 0, bytes);
}

SandboxCommand SandboxMachine::command(QStringView cataloguePath) const
{
    const QByteArray place = PathText::toBytes(path(cataloguePath));
    return {place, m_folder + "/commands" + place.sliced(m_folder.size())};
}

std::optional<QString> SandboxMachine::secondDevice()
{
    if (m_secondDevice.isEmpty())
        m_secondDevice = makeFolderOnOtherDevice(m_folder);
    if (m_secondDevice.isEmpty())
        return std::nullopt;
    return PathText::fromBytes(m_secondDevice);
}

} // namespace brivane
