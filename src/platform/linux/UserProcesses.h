#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace brivane {

/// A process, as far as it tells which application it belongs to.
struct UserProcess {
    QString executable; ///< without links; empty when it is not told
    QStringList script; ///< what an interpreter may have been given to run; absolute paths
    QString flatpak;    ///< the identifier of the Flatpak that it runs in
    QString snap;       ///< the name of the Snap
};

/// The processes of this user that `proc` tells of, "/proc" or what has its form. Any thread;
/// blocks. Processes that end meanwhile are left out.
[[nodiscard]] std::vector<UserProcess> readUserProcesses(const QString& proc);

} // namespace brivane
