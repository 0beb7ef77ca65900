#include "sandbox/NastyTree.h"

#include "platform/FileDescriptor.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace brivane {

namespace {

int require(int result, const char* what)
{
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), what);
    return result;
}

FileDescriptor makeFolder(int parent, const char* name)
{
    require(::mkdirat(parent, name, 0755), name);
    return FileDescriptor(
        require(::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC), name));
}

FileDescriptor makeFile(int parent, const char* name)
{
    return FileDescriptor(
        require(::openat(parent, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644), name));
}

/// Builds one nasty tree and counts as it goes.
class Builder {
public:
    Builder(const QByteArray& path, const NastyTreeOptions& options)
        : m_options(options)
        , m_root(makeFolder(AT_FDCWD, path.constData()))
    {
    }

    NastyTreeCounts build()
    {
        addFile(m_root.get(), "plain", "plain");
        addFile(m_root.get(), "empty file");
        if (m_options.names)
            addNames();
        addHardLinks();
        addSparseFile();
        addLinks();
        addChain();
        addFolder("empty folder");
        if (m_options.specialFiles)
            addSpecialFiles();
        if (m_options.unreadableFolders)
            addUnreadableFolders();
        return m_counts;
    }

private:
    void addFile(int parent, const QByteArray& name, const QByteArray& content = {})
    {
        const FileDescriptor file = makeFile(parent, name.constData());
        const auto size = static_cast<std::size_t>(content.size());
        require(static_cast<int>(::write(file.get(), content.constData(), size)), name.constData());
        ++m_counts.files;
        m_counts.logicalBytes += size;
    }

    FileDescriptor addFolder(const QByteArray& name)
    {
        ++m_counts.folders;
        return makeFolder(m_root.get(), name.constData());
    }

    void addLink(const QByteArray& target, const char* name)
    {
        require(::symlinkat(target.constData(), m_root.get(), name), name);
        ++m_counts.links;
    }

    void addNames()
    {
        const QByteArray names[] = {
            "line\nbreak",
            "'single' \"double\" `back`",
            "back\\slash\\n",
            "-rf",
            ".hidden",
            "...",
            " leading blank",
            "trailing blank ",
            "*",
            "$(touch x); %s%n",
            "tab\tand \x01 control",
            "right\xE2\x80\xAEtxt.exe",
            "caf\xC3\xA9",      // composed
            "cafe\xCC\x81",     // decomposed: another name
            "invalid \xFF\xFE", // no UTF-8
            "cut \xE2\x82",     // a sequence without its end
            QByteArray(255, 'x'),
            QByteArray(252, '\xFD') + "\n\xC3y",
        };
        const FileDescriptor folders = addFolder("folders\n\xFF");
        for (const QByteArray& name : names) {
            addFile(m_root.get(), name, name);
            const FileDescriptor folder = makeFolder(folders.get(), name.constData());
            ++m_counts.folders;
            addFile(folder.get(), name, name);
        }
    }

    void addHardLinks()
    {
        const FileDescriptor folder = addFolder("hard links");
        addFile(m_root.get(), "first link", "one content");
        for (const char* name : {"second link", "third link"}) {
            require(::linkat(m_root.get(), "first link", folder.get(), name, 0), name);
            ++m_counts.files;
            m_counts.logicalBytes += qstrlen("one content");
        }
    }

    void addSparseFile()
    {
        constexpr off_t size = 256 << 10;
        const FileDescriptor file = makeFile(m_root.get(), "sparse");
        require(::ftruncate(file.get(), size), "sparse");
        require(static_cast<int>(::pwrite(file.get(), "middle", 6, size / 2)), "sparse");
        ++m_counts.files;
        m_counts.logicalBytes += size;
    }

    void addLinks()
    {
        addLink("nowhere", "dangling link");
        addLink("loop b", "loop a");
        addLink("loop a", "loop b");
        addLink("self", "self");
        addLink("..", "link to parent");
        addLink(".", "link to here");
        addLink("/", "link to root");
        addLink("plain", "link to file");
        addLink("empty folder", "link to folder");
        if (!m_options.elsewhere.isEmpty())
            addLink(m_options.elsewhere, "elsewhere");
    }

    void addChain()
    {
        FileDescriptor folder = addFolder("chain");
        for (int level = 0; level < m_options.levels; ++level) {
            folder = makeFolder(folder.get(), "level");
            ++m_counts.folders;
            addFile(folder.get(), "beside");
        }
    }

    void addSpecialFiles()
    {
        require(::mkfifoat(m_root.get(), "fifo", 0644), "fifo");
        ++m_counts.fifos;
        // A socket takes its name from a path, which may be too long: bind in the folder itself.
        const FileDescriptor socket(
            require(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0), "socket"));
        sockaddr_un address = {.sun_family = AF_UNIX, .sun_path = {}};
        const QByteArray path = "/proc/self/fd/" + QByteArray::number(m_root.get()) + "/socket";
        std::copy(path.begin(), path.end(), address.sun_path);
        const void* generic = &address;
        require(::bind(socket.get(), static_cast<const sockaddr*>(generic), sizeof address),
                "socket");
        ++m_counts.sockets;
    }

    void addUnreadableFolders()
    {
        addFolder("unreadable and empty");
        const FileDescriptor folder = addFolder("unreadable");
        addFile(folder.get(), "unseen", "unseen");
        ++m_counts.unreadableFiles;
        for (const char* name : {"unreadable and empty", "unreadable"})
            require(::fchmodat(m_root.get(), name, 0, 0), name);
    }

    NastyTreeOptions m_options;
    FileDescriptor m_root;
    NastyTreeCounts m_counts;
};

} // namespace

NastyTreeCounts buildNastyTree(const QByteArray& folder, const NastyTreeOptions& options)
{
    return Builder(folder, options).build();
}

void unlockNastyTree(const QByteArray& folder)
{
    for (const char* name : {"/unreadable and empty", "/unreadable"})
        (void)::chmod((folder + name).constData(), 0700);
}

void buildDeepChain(const QByteArray& folder, int levels)
{
    FileDescriptor level = makeFolder(AT_FDCWD, folder.constData());
    for (int i = 0; i < levels; ++i)
        level = makeFolder(level.get(), "d");
    makeFile(level.get(), "bottom");
}

void buildFlatFolder(const QByteArray& folder, int entries)
{
    const FileDescriptor parent = makeFolder(AT_FDCWD, folder.constData());
    for (int i = 0; i < entries; ++i)
        makeFile(parent.get(), QByteArray::number(i).constData());
}

QByteArray makeFolderOnOtherDevice(const QByteArray& reference)
{
    struct stat here = {};
    struct stat memory = {};
    QByteArray folder = "/dev/shm/brivane-XXXXXX";
    if (::stat(reference.constData(), &here) != 0 || ::stat("/dev/shm", &memory) != 0 ||
        here.st_dev == memory.st_dev || !::mkdtemp(folder.data())) {
        return {};
    }
    return folder;
}

} // namespace brivane
