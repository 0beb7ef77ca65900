#pragma once

#include <QByteArray>
#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>

class QLocalSocket;

namespace brivane {

/// Sees to it that the program runs once for each user and machine: the first start listens, a
/// second one asks it to come to the front and ends.
///
/// A lock file says who is first. It ends with its process, however that ended, and so does the
/// claim; what lies about from dead processes is replaced. Where there can be no socket, since its
/// path is too long or the system refuses it, each start goes on by itself and says so in the log.
/// GUI thread.
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
    QLockFile m_lock;
    QLocalServer m_server;
};

} // namespace brivane
