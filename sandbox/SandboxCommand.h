#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>

namespace brivane {

/// What a command of a sandbox machine does when it is called.
struct CommandAnswer {
    QByteArray output = {};              ///< to standard output
    QByteArray error = {};               ///< to standard error
    int status = 0;                      ///< 0 to 255
    std::chrono::milliseconds delay{0};  ///< passes before anything is written
    std::chrono::milliseconds linger{0}; ///< passes between the output and the end
    QStringList when = {};               ///< only for calls whose first arguments are these
    int uses = 0;                        ///< holds for so many calls; 0: for all
};

/// A command of a sandbox machine: a real executable that records its calls and answers as it was
/// told. All state is on the disk: any number of these handles may speak of one command, its calls
/// may come from any number of processes at once, and each function may be used on any thread.
/// What cannot be done throws std::system_error.
class SandboxCommand {
public:
    /// The command at `place`, whose records lie in `folder`. Made by SandboxMachine::command().
    SandboxCommand(QByteArray place, QByteArray folder);

    /// The executable's real path.
    [[nodiscard]] QString path() const;

    /// Adds an answer. A call gets the first, in the order of adding, that is meant for it and has
    /// uses left. Without any the command ends at once, with status 0 and no output.
    SandboxCommand& answer(const CommandAnswer& answer);

    /// Drops all answers.
    void forgetAnswers();

    /// The arguments of each call up to now, in the order in which the calls began, byte for byte
    /// (PathText). A call is here before its answer's delay begins.
    [[nodiscard]] QList<QStringList> calls() const;

private:
    QByteArray m_place;
    QByteArray m_folder;
};

} // namespace brivane
