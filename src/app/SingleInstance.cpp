#include "app/SingleInstance.h"

#include "core/Log.h"
#include "platform/PathText.h"

#include <QDeadlineTimer>
#include <QLocalSocket>
#include <QThread>

#include <cerrno>
#include <utility>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 longestToken = 1024;
constexpr auto answer = "ok\n";

/// An address of a socket has 108 bytes, of which the server may want some for itself.
constexpr qsizetype longestSocketPath = 90;

/// What desktops hand to a program that they start, by which it may take the focus.
QByteArray activationToken()
{
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    return token.contains('\n') || token.size() > longestToken ? QByteArray() : token;
}

} // namespace

SingleInstance::SingleInstance(const QString& directory)
    : m_socketPath(directory + u"/instance.socket"_s)
    , m_lockPath(directory + u"/instance.lock"_s)
{
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* socket = m_server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] { receive(*socket); });
            receive(*socket);
        }
    });
}

SingleInstance::Start SingleInstance::start(int answerTime)
{
    if (m_socketPath.startsWith(u"/instance"))
        return goWithout(u"no folder could be made for it"_s);
    if (PathText::toBytes(m_socketPath).size() > longestSocketPath)
        return goWithout(u"the path is too long for a socket"_s);
    const QDeadlineTimer deadline(answerTime);
    // The first one may be between its lock and its socket, or just about to end.
    for (;;) {
        Result<FileLock> lock = FileLock::take(m_lockPath);
        if (lock) {
            m_lock = std::move(*lock);
            return listen();
        }
        if (lock.error().code != EWOULDBLOCK)
            return goWithout(lock.error().text());
        if (hand(static_cast<int>(deadline.remainingTime())))
            return Start::Handed;
        if (deadline.hasExpired())
            return Start::Unanswered;
        QThread::msleep(10);
    }
}

SingleInstance::Start SingleInstance::listen()
{
    QLocalServer::removeServer(m_socketPath);
    if (m_server.listen(m_socketPath))
        return Start::First;
    m_lock.reset(); // nobody is to wait for an answer
    return goWithout(m_server.errorString());
}

SingleInstance::Start SingleInstance::goWithout(const QString& reason)
{
    Log::perf.error(u"No single instance at "_s + m_socketPath + u": "_s + reason);
    return Start::First;
}

bool SingleInstance::hand(int answerTime)
{
    QLocalSocket socket;
    socket.connectToServer(m_socketPath);
    if (!socket.waitForConnected(answerTime))
        return false;
    socket.write(activationToken() + '\n');
    return socket.waitForBytesWritten(answerTime) && socket.waitForReadyRead(answerTime) &&
           socket.readAll() == answer;
}

void SingleInstance::receive(QLocalSocket& socket)
{
    if (!socket.canReadLine()) {
        if (socket.bytesAvailable() > longestToken)
            socket.abort();
        return;
    }
    const QByteArray token = socket.readLine().chopped(1);
    socket.write(answer);
    socket.disconnectFromServer();
    Q_EMIT activationRequested(token);
}

} // namespace brivane
