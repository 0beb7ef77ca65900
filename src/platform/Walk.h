#pragma once

#include <QByteArray>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

// The one walk of a file tree that every module uses.
//
// It means what fts means with FTS_PHYSICAL, FTS_NOCHDIR and FTS_XDEV: links are not followed, the
// working directory stays, and file systems mounted below the start are not entered. Entries come
// in the order of a depth-first walk, each directory once before and once after what it holds, and
// what one directory holds in the order in which the file system lists it.
//
// Threads: a Walk belongs to the thread that calls it. Behind it, workers read ahead on all cores,
// and with more threads than that where they wait for a disk:
// they open directories and stat their entries in about the order in which they will be asked for,
// as far as a bounded buffer allows. A small tree never starts them. The owner of the walk is the
// only thread that sees entries, so whatever it builds from them has one writer. Where no thread
// can be started it reads alone, and gives the same.
//
// Two refinements over fts: a directory that another mount of the same device covers (a bind mount)
// counts as another file system, so that nothing is seen twice; and mount points of network file
// systems are not even asked for their attributes, so that a dead server cannot hold up the walk.
namespace brivane {

enum class WalkKind : std::uint8_t {
    Directory,           ///< a directory, before its entries (FTS_D)
    DirectoryEnd,        ///< the same directory, after its entries (FTS_DP)
    UnreadableDirectory, ///< in place of DirectoryEnd: it could not be opened (FTS_DNR), or its
                         ///< listing broke off, after the entries that came until then
    File,                ///< a regular file (FTS_F)
    SymbolicLink,        ///< a link, dangling or not (FTS_SL)
    Other,               ///< socket, FIFO, device (FTS_DEFAULT)
    NoAttributes,        ///< listed by its directory, but stat failed: gone, as a rule (FTS_NS)
};

/// What lstat says of an entry. All zero for NoAttributes and for an entry that is not asked.
struct WalkAttributes {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;          ///< logical length in bytes
    std::uint64_t allocatedSize = 0; ///< bytes that the file system has set aside
    std::int64_t modifiedAt = 0;     ///< nanoseconds since 1970, or the farthest that there are
    std::int64_t changedAt = 0;      ///< likewise
    std::uint32_t mode = 0;          ///< type and permissions as in st_mode
    std::uint32_t links = 0;
};

/// One entry, valid until the next call of Walk::next().
struct WalkEntry {
    WalkKind kind = WalkKind::File;
    bool isMountPoint = false;   ///< a directory that is not entered, since another file system
                                 ///< begins there
    int error = 0;               ///< errno of UnreadableDirectory and NoAttributes, else 0
    std::uint32_t depth = 0;     ///< 0 for the start of the walk
    std::uint32_t following = 0; ///< how many entries of the same directory are known to follow
    std::string_view name;       ///< the last component, bytes; the whole path at depth 0
    WalkAttributes attributes;
};

struct WalkOptions {
    bool includeHidden = true; ///< false leaves out names that begin with a dot, and what they hold
    /// Whether attributes of directories are needed. Without, those below the start are not asked
    /// where the listing tells what they are, which saves a tenth of the questions: they come with
    /// their type as the mode, and all else zero. Nothing changes in what is entered, but a file
    /// system that is mounted after the walk began, or whose parts differ in device without being
    /// mounted, shows as an empty directory and not as a mount point.
    bool directoryAttributes = true;
    /// Says by the name of an entry that is no directory whether its attributes are needed; none
    /// means that all are. What it denies is not asked where the listing tells what it is, and
    /// comes with its type as the mode and all else zero: a search for a few names costs little
    /// more than listing. Called on every thread of the walk, many at a time.
    std::function<bool(std::string_view name)> needsAttributes = {};
    /// Polled at every entry by all threads of the walk; once true, next() gives no more entries.
    const std::atomic<bool>* cancelled = nullptr;
    /// How many entries may be read ahead; about 120 bytes each.
    std::uint32_t readAhead = 65536;
    /// How many threads read ahead. 0 is as many as make sense: about one for each core, and more
    /// while they wait for a disk.
    unsigned workers = 0;
};

class Walk {
public:
    /// Starts at `path` (bytes). A path that does not exist, or cannot since it is empty or has a
    /// NUL in it, gives one NoAttributes entry, one that is no directory gives that entry alone. A
    /// link is not followed. `path` may be longer than system calls accept.
    explicit Walk(QByteArray path, WalkOptions options = {});
    /// Ends the walk wherever it is. A worker that hangs in a system call is left behind and cleans
    /// up for itself.
    ~Walk();
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;

    /// The next entry, or null at the end or after a cancel. The entry is the walk's.
    const WalkEntry* next();

    /// Right after a Directory entry: passes over everything in it. Its DirectoryEnd comes next.
    void skipSubtree();

    /// The full path of the entry that next() gave last, put together now.
    [[nodiscard]] QByteArray path() const;

private:
    class Consumer;
    std::unique_ptr<Consumer> m_consumer;
};

} // namespace brivane
