#include "platform/linux/WalkQueue.h"

#include <cerrno>
#include <chrono>

#include <fcntl.h>
#include <unistd.h>

namespace brivane::walking {

namespace {

/// Directories whose descriptor is kept for their children; a few walks at once stay well below the
/// usual limit of 1024 descriptors a process.
constexpr unsigned heldDescriptorLimit = 128;

constexpr int directoryFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;

const Record* recordAt(const Batch& batch, std::size_t offset)
{
    return reinterpret_cast<const Record*>(batch.bytes.get() + offset);
}

} // namespace

WalkQueue::WalkQueue(WalkOptions givenOptions)
    : options(givenOptions)
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
    while (!isStopped() && !hasWork()) {
        ++m_idleWorkers;
        // The cancel flag belongs to someone who does not wake us, so look at it now and then.
        m_workAvailable.wait_for(lock, std::chrono::milliseconds(50));
        --m_idleWorkers;
    }
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
    return directory;
}

int WalkQueue::open(Directory* directory)
{
    Directory* parent = directory->parent;
    if (!parent) {
        directory->descriptor = ::openat(start.folder(), start.name(), directoryFlags | O_NOFOLLOW);
        directory->error = directory->descriptor < 0 ? errno : 0;
        return directory->descriptor;
    }
    Directory* ancestor = parent;
    {
        const Lock lock(m_mutex);
        while (ancestor->descriptor < 0 && ancestor->parent)
            ancestor = ancestor->parent;
        ++ancestor->pins;
        ++ancestor->openers;
    }
    const int descriptor = openBelow(directory, ancestor->descriptor, ancestor);
    directory->error = descriptor < 0 ? errno : 0;

    const Lock lock(m_mutex);
    directory->descriptor = descriptor;
    --ancestor->openers;
    unpin(ancestor);
    unpin(parent);
    return descriptor;
}

int WalkQueue::openBelow(const Directory* directory, int ancestorDescriptor,
                         const Directory* ancestor)
{
    std::vector<const Directory*> between;
    for (const Directory* at = directory->parent; at != ancestor; at = at->parent)
        between.push_back(at);
    int from = ancestorDescriptor;
    // One component at a time: no path is too long, and a link that took the place of a directory
    // meanwhile is not followed.
    for (auto at = between.rbegin(); at != between.rend(); ++at) {
        const int next =
            ::openat(from, (*at)->name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        const int error = errno;
        if (from != ancestorDescriptor)
            ::close(from);
        errno = error;
        if (next < 0)
            return -1;
        from = next;
    }
    const int descriptor = ::openat(from, directory->name.c_str(), directoryFlags | O_NOFOLLOW);
    const int error = errno;
    if (from != ancestorDescriptor)
        ::close(from);
    errno = error;
    return descriptor;
}

void WalkQueue::publish(Directory* directory, Batch batch, std::vector<Directory*>& children,
                        bool last)
{
    const Lock lock(m_mutex);
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
    if (m_ownerWaits)
        m_batchAvailable.notify_one();
    if (m_idleWorkers > 0 && hasWork())
        m_workAvailable.notify_all();
    if (!last)
        return;

    directory->state = Directory::State::Done;
    if (!directory->discarded)
        unlink(directory);
    if (directory->descriptor >= 0 && directory->parent) {
        if (m_heldDescriptors < heldDescriptorLimit || directory->openers > 0) {
            directory->keepsDescriptor = true;
            ++m_heldDescriptors;
        } else {
            // Its children will be opened from further up.
            ::close(directory->descriptor);
            directory->descriptor = -1;
        }
        closeIfUnused(directory);
    }
    dropReference(directory);
}

WalkQueue::Next WalkQueue::takeBatch(Directory* directory, Batch& batch, Directory*& toRead)
{
    Lock lock(m_mutex);
    for (;;) {
        if (isStopped())
            return Next::Stopped;
        if (directory->taken < directory->batches.size()) {
            batch = std::move(directory->batches[directory->taken++]);
            m_buffered -= batch.count;
            if (m_isFull && m_buffered <= options.readAhead / 2) {
                m_isFull = false;
                if (m_idleWorkers > 0 && m_waiting > 0)
                    m_workAvailable.notify_all();
            }
            return Next::Batch;
        }
        if (directory->state == Directory::State::Done)
            return Next::End;
        if (directory->state == Directory::State::Waiting || hasWork()) {
            // The directory that is asked for is the first of the list, read or not.
            toRead = startReadingFirst();
            return Next::Read;
        }
        m_ownerWaits = true;
        m_batchAvailable.wait_for(lock, std::chrono::milliseconds(50));
        m_ownerWaits = false;
    }
}

void WalkQueue::release(Directory* directory)
{
    const Lock lock(m_mutex);
    dropReference(directory);
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
    if (m_idleWorkers > 0 && hasWork())
        m_workAvailable.notify_all();
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

void WalkQueue::waitForWorkers()
{
    Lock lock(m_mutex);
    m_workersLeft.wait_for(lock, std::chrono::milliseconds(100), [this] { return m_workers == 0; });
}

} // namespace brivane::walking
