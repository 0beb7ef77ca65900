#pragma once

#include "core/ShellRunner.h"

#include <QCoroTask>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace brivane {

/// A local snapshot of the startup volume. A plain value.
struct SnapshotInfo {
    QUuid id = QUuid::createUuid(); ///< new on each listing
    QString name;                   ///< the line of the listing, trimmed
    QDateTime date;                 ///< as the name tells it, in local time
    std::optional<quint64> size;    ///< absent: the listing tells none
    QString volumeName;
};

/// Asks the system for its local snapshots, which hold on to what is deleted: space that was freed
/// may not show before they go. No instances.
class LocalSnapshots {
public:
    /// A command that ended with another status than 0. Its output is all that it printed.
    class SnapshotError : public ShellRunner::CommandError {
    public:
        SnapshotError(const QString& command, const QString& output);

        [[nodiscard]] QString errorDescription() const;
        [[nodiscard]] const char* what() const noexcept override { return m_what.constData(); }

    private:
        QByteArray m_what;
    };

    LocalSnapshots() = delete;

    /// What `executable`, a path of the catalogue, prints on standard output and standard error, in
    /// the order in which it does. Throws SnapshotError, or LaunchError when it cannot be started.
    /// The caller's thread needs an event loop and is not blocked.
    static QCoro::Task<QString> runCommand(Locations locations, QString executable,
                                           QStringList arguments);
    /// The snapshots in what `tmutil listlocalsnapshots` prints, newest first; of two of one second
    /// the first. What is no snapshot's name is passed over.
    [[nodiscard]] static QList<SnapshotInfo> parseSnapshots(const QString& output);
    /// Whether there is one; false when that cannot be found out.
    static QCoro::Task<bool> exist(Locations locations);
};

} // namespace brivane
