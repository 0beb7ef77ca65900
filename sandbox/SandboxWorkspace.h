#pragma once

#include "platform/Workspace.h"

#include <QStringList>

namespace brivane {

/// A desktop without windows: it remembers what it was asked for. GUI thread.
class SandboxWorkspace final : public Workspace {
public:
    /// The paths that were to be revealed, in order.
    [[nodiscard]] const QStringList& revealed() const { return m_revealed; }

    void reveal(const QString& path) override;

private:
    QStringList m_revealed;
};

} // namespace brivane
