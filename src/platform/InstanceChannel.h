#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>
#include <QStringList>

namespace platform {

// How one start of the program speaks to another of the same user: the first one listens at a local socket, a later
// one sends it a few words. A socket that belongs to somebody else is not spoken to.
class InstanceChannel : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMaxMessageBytes = 64 * 1024;
    static constexpr int kTimeoutMs = 3000;

    // Whether a program that listens at the socket has taken the words. Waits up to the time-out.
    [[nodiscard]] static bool send(const QString& socketFile, const QStringList& words, int timeoutMs = kTimeoutMs);

    // A socket that a program left behind is replaced: for the one that is first only.
    [[nodiscard]] bool listen(const QString& socketFile);

Q_SIGNALS:
    void received(const QStringList& words);

private:
    void answerAll();

    QLocalServer m_server;
};

} // namespace platform
