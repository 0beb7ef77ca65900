#pragma once

#include "platform/Workspace.h"

#include <QMutex>
#include <QStringList>

#include <vector>

namespace brivane {

/// A desktop without windows: it remembers what it was asked for, and what runs on it is what it
/// was told. GUI thread, but for runningApplications().
class SandboxWorkspace final : public Workspace {
public:
    /// The paths that were to be revealed, in order.
    [[nodiscard]] const QStringList& revealed() const { return m_revealed; }

    void reveal(const QString& path) override;

    void setRunningApplications(std::vector<RunningApplication> applications);
    std::vector<RunningApplication> runningApplications() override;

private:
    QMutex m_mutex;
    std::vector<RunningApplication> m_running; ///< guarded by m_mutex
    QStringList m_revealed;
};

} // namespace brivane
