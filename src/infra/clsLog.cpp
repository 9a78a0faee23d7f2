#include "clsLog.h"

#include "FileReplacement.h"
#include "FolderName.h"

#include <QFile>
#include <QtEndian>

namespace {

QByteArray headerBytes(const clsLog::Header& header)
{
    QByteArray bytes(clsLog::kHeaderBytes, '\0');
    qToLittleEndian(header.count, bytes.data());
    qToLittleEndian(header.size, bytes.data() + 4);
    qToLittleEndian(header.last, bytes.data() + 8);
    bytes[14] = '\r';
    bytes[15] = '\n';
    return bytes;
}

// Takes the next body of width bytes off the message; characters stay whole. One that no record has room for is "?".
QByteArray extractBody(const platform::CodePage& codePage, QString& message, qsizetype width)
{
    QString piece = codePage.fitting(message, width);
    QByteArray body = codePage.fromText(piece);
    if (piece.isEmpty() && !message.isEmpty()) {
        piece = message.left(message.front().isHighSurrogate() ? 2 : 1);
        body = "?";
    }
    message.remove(0, piece.size());
    return body.leftJustified(width, ' ');
}

bool writeAt(QFile& file, qint64 offset, const QByteArray& bytes)
{
    return file.seek(offset) && file.write(bytes) == bytes.size();
}

} // namespace

std::optional<clsLog::Header> clsLog::headerOf(const QByteArray& bytes)
{
    if (bytes.size() < kHeaderBytes)
        return {};
    return Header{qFromLittleEndian<qint32>(bytes.constData()), qFromLittleEndian<qint32>(bytes.constData() + 4),
                  qFromLittleEndian<qint32>(bytes.constData() + 8)};
}

clsLog::clsLog(platform::Machine& machine) : m_machine(machine), m_logPath(withBackslash(machine.folders.program())) {}

void clsLog::setLogPath(const QString& folder)
{
    setFolder(m_machine.paths, folder, m_logPath);
}

void clsLog::setLogFileName(const QString& name)
{
    setFileName(name, m_logFileName);
}

void clsLog::setMaxLogCnt(int records)
{
    if (records > 0)
        m_maxLogCnt = records;
}

void clsLog::setLogRecSize(int bytes)
{
    if (bytes > kFrameBytes)
        m_logRecSize = bytes;
}

QString clsLog::filePath() const
{
    return m_machine.paths.toMachine(m_logPath + m_logFileName);
}

void clsLog::LogWrite(const QString& Message)
{
    if (!m_logSwitch)
        return;
    const QByteArray stamp = m_machine.clock.now().toString(QStringLiteral("[yyyy/MM/dd HH:mm:ss:zzz]")).toLatin1();
    QFile file(filePath());
    if (file.fileName().isEmpty() || !platform::mayWriteInPlace(QFile::encodeName(file.fileName())) ||
        !file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return;
    const std::optional<Header> found = headerOf(file.read(kHeaderBytes));
    Header header = found.value_or(Header());
    const bool known = found && header.count == m_maxLogCnt && header.size == m_logRecSize;
    if (!known) {
        header = {m_maxLogCnt, m_logRecSize, 0};
        if (!file.resize(0) || !writeAt(file, 0, headerBytes(header)))
            return;
    }
    QString rest = Message;
    do {
        const QByteArray body = extractBody(m_machine.codePage, rest, m_logRecSize - kFrameBytes);
        header.last = header.last < 0 || header.last >= header.count ? 1 : header.last + 1;
        const qint64 offset = kHeaderBytes + static_cast<qint64>(header.last - 1) * m_logRecSize;
        if (!writeAt(file, offset, stamp + body + "\r\n") || !writeAt(file, 0, headerBytes(header)))
            return;
    } while (!rest.isEmpty());
}
