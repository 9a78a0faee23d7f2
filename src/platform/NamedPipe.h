#pragma once

#include "Result.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <memory>
#include <sys/types.h>

class QSocketNotifier;

namespace platform {

// A named pipe into which other programs of the same user write lines. It is made by open and removed with the object.
class NamedPipe : public QObject
{
    Q_OBJECT

public:
    static constexpr qsizetype kMaxLine = 1000; // bytes; a longer line arrives cut

    explicit NamedPipe(QObject* parent = nullptr);
    ~NamedPipe() override;

    // Fails, with the system's words, when the path cannot be made or is taken, by whatever. Once only.
    [[nodiscard]] Result<> open(const QString& path);

Q_SIGNALS:
    void received(const QString& line); // from the event loop, without its line end; none that is empty

private:
    void onReadable();
    void sendLine();

    QByteArray m_path;
    dev_t m_device = 0;
    ino_t m_node = 0;
    int m_fd = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QByteArray m_line;
};

} // namespace platform
