#pragma once

#include "platform/Locations.h"
#include "platform/Process.h"

#include <QCoroTask>
#include <QString>
#include <QStringList>

#include <exception>

namespace brivane {

/// Runs the commands of the system and gives back what they print. No instances.
///
/// The caller's thread needs an event loop and is not blocked. There is no time-out and no way to
/// stop a command; who needs that owns a Command. Commands that run at once share nothing.
class ShellRunner {
public:
    /// A command that ended with another status than 0.
    class CommandError : public std::exception {
    public:
        CommandError(QString command, QString output);

        /// The executable, as the caller of run() named it.
        [[nodiscard]] const QString& command() const { return m_command; }
        /// What it printed on standard error, or else on standard output, trimmed; may be empty.
        [[nodiscard]] const QString& output() const { return m_output; }
        [[nodiscard]] QString errorDescription() const;
        [[nodiscard]] const char* what() const noexcept override { return m_what.constData(); }

    private:
        QString m_command;
        QString m_output;
        QByteArray m_what;
    };

    ShellRunner() = delete;

    /// Standard output of `executable`, untrimmed; empty when it is no UTF-8, and a CommandError
    /// when it is more than Command::outputLimit. `executable` is a path of the catalogue. Throws
    /// CommandError, or LaunchError when it cannot be started; both name the path as it was given.
    static QCoro::Task<QString> run(Locations locations, QString executable, QStringList arguments);

    /// Runs a line of the shell with the rights of an administrator, for which the system asks the
    /// user. A refusal is a CommandError whose output holds "User canceled" and "-128".
    static QCoro::Task<QString> runAsAdmin(Locations locations, QString command);
    /// The script for osascript by which runAsAdmin() runs `command`.
    [[nodiscard]] static QString adminScript(QString command);
};

} // namespace brivane
