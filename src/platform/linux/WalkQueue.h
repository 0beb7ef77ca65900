#pragma once

#include "platform/Walk.h"
#include "platform/linux/WalkPace.h"
#include "platform/linux/WalkStart.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

// What the threads of one walk share: the directories that are known and not yet delivered.
//
// `front` to `back` is a list, in the order of the walk, of every directory that still waits to be
// read or is being read. When a directory has been read its subdirectories take its place in the
// list, so the first waiting one is always the one that will be asked for first, whoever reads it.
//
// One mutex guards everything here but what a thread reads of a directory that it is reading
// itself. It is taken twice by the thread that reads a directory and once by the owner, as a rule,
// and never for an entry.
//
// Workers are as many as WalkPace finds useful: those beyond that rest until they are called again.
namespace brivane::walking {

struct Directory;

/// One entry as a worker found it; the name's bytes follow it in the batch.
struct Record {
    WalkAttributes attributes;
    Directory* directory = nullptr; ///< set when the entry is a directory to be entered
    int error = 0;
    std::uint16_t nameLength = 0;
    WalkKind kind = WalkKind::File;
    bool isMountPoint = false;

    [[nodiscard]] std::string_view name() const
    {
        return {reinterpret_cast<const char*>(this + 1), nameLength};
    }
    /// Bytes of the record with its name, such that the next one is aligned.
    [[nodiscard]] std::size_t stride() const { return strideFor(nameLength); }
    [[nodiscard]] static std::size_t strideFor(std::size_t nameLength)
    {
        return (sizeof(Record) + nameLength + alignof(Record) - 1) & ~(alignof(Record) - 1);
    }
};

/// A run of entries of one directory, in their order.
struct Batch {
    std::unique_ptr<std::byte[]> bytes;
    std::size_t size = 0;
    std::uint32_t count = 0;
};

struct Directory {
    enum class State : std::uint8_t { Waiting, Reading, Done };

    Directory* parent = nullptr;   ///< null at the start of the walk
    Directory* openFrom = nullptr; ///< set while it is opened: who is above it and open
    Directory* previous = nullptr;
    Directory* next = nullptr;
    std::vector<Batch> batches; ///< read; those before `taken` are the owner's by now
    std::size_t taken = 0;
    std::string name;             ///< at the start of the walk its whole path
    int descriptor = -1;          ///< open while it is read and while `pins` is above 0
    int error = 0;                ///< errno of the open or of the listing, when that failed
    std::uint32_t references = 1; ///< its record or who took that, its reader, and its children
    std::uint32_t pins = 0;       ///< who needs `descriptor`: children to be opened, and `openers`
    std::uint32_t openers = 0;    ///< threads that open something from `descriptor` right now
    State state = State::Waiting;
    bool keepsDescriptor = false; ///< counts against the limit of held descriptors
    bool discarded = false;       ///< nobody will ask for it
};

class WalkQueue {
public:
    explicit WalkQueue(WalkOptions options);
    ~WalkQueue();
    WalkQueue(const WalkQueue&) = delete;
    WalkQueue& operator=(const WalkQueue&) = delete;

    const WalkOptions options;
    WalkStart start;          ///< set before any worker runs
    std::uint64_t device = 0; ///< of the start; set before any worker runs
    /// Mount points that must not be touched, full paths; set before any worker runs.
    std::vector<std::string> untouchable;
    /// The last components of all mount points, in order; set before any worker runs.
    std::vector<std::string> mountNames;

    [[nodiscard]] bool isStopped() const
    {
        return m_stopped.load(std::memory_order_relaxed) ||
               (options.cancelled && options.cancelled->load(std::memory_order_relaxed));
    }
    void stop();

    // For readers.

    /// Makes a directory below `parent` (null for the start), not yet in the list, with one
    /// reference for its record. Takes no lock: the caller is reading `parent`.
    static Directory* make(Directory* parent, std::string_view name);
    /// Puts the directory at the start into the list.
    void begin(Directory* first);
    /// Waits for the first waiting directory and marks it as being read; null when the walk ends.
    /// For workers, each of which has one at a time and asks when it is through with it.
    Directory* takeForReading();
    /// Opens `directory`, being read by the caller, close on exec; gives its descriptor or -1 with
    /// `directory->error` set. Works at any depth and with bounded descriptors, takes no lock.
    /// Where the process has no descriptor left it waits a little for others to give one back.
    int open(Directory* directory) const;
    /// Hands over entries of a directory that the caller reads; `children` are those to be entered,
    /// in order; the list is emptied. `last` ends the reading, and the directory may be gone after.
    void publish(Directory* directory, Batch batch, std::vector<Directory*>& children, bool last);

    // For the owner of the walk.

    /// What the owner has of a directory that it delivers.
    struct Delivery {
        Directory* directory = nullptr; ///< null when the owner has all of it: it may be gone
        Batch batch{};                  ///< the last one that was taken
        int error = 0;                  ///< of the directory, when the owner has all of it
    };
    enum class Next { Batch, End, Read, Stopped };
    /// The next entries of the directory of `delivery`, or the end of it. Read means that the
    /// caller is now to read `toRead`: it is that directory, which nobody has begun, or another
    /// one, while a worker is still at it. Stopped means that the walk was cancelled. Sleeps only
    /// when there is nothing to read.
    Next takeBatch(Delivery& delivery, Directory*& toRead);
    /// Nobody will ask for `directory` or anything below it.
    void discard(Directory* directory);
    /// Drops the directories of the records of `batch` from byte `offset` on.
    void discardRest(const Batch& batch, std::size_t offset);
    /// How many directories wait to be read.
    [[nodiscard]] std::size_t waiting() const;

    /// How many workers may read at a time. From `fewest` up to `most`, as they find it useful.
    void allowWorkers(unsigned fewest, unsigned most);
    /// What a worker finds of itself. Whether the caller is to start another.
    bool note(WalkPace::Finding finding);
    /// Counts the workers, so that the owner can wait for them to leave.
    void workerStarts();
    void workerLeaves();
    /// A worker that was counted got no thread; none is called for any more.
    void workerFailed();
    /// Waits for the workers to leave, but no longer than a tenth of a second.
    void waitForWorkers();

private:
    using Lock = std::unique_lock<std::mutex>;

    void insertBefore(Directory* at, Directory* directory);
    void unlink(Directory* directory);
    Directory* startReadingFirst();
    [[nodiscard]] bool hasWork() const { return m_waiting > 0 && !m_isFull; }
    void wakeWorkers(std::size_t spare = 0);
    void endOpening(Directory* directory);
    static int openBelow(const Directory* directory, const Directory* ancestor);
    void unpin(Directory* directory);
    void closeIfUnused(Directory* directory);
    void dropReference(Directory* directory);
    void discardLocked(Directory* directory);
    void collectChildren(const Batch& batch, std::size_t offset,
                         std::vector<Directory*>& children) const;

    const unsigned m_limitOfAllWalks; ///< of held descriptors
    mutable std::mutex m_mutex;
    std::condition_variable m_workAvailable;
    std::condition_variable m_batchAvailable;
    std::condition_variable m_workersLeft;
    std::atomic<bool> m_stopped{false};
    Directory* m_front = nullptr;
    Directory* m_back = nullptr;
    std::size_t m_waiting = 0;
    std::uint64_t m_buffered = 0; ///< entries in batches that are not taken
    bool m_isFull = false;        ///< reached the read-ahead, and is not yet half empty again
    unsigned m_workers = 0;
    unsigned m_idleWorkers = 0;
    unsigned m_fewestWorkers = 0;
    unsigned m_mostWorkers = 0;
    unsigned m_allowedWorkers = 0; ///< between the two: how many may read
    unsigned m_heldDescriptors = 0;
    const Directory* m_awaited = nullptr; ///< the owner sleeps until there is something of it
};

} // namespace brivane::walking
