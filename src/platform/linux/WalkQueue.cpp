#include "platform/linux/WalkQueue.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace brivane::walking {

namespace {

/// Directories of a walk whose descriptor is kept for their children.
constexpr unsigned heldDescriptorLimit = 128;

/// Those of all walks together, of which there are as many as cores, may have a quarter of what the
/// process is allowed.
std::atomic<unsigned> heldByAllWalks{0};

unsigned limitOfAllWalks()
{
    rlimit allowed = {};
    ::getrlimit(RLIMIT_NOFILE, &allowed);
    return static_cast<unsigned>(std::min<rlim_t>(allowed.rlim_cur / 4, 4096));
}

/// How long a thread tries again for a descriptor that others have to give back first: each reader
/// has two or three for a moment.
constexpr auto betweenTries = std::chrono::milliseconds(1);
constexpr int mostTries = 50;

constexpr int directoryFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;

const Record* recordAt(const Batch& batch, std::size_t offset)
{
    return reinterpret_cast<const Record*>(batch.bytes.get() + offset);
}

} // namespace

WalkQueue::WalkQueue(WalkOptions givenOptions)
    : options(std::move(givenOptions))
    , m_limitOfAllWalks(limitOfAllWalks())
{
}

WalkQueue::~WalkQueue() = default;

void WalkQueue::stop()
{
    m_stopped.store(true, std::memory_order_relaxed);
    const Lock lock(m_mutex);
    m_workAvailable.notify_all();
}

Directory* WalkQueue::make(Directory* parent, std::string_view name)
{
    auto* directory = new Directory;
    directory->parent = parent;
    directory->name = name;
    return directory;
}

void WalkQueue::begin(Directory* first)
{
    const Lock lock(m_mutex);
    first->pins = 1; // never taken back: from here any directory can be reached
    insertBefore(nullptr, first);
    ++m_waiting;
}

Directory* WalkQueue::takeForReading()
{
    Lock lock(m_mutex);
    ++m_idleWorkers;
    // The cancel flag belongs to someone who does not wake us, so look at it now and then.
    while (!isStopped() && (!hasWork() || m_workers - m_idleWorkers >= m_allowedWorkers))
        m_workAvailable.wait_for(lock, std::chrono::milliseconds(50));
    --m_idleWorkers;
    return isStopped() ? nullptr : startReadingFirst();
}

Directory* WalkQueue::startReadingFirst()
{
    Directory* directory = m_front;
    while (directory->state != Directory::State::Waiting)
        directory = directory->next;
    directory->state = Directory::State::Reading;
    ++directory->references;
    --m_waiting;
    if (Directory* ancestor = directory->parent) {
        while (ancestor->descriptor < 0 && ancestor->parent)
            ancestor = ancestor->parent;
        ++ancestor->pins;
        ++ancestor->openers;
        directory->openFrom = ancestor;
    }
    return directory;
}

int WalkQueue::open(Directory* directory) const
{
    for (int tries = 1;; ++tries) {
        directory->descriptor = directory->openFrom ? openBelow(directory, directory->openFrom)
                                                    : ::openat(start.folder(), start.name(),
                                                               directoryFlags | O_NOFOLLOW);
        directory->error = directory->descriptor < 0 ? errno : 0;
        const bool isScarce = directory->error == EMFILE || directory->error == ENFILE;
        if (!isScarce || tries == mostTries || isStopped())
            return directory->descriptor;
        std::this_thread::sleep_for(betweenTries);
    }
}

int WalkQueue::openBelow(const Directory* directory, const Directory* ancestor)
{
    std::vector<const Directory*> between;
    for (const Directory* at = directory->parent; at != ancestor; at = at->parent)
        between.push_back(at);
    int from = ancestor->descriptor;
    // One component at a time: no path is too long, and a link that took the place of a directory
    // meanwhile is not followed.
    for (auto at = between.rbegin(); at != between.rend(); ++at) {
        const int next =
            ::openat(from, (*at)->name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        const int error = errno;
        if (from != ancestor->descriptor)
            ::close(from);
        errno = error;
        if (next < 0)
            return -1;
        from = next;
    }
    const int descriptor = ::openat(from, directory->name.c_str(), directoryFlags | O_NOFOLLOW);
    const int error = errno;
    if (from != ancestor->descriptor)
        ::close(from);
    errno = error;
    return descriptor;
}

void WalkQueue::endOpening(Directory* directory)
{
    if (Directory* const ancestor = std::exchange(directory->openFrom, nullptr)) {
        --ancestor->openers;
        unpin(ancestor);
        unpin(directory->parent);
    }
}

void WalkQueue::wakeWorkers(std::size_t spare)
{
    if (m_isFull || m_waiting <= spare)
        return;
    const unsigned reading = m_workers - m_idleWorkers;
    const unsigned more = m_allowedWorkers > reading ? m_allowedWorkers - reading : 0;
    const std::size_t wanted =
        std::min<std::size_t>(m_waiting - spare, std::min(more, m_idleWorkers));
    for (std::size_t i = 0; i < wanted; ++i)
        m_workAvailable.notify_one();
}

void WalkQueue::publish(Directory* directory, Batch batch, std::vector<Directory*>& children,
                        bool last)
{
    const Lock lock(m_mutex);
    endOpening(directory);
    if (directory->discarded) {
        for (Directory* child : children)
            delete child;
    } else {
        for (Directory* child : children)
            insertBefore(directory, child);
        const auto count = static_cast<std::uint32_t>(children.size());
        directory->references += count;
        directory->pins += count;
        m_waiting += count;
        m_buffered += batch.count;
        m_isFull = m_isFull || m_buffered >= options.readAhead;
        if (batch.count > 0)
            directory->batches.push_back(std::move(batch));
    }
    children.clear();
    if (m_awaited && (m_awaited == directory || hasWork()))
        m_batchAvailable.notify_one();
    // Who is through with a directory takes the next one itself.
    wakeWorkers(last ? 1 : 0);
    if (!last)
        return;

    directory->state = Directory::State::Done;
    if (!directory->discarded)
        unlink(directory);
    if (directory->descriptor >= 0 && directory->parent) {
        const bool mayKeep =
            m_heldDescriptors < heldDescriptorLimit && heldByAllWalks < m_limitOfAllWalks;
        if (mayKeep || directory->openers > 0) {
            directory->keepsDescriptor = true;
            ++m_heldDescriptors;
            ++heldByAllWalks;
        } else {
            // Its children will be opened from further up.
            ::close(directory->descriptor);
            directory->descriptor = -1;
        }
        closeIfUnused(directory);
    }
    dropReference(directory);
}

WalkQueue::Next WalkQueue::takeBatch(Delivery& delivery, Directory*& toRead)
{
    if (isStopped())
        return Next::Stopped;
    Directory* const directory = delivery.directory;
    if (!directory)
        return Next::End;
    Lock lock(m_mutex);
    for (;;) {
        const bool hasBatch = directory->taken < directory->batches.size();
        if (hasBatch) {
            delivery.batch = std::move(directory->batches[directory->taken++]);
            m_buffered -= delivery.batch.count;
            if (m_isFull && m_buffered <= options.readAhead / 2) {
                m_isFull = false;
                wakeWorkers();
            }
        }
        if (directory->state == Directory::State::Done &&
            directory->taken == directory->batches.size()) {
            delivery.error = directory->error;
            delivery.directory = nullptr;
            dropReference(directory);
            return hasBatch ? Next::Batch : Next::End;
        }
        if (hasBatch)
            return Next::Batch;
        if (directory->state == Directory::State::Waiting || hasWork()) {
            // The directory that is asked for is the first of the list, read or not.
            toRead = startReadingFirst();
            return Next::Read;
        }
        m_awaited = directory;
        m_batchAvailable.wait_for(lock, std::chrono::milliseconds(50));
        m_awaited = nullptr;
        if (isStopped())
            return Next::Stopped;
    }
}

void WalkQueue::discard(Directory* directory)
{
    const Lock lock(m_mutex);
    discardLocked(directory);
}

void WalkQueue::discardRest(const Batch& batch, std::size_t offset)
{
    std::vector<Directory*> children;
    collectChildren(batch, offset, children);
    const Lock lock(m_mutex);
    for (Directory* child : children)
        discardLocked(child);
}

void WalkQueue::discardLocked(Directory* root)
{
    std::vector<Directory*> pending{root};
    while (!pending.empty()) {
        Directory* directory = pending.back();
        pending.pop_back();
        directory->discarded = true;
        if (directory->state != Directory::State::Done)
            unlink(directory);
        if (directory->state == Directory::State::Waiting) {
            directory->state = Directory::State::Done;
            --m_waiting;
            if (directory->parent)
                unpin(directory->parent);
        }
        for (std::size_t i = directory->taken; i < directory->batches.size(); ++i) {
            collectChildren(directory->batches[i], 0, pending);
            m_buffered -= directory->batches[i].count;
        }
        directory->batches.clear();
        directory->taken = 0;
        dropReference(directory);
    }
    if (m_buffered <= options.readAhead / 2)
        m_isFull = false;
    wakeWorkers();
}

void WalkQueue::collectChildren(const Batch& batch, std::size_t offset,
                                std::vector<Directory*>& children) const
{
    while (offset < batch.size) {
        const Record* record = recordAt(batch, offset);
        if (record->directory)
            children.push_back(record->directory);
        offset += record->stride();
    }
}

std::size_t WalkQueue::waiting() const
{
    const Lock lock(m_mutex);
    return m_waiting;
}

void WalkQueue::insertBefore(Directory* at, Directory* directory)
{
    Directory* previous = at ? at->previous : m_back;
    directory->previous = previous;
    directory->next = at;
    (previous ? previous->next : m_front) = directory;
    (at ? at->previous : m_back) = directory;
}

void WalkQueue::unlink(Directory* directory)
{
    (directory->previous ? directory->previous->next : m_front) = directory->next;
    (directory->next ? directory->next->previous : m_back) = directory->previous;
}

void WalkQueue::unpin(Directory* directory)
{
    --directory->pins;
    closeIfUnused(directory);
}

void WalkQueue::closeIfUnused(Directory* directory)
{
    if (directory->pins > 0 || !directory->keepsDescriptor)
        return;
    ::close(directory->descriptor);
    directory->descriptor = -1;
    directory->keepsDescriptor = false;
    --m_heldDescriptors;
    --heldByAllWalks;
}

void WalkQueue::dropReference(Directory* directory)
{
    while (directory && --directory->references == 0) {
        Directory* parent = directory->parent;
        if (directory->descriptor >= 0)
            ::close(directory->descriptor);
        delete directory;
        directory = parent;
    }
}

void WalkQueue::allowWorkers(unsigned fewest, unsigned most)
{
    const Lock lock(m_mutex);
    m_fewestWorkers = m_allowedWorkers = fewest;
    m_mostWorkers = most;
}

bool WalkQueue::note(WalkPace::Finding finding)
{
    const Lock lock(m_mutex);
    if (finding == WalkPace::Finding::Works) {
        if (m_allowedWorkers > m_fewestWorkers)
            --m_allowedWorkers;
        return false;
    }
    if (m_allowedWorkers < m_mostWorkers)
        ++m_allowedWorkers;
    // None rests: a new one takes its place.
    return m_idleWorkers == 0 && m_workers < m_allowedWorkers;
}

void WalkQueue::workerStarts()
{
    const Lock lock(m_mutex);
    ++m_workers;
}

void WalkQueue::workerLeaves()
{
    const Lock lock(m_mutex);
    if (--m_workers == 0)
        m_workersLeft.notify_all();
}

void WalkQueue::workerFailed()
{
    workerLeaves();
    const Lock lock(m_mutex);
    m_mostWorkers = std::min(m_mostWorkers, m_workers);
}

void WalkQueue::waitForWorkers()
{
    Lock lock(m_mutex);
    m_workersLeft.wait_for(lock, std::chrono::milliseconds(100), [this] { return m_workers == 0; });
}

} // namespace brivane::walking
