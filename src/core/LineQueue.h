#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string_view>

namespace brivane {

/// The output of a command on its way from the thread that reads the pipe to the one that
/// understands it. Nothing is kept longer than that takes.
class LineQueue {
public:
    /// Adds bytes, which may end anywhere. Any thread; returns at once.
    void append(QByteArrayView bytes);
    /// No more bytes follow. Any thread.
    void close();
    /// The lines are of no interest any more. Any thread.
    void cancel();

    /// Hands over each line that is not empty, without its end, as it comes, and returns after the
    /// last one or soon after cancel(). The last line may lack its end. Call it once.
    void forEachLine(const std::function<void(std::string_view)>& take);

private:
    /// All that has come, once there is something; empty at the end.
    QByteArray waitForBytes();

    std::mutex m_mutex;
    std::condition_variable m_hasChanged;
    QByteArray m_bytes;         ///< guarded by m_mutex
    bool m_isClosed = false;    ///< guarded by m_mutex
    bool m_isCancelled = false; ///< guarded by m_mutex
};

} // namespace brivane
