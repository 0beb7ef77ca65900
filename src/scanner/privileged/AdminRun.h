#pragma once

#include "core/Command.h"
#include "platform/Host.h"
#include "scanner/FileNode.h"
#include "scanner/privileged/HelperFiles.h"

#include <atomic>
#include <memory>
#include <stop_token>

namespace brivane {

class TreeMerger;

/// What one scan as administrator works on: the tree, the helper's files, the command that runs and
/// what it prints. Outlives its scanner where someone still waits for it.
///
/// Made and cancelled on the GUI thread, to which the command belongs; the rest is done on the
/// scanner's worker, one after the other.
class AdminRun {
public:
    /// `existingRoot` is the tree that is added to, unless `path` does not lie in it.
    AdminRun(Host& host, const QString& path, const FileNodePtr& existingRoot);
    ~AdminRun();
    Q_DISABLE_COPY_MOVE(AdminRun)

    // For the GUI thread.

    /// Nothing of the scan is wanted any more: its command is asked to end, its output not read.
    void cancel();
    [[nodiscard]] bool isCancelled() const { return m_stop.stop_requested(); }
    [[nodiscard]] std::stop_token stop() const { return m_stop.get_token(); }
    /// Nothing of what the helper prints is wanted any more. Any thread.
    void dropOutput();

    // For the worker.

    /// Makes nodes of what the helper prints, until it ends or its output is dropped.
    void readOutput();
    /// Puts them into their places, and tells how many; negative when the output was dropped.
    qint64 merge();
    /// Gives back what was not merged, and removes the helper's files.
    void clear();

    const Locations locations;
    const QString path; ///< without slashes at its end
    const FileNodePtr root;
    const std::shared_ptr<LineQueue> lines = std::make_shared<LineQueue>();
    HelperFiles files;                ///< the worker's
    std::unique_ptr<Command> command; ///< the GUI thread's; null unless one runs

private:
    std::unique_ptr<TreeMerger> m_merger; ///< the worker's
    std::stop_source m_stop;
    std::atomic<bool> m_isDropped = false;
};

} // namespace brivane
