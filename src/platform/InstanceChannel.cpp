#include "InstanceChannel.h"

#include <QDataStream>
#include <QFile>
#include <QLocalSocket>

#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr char kTaken = '1';

bool isOwnSocket(const QString& file)
{
    struct stat info
    {};
    return lstat(QFile::encodeName(file).constData(), &info) == 0 && S_ISSOCK(info.st_mode) && info.st_uid == geteuid();
}

} // namespace

bool InstanceChannel::send(const QString& socketFile, const QStringList& words, int timeoutMs)
{
    if (!isOwnSocket(socketFile))
        return false;
    QByteArray message;
    QDataStream stream(&message, QIODevice::WriteOnly);
    stream << words;
    QLocalSocket socket;
    socket.connectToServer(socketFile);
    return message.size() <= kMaxMessageBytes && socket.waitForConnected(timeoutMs) &&
           socket.write(message) == message.size() && socket.waitForReadyRead(timeoutMs) &&
           socket.read(1) == QByteArray(1, kTaken);
}

bool InstanceChannel::listen(const QString& socketFile)
{
    if (isOwnSocket(socketFile))
        QLocalServer::removeServer(socketFile);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &InstanceChannel::answerAll);
    return m_server.listen(socketFile);
}

// A message that does not come whole ends with its connection.
void InstanceChannel::answerAll()
{
    while (QLocalSocket* socket = m_server.nextPendingConnection()) {
        socket->setReadBufferSize(kMaxMessageBytes);
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            QDataStream stream(socket);
            QStringList words;
            stream.startTransaction();
            stream >> words;
            if (!stream.commitTransaction())
                return;
            socket->putChar(kTaken);
            socket->disconnectFromServer();
            Q_EMIT received(words);
        });
    }
}

} // namespace platform
