#include "scanner/WalkRunner.h"

#include "platform/PathText.h"
#include "scanner/NodeFinder.h"

#include <cerrno>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <new>

#include <sys/stat.h>

namespace brivane {

using namespace std::chrono_literals;

namespace {

/// A walk that can end does so within a few milliseconds.
constexpr auto leavingPatience = 500ms;

struct Place {
    QString folder;
    QByteArray file; ///< its path; empty for none
};

/// Empty when `path` leads nowhere.
QByteArray realPath(const QByteArray& path)
{
    char* const found = path.contains('\0') ? nullptr : ::realpath(path.constData(), nullptr);
    const QByteArray real(found);
    std::free(found);
    return real;
}

/// The link at `path`, which leads nowhere, by its folder's real path; empty when there is none.
QByteArray deadLink(const QByteArray& path)
{
    const qsizetype name = path.lastIndexOf('/') + 1;
    const QByteArray folder = realPath(path.first(name));
    struct stat status;
    if (folder.isEmpty() || path.contains('\0') || ::lstat(path.constData(), &status) != 0 ||
        !S_ISLNK(status.st_mode))
        return {};
    return (folder.endsWith('/') ? folder : folder + '/') + path.sliced(name);
}

/// Where a walk for `path` starts: a walk follows no link, and a file or a dead link holds nothing.
/// A path with nothing at it is given back, for the walk to say so.
Place placeOf(const QString& path)
{
    const QByteArray bytes = PathText::toBytes(path);
    QByteArray real = realPath(bytes);
    if (real.isEmpty())
        real = deadLink(bytes);
    if (real.isEmpty())
        return {path, {}};
    struct stat status;
    if (::lstat(real.constData(), &status) != 0 || S_ISDIR(status.st_mode))
        return {PathText::fromBytes(real), {}};
    const qsizetype slash = real.lastIndexOf('/');
    return {PathText::fromBytes(real.first(std::max<qsizetype>(slash, 1))), real};
}

} // namespace

/// One started walk. Outlives the runner where it hangs.
struct WalkRunner::Walk {
    Walk(Clock& clock, Order what)
        : order(std::move(what))
        , scanner(clock)
    {
    }

    const Order order;
    DiskScanner scanner;
    std::stop_source stop; ///< reaches the walk also before it has begun
};

/// Where walks leave what they have to tell. Any thread; the signal is weak to the runner, and may
/// come from a walk that it has left behind.
class WalkRunner::Mailbox : public QObject {
    Q_OBJECT

public:
    struct Letter {
        std::shared_ptr<Walk> from;
        std::function<void(WalkRunner&)> tell;
    };

    void post(Letter letter)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_letters.push_back(std::move(letter));
        }
        Q_EMIT arrived();
    }
    Letter take()
    {
        const std::lock_guard lock(m_mutex);
        Letter first = std::move(m_letters.front());
        m_letters.pop_front();
        return first;
    }

Q_SIGNALS:
    /// Once for each letter.
    void arrived();

private:
    std::mutex m_mutex;
    std::deque<Letter> m_letters; ///< guarded by m_mutex
};

WalkRunner::WalkRunner(Host& host, QObject* parent)
    : QObject(parent)
    , m_clock(host.clock)
    , m_enumerator(host.volumes)
    , m_mailbox(std::make_shared<Mailbox>())
{
    const auto read = [this] {
        const Mailbox::Letter letter = m_mailbox->take();
        if (letter.from == m_walk)
            letter.tell(*this);
    };
    connect(m_mailbox.get(), &Mailbox::arrived, this, read, Qt::QueuedConnection);
}

WalkRunner::~WalkRunner()
{
    abandon();
    m_worker.leave(leavingPatience);
}

void WalkRunner::start(const Order& order)
{
    abandon();
    m_walk = std::make_shared<Walk>(m_clock, order);
    m_worker.run([walk = m_walk, mailbox = m_mailbox, enumerator = m_enumerator] {
        // One that waited in line need not begin any more.
        if (walk->stop.stop_requested())
            return;
        perform(*walk, enumerator, [&](std::function<void(WalkRunner&)> letter) {
            mailbox->post({walk, std::move(letter)});
        });
    });
}

void WalkRunner::perform(Walk& walk, const VolumeEnumerator& enumerator,
                         const std::function<void(std::function<void(WalkRunner&)>)>& tell)
{
    Place place{walk.order.path, {}};
    if (walk.order.isDropped) {
        place = placeOf(walk.order.path);
        tell([folder = place.folder](WalkRunner& runner) { Q_EMIT runner.resolved(folder); });
    }
    Outcome outcome;
    const auto report = [&](const ScanProgress& progress) {
        outcome.filesScanned = progress.filesScanned; // the last report is made at the end
        tell([progress](WalkRunner& runner) { Q_EMIT runner.reported(progress); });
    };
    try {
        outcome.root = walk.scanner.scan(place.folder, report, walk.stop.get_token());
        if (!place.file.isEmpty())
            outcome.file = NodeFinder(outcome.root).find(place.file);
        if (walk.order.needsVolume)
            outcome.volume = enumerator.getVolumeInfo(place.folder);
    } catch (const DiskScanner::ScanError& error) {
        outcome.error = error;
    } catch (const std::bad_alloc&) {
        outcome.error = DiskScanner::ScanError::ftsOpenFailed(place.folder, ENOMEM);
    }
    tell([outcome](WalkRunner& runner) {
        if (!runner.m_walk->stop.stop_requested())
            Q_EMIT runner.ended(outcome);
    });
}

void WalkRunner::stop()
{
    if (m_walk)
        m_walk->stop.request_stop();
}

void WalkRunner::abandon()
{
    stop();
    m_walk.reset();
}

void WalkRunner::pause()
{
    if (m_walk)
        m_walk->scanner.pause();
}

void WalkRunner::resume()
{
    if (m_walk)
        m_walk->scanner.resume();
}

} // namespace brivane

#include "WalkRunner.moc"
