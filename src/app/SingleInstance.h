#pragma once

#include "platform/FileLock.h"

#include <QByteArray>
#include <QLocalServer>
#include <QObject>
#include <QString>

#include <optional>

class QLocalSocket;

namespace brivane {

/// Sees to it that the program runs once for each user and machine: the first start listens, a
/// second one asks it to come to the front and ends.
///
/// A lock on a file says who is first; it ends with its process, however that ended, and what the
/// file holds does not matter. Where there can be no lock or no socket, since the path is too long
/// or the system refuses it, each start goes on by itself and says so in the log. GUI thread.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    enum class Start {
        First,  ///< go on; also when the directory does not serve, so that the program can start
        Handed, ///< another one runs and comes to the front
        Unanswered, ///< another one runs and does not answer
    };

    /// `directory` belongs to the user alone, and is the same for each start on the same machine.
    /// Empty when there is none.
    explicit SingleInstance(const QString& directory);

    /// Waits up to `answerTime` milliseconds for the other one.
    [[nodiscard]] Start start(int answerTime = 5000);

Q_SIGNALS:
    /// Another start wants this one to be seen. `token` is what the desktop gave it to hand on the
    /// right to the focus; may be empty.
    void activationRequested(const QByteArray& token);

private:
    Start listen();
    Start goWithout(const QString& reason);
    bool hand(int answerTime);
    void receive(QLocalSocket& socket);

    const QString m_socketPath;
    const QString m_lockPath;
    std::optional<FileLock> m_lock;
    QLocalServer m_server;
};

} // namespace brivane
