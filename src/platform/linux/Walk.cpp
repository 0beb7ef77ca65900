#include "platform/Walk.h"

#include "platform/linux/DirectoryReader.h"
#include "platform/linux/MountInfo.h"
#include "platform/linux/WalkQueue.h"

#include <algorithm>
#include <system_error>
#include <thread>

namespace brivane {

using walking::Batch;
using walking::Directory;
using walking::DirectoryReader;
using walking::Record;
using walking::WalkPace;
using walking::WalkQueue;

namespace {

/// Directories that have to be waiting before threads are worth their start.
constexpr std::size_t waitingWorthWorkers = 4;

/// With so many threads that wait for it a disk has enough to do, also one of the fast ones.
constexpr unsigned mostWorkers = 15;

/// Tells the queue about the mount points: those below `start` that may never answer, and what any
/// of them is called.
void noteMounts(const QByteArray& start, WalkQueue& queue)
{
    for (const Mount& mount : readMountInfo()) {
        if (mount.isNetwork() && mount.path.startsWith(start))
            queue.untouchable.push_back(mount.path.toStdString());
        queue.mountNames.push_back(mount.path.mid(mount.path.lastIndexOf('/') + 1).toStdString());
    }
    std::ranges::sort(queue.mountNames);
}

/// Whether there is a thread for it: whoever is there reads all the same.
bool startWorker(const std::shared_ptr<WalkQueue>& queue);

void readAhead(const std::shared_ptr<WalkQueue>& queue)
{
    {
        DirectoryReader reader(*queue);
        WalkPace pace;
        while (Directory* directory = queue->takeForReading()) {
            pace.begin();
            reader.read(directory);
            if (const auto finding = pace.end(); finding && queue->note(*finding))
                startWorker(queue);
        }
    }
    queue->workerLeaves();
}

bool startWorker(const std::shared_ptr<WalkQueue>& queue)
{
    queue->workerStarts();
    try {
        std::thread(readAhead, queue).detach();
        return true;
    } catch (const std::system_error&) {
        queue->workerFailed();
        return false;
    }
}

} // namespace

/// The owner's side: follows the order of the walk, and reads too when what it needs is not there.
class Walk::Consumer {
public:
    Consumer(QByteArray path, WalkOptions options)
        : m_path(std::move(path))
        , m_queue(std::make_shared<WalkQueue>(std::move(options)))
        , m_reader(*m_queue)
    {
        const std::string_view start(m_path.constData(), static_cast<std::size_t>(m_path.size()));
        m_queue->start = walking::WalkStart(start);
        if (m_queue->start.error() == 0) {
            walking::readAttributes(m_queue->start.folder(), m_queue->start.name(), m_start);
        } else {
            m_start.kind = WalkKind::NoAttributes;
            m_start.error = m_queue->start.error();
        }
        m_start.isMountPoint = false; // the start is walked, whatever it is
        if (m_start.kind == WalkKind::Directory) {
            m_queue->device = m_start.attributes.device;
            noteMounts(m_path, *m_queue);
            m_start.directory = WalkQueue::make(nullptr, start);
            m_queue->begin(m_start.directory);
        }
    }

    ~Consumer()
    {
        m_queue->stop();
        if (!m_started && m_start.directory) {
            m_queue->discard(m_start.directory);
        } else if (m_entered && m_entered->directory && !m_isSkipped) {
            m_queue->discard(m_entered->directory);
        }
        while (!m_frames.empty()) {
            const Frame& frame = m_frames.back();
            m_queue->discardRest(frame.delivery.batch, frame.offset);
            if (frame.delivery.directory)
                m_queue->discard(frame.delivery.directory);
            m_frames.pop_back();
        }
        m_queue->waitForWorkers();
    }

    const WalkEntry* next()
    {
        if (m_queue->isStopped())
            return nullptr;
        if (!m_started) {
            m_started = true;
            deliver(m_start, 0, 0);
            m_entry.name = {m_path.constData(), static_cast<std::size_t>(m_path.size())};
            return &m_entry;
        }
        if (const Record* entered = std::exchange(m_entered, nullptr)) {
            if (!entered->directory || m_isSkipped) {
                m_isSkipped = false;
                m_entry.kind = WalkKind::DirectoryEnd;
                return &m_entry;
            }
            m_frames.push_back({entered, {.directory = entered->directory}, 0});
        }
        while (!m_frames.empty()) {
            Frame& frame = m_frames.back();
            Batch& batch = frame.delivery.batch;
            if (frame.offset < batch.size) {
                const auto* record =
                    reinterpret_cast<const Record*>(batch.bytes.get() + frame.offset);
                frame.offset += record->stride();
                deliver(*record, m_frames.size(), --batch.count);
                return &m_entry;
            }
            Directory* toRead = nullptr;
            switch (m_queue->takeBatch(frame.delivery, toRead)) {
            case WalkQueue::Next::Batch:
                frame.offset = 0;
                break;
            case WalkQueue::Next::Read:
                m_reader.read(toRead);
                startWorkers();
                break;
            case WalkQueue::Next::End:
                return &leaveDirectory();
            case WalkQueue::Next::Stopped:
                return nullptr;
            }
        }
        return nullptr;
    }

    void skipSubtree()
    {
        if (!m_entered || !m_entered->directory || m_isSkipped)
            return;
        m_isSkipped = true;
        m_queue->discard(m_entered->directory);
    }

    [[nodiscard]] QByteArray path() const
    {
        QByteArray path = m_path;
        const auto append = [&path](std::string_view name) {
            if (!path.endsWith('/'))
                path += '/';
            path.append(name.data(), static_cast<qsizetype>(name.size()));
        };
        for (std::size_t level = 1; level < m_entry.depth; ++level)
            append(m_frames[level].record->name());
        if (m_entry.depth > 0)
            append(m_entry.name);
        return path;
    }

private:
    /// A directory that has been entered, at the depth that is its place in the stack.
    struct Frame {
        const Record* record = nullptr; ///< lies in the batch of the frame above, which stays
        WalkQueue::Delivery delivery;
        std::size_t offset = 0; ///< of the next record in the batch
    };

    void deliver(const Record& record, std::size_t depth, std::uint32_t following)
    {
        m_entry.kind = record.kind;
        m_entry.isMountPoint = record.isMountPoint;
        m_entry.error = record.error;
        m_entry.depth = static_cast<std::uint32_t>(depth);
        m_entry.following = following;
        m_entry.name = record.name();
        m_entry.attributes = record.attributes;
        if (record.kind == WalkKind::Directory)
            m_entered = &record;
    }

    const WalkEntry& leaveDirectory()
    {
        const Frame frame = std::move(m_frames.back());
        m_frames.pop_back();
        const int error = frame.delivery.error;
        deliver(*frame.record, m_frames.size(), 0);
        m_entered = nullptr;
        if (m_frames.empty())
            m_entry.name = {m_path.constData(), static_cast<std::size_t>(m_path.size())};
        m_entry.kind = error ? WalkKind::UnreadableDirectory : WalkKind::DirectoryEnd;
        m_entry.error = error;
        return m_entry;
    }

    void startWorkers()
    {
        if (m_hasWorkers || m_queue->waiting() < waitingWorthWorkers)
            return;
        m_hasWorkers = true;
        const unsigned given = m_queue->options.workers;
        // The owner reads as well.
        const unsigned cores = std::max(std::thread::hardware_concurrency(), 2U);
        const unsigned fewest = given > 0 ? given : cores - 1;
        m_queue->allowWorkers(fewest, given > 0 ? given : std::max(fewest, mostWorkers));
        for (unsigned i = 0; i < fewest && startWorker(m_queue); ++i) {
        }
    }

    const QByteArray m_path;
    const std::shared_ptr<WalkQueue> m_queue;
    DirectoryReader m_reader;
    Record m_start;
    WalkEntry m_entry;
    std::vector<Frame> m_frames;
    const Record* m_entered = nullptr; ///< the Directory entry that was delivered last
    bool m_started = false;
    bool m_isSkipped = false;
    bool m_hasWorkers = false;
};

Walk::Walk(QByteArray path, WalkOptions options)
    : m_consumer(std::make_unique<Consumer>(std::move(path), std::move(options)))
{
}

Walk::~Walk() = default;

const WalkEntry* Walk::next()
{
    return m_consumer->next();
}

void Walk::skipSubtree()
{
    m_consumer->skipSubtree();
}

QByteArray Walk::path() const
{
    return m_consumer->path();
}

} // namespace brivane
