#pragma once

#include "core/Command.h"
#include "platform/Host.h"
#include "platform/Worker.h"
#include "scanner/FileNode.h"
#include "scanner/privileged/HelperCommands.h"

#include <QCoroTask>
#include <QObject>

#include <chrono>
#include <stdexcept>

namespace brivane {

class AdminRun;

/// Scans as administrator: writes out the source of a small helper, has it compiled, runs it as
/// root through the system's prompt, and adds what it prints to the tree that the user has.
///
/// GUI thread. Everything that touches the disk, starts a command or reads the helper's output is
/// done by a thread of the scanner's own; the output is understood as it arrives and kept as nodes
/// only, of which the tree shows nothing unless the helper ends well. One scan runs at a time. No
/// process and no file of a scan is left behind, whichever way it ends.
class PrivilegedScanner : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)
    Q_PROPERTY(QString progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(qint64 filesFound READ filesFound NOTIFY filesFoundChanged)

public:
    /// Why nothing was added.
    class AdminScanError : public std::runtime_error {
    public:
        enum class Case { scriptFailed, alreadyRunning, compileFailed, cancelled, userCancelled };

        static AdminScanError scriptFailed(const QString& message);
        static AdminScanError alreadyRunning();
        static AdminScanError compileFailed();
        static AdminScanError cancelled();
        static AdminScanError userCancelled();

        [[nodiscard]] Case which() const { return m_case; }
        /// For the user.
        [[nodiscard]] QString errorDescription() const { return m_description; }

    private:
        AdminScanError(Case which, const QString& description);

        Case m_case;
        QString m_description;
    };

    explicit PrivilegedScanner(Host& host, QObject* parent = nullptr);
    /// Ends a scan that runs, as cancel() does; takes a moment.
    ~PrivilegedScanner() override;

    /// Gives `existingRoot` with all that the helper has seen and its tree did not have, all sums
    /// and orders exact; readers of the tree are not disturbed. Without a root, or when `path` does
    /// not lie in its tree, it is the root of a new one.
    ///
    /// Throws AdminScanError, LaunchError when a command cannot be started, std::runtime_error when
    /// the helper cannot be written; what() of each is text for the user. The tree is unchanged
    /// then. A cancelled scan does not go on to its next step; while the helper runs, it ends by
    /// the failure of the command.
    QCoro::Task<FileNodePtr> scanAsAdmin(QString path, FileNodePtr existingRoot);
    /// Ends the scan that runs, if one does, unless it is as good as done; returns at once.
    void cancel();

    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    /// The step that a scan has come to.
    [[nodiscard]] const QString& progress() const { return m_progress; }
    /// How many entries the last scan has added.
    [[nodiscard]] qint64 filesFound() const { return m_filesFound; }

Q_SIGNALS:
    void isRunningChanged();
    void progressChanged();
    void filesFoundChanged();

private:
    QCoro::Task<FileNodePtr> perform(std::shared_ptr<AdminRun> run);
    QCoro::Task<> prepare(std::shared_ptr<AdminRun> run);
    /// `lines` takes what it prints, if given.
    QCoro::Task<CommandEnd> runCommand(std::shared_ptr<AdminRun> run,
                                       HelperCommands::CommandLine line,
                                       std::shared_ptr<LineQueue> lines);
    void logOutcome(std::chrono::nanoseconds start) const;
    void setRunning(bool isRunning);
    void setProgress(const QString& progress);
    void setFilesFound(qint64 count);

    Host& m_host;
    bool m_isRunning = false;
    QString m_progress;
    qint64 m_filesFound = 0;
    std::shared_ptr<AdminRun> m_run;               ///< null unless a scan runs
    Worker m_worker{QStringLiteral("admin scan")}; ///< steps stand in line
};

} // namespace brivane
