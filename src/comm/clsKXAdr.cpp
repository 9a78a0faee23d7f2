#include "clsKXAdr.h"

#include "Numbers.h"
#include "ReadCommands.h"
#include "clsINI.h"
#include "clsLibrary.h"

#include <QStringList>

#include <algorithm>
#include <bit>
#include <cmath>

namespace {

const QString kDirect = QStringLiteral("Direct");
constexpr qint64 kNoOffset = INT32_MIN; // far outside every image

// The first length bytes of an image from its first element on, and one element more, which is 0.
QByteArray padded(const IndexedBytes& image, int length)
{
    QByteArray bytes = image.bytes.left(length);
    bytes.append(length + 1 - bytes.size(), '\0');
    return bytes;
}

int boundedCount(int count)
{
    return count > clsKXAdr::kMaxCommands ? 0 : std::max(count, 0);
}

} // namespace

void clsKXAdr::load(const QString& sPath, const QString& sINIFile, const QString& section, clsLibrary* oLib)
{
    m_library = oLib;
    m_section = section;
    m_reads.clear();
    m_writes.clear();
    clsINI ini(oLib->context());
    ini.setIniPath(sPath);
    ini.setIniFileOrNone(sINIFile);
    const QString countText = ini.GetIniData(section, QStringLiteral("ReadCmdMax"), QStringLiteral("1"));
    const auto count = platform::parseInt32(countText);
    if (!count)
        throw std::invalid_argument("ReadCmdMax is not a number");
    m_bModbus = true;
    m_startAddress.clear();
    m_imageSize = 1;
    loadReads(ini, boundedCount(*count));
    const QString writes = ini.GetIniData(section, QStringLiteral("WriteCmdMax"), QStringLiteral("1"));
    loadWrites(ini, boundedCount(oLib->toLong(writes, 0)));
    m_original = m_write = IndexedBytes{0, QByteArray(m_imageSize + 1, '\0')};
}

// An entry that was filled in with its default names no address: it does not move the image.
void clsKXAdr::setStartAddress(const QString& address)
{
    if (!address.isEmpty())
        m_startAddress = address;
}

void clsKXAdr::loadReads(clsINI& ini, int count)
{
    for (int i = 1; i <= count; ++i) {
        const QStringList fields = ini.GetIniData(m_section, QStringLiteral("ReadCmd%1").arg(i), kDirect).split(u',');
        Command entry{fields.value(0), fields.value(1), m_library->toLong(fields.value(2), 0), {}};
        if (entry.command == kDirect) {
            setStartAddress(entry.address);
            m_imageSize = std::clamp(entry.count, 0, kMaxImageBytes);
            m_bModbus = false;
        } else {
            entry.tag = fields.value(3);
        }
        m_reads.push_back(entry);
    }
}

void clsKXAdr::loadWrites(clsINI& ini, int count)
{
    for (int i = 1; i <= count; ++i) {
        const QStringList fields = ini.GetIniData(m_section, QStringLiteral("WriteCmd%1").arg(i), kDirect).split(u',');
        Command entry{fields.value(0), fields.value(1), 0, {}};
        if (entry.command == kDirect) {
            entry.count = m_library->toLong(fields.value(2), 0);
            setStartAddress(entry.address);
            m_writeSize = entry.count;
        } else if (entry.command == u"SetAnalog" || entry.command == u"SetDigital") {
            entry.tag = fields.value(2);
        }
        m_writes.push_back(entry);
    }
}

void clsKXAdr::setData(const IndexedBytes& bytData)
{
    m_original = bytData;
    m_write = bytData;
}

QByteArray clsKXAdr::getOrgData() const
{
    return padded(m_original, m_imageSize);
}

IndexedBytes clsKXAdr::getWriteData(bool bMaxLen) const
{
    return bMaxLen ? IndexedBytes{0, padded(m_write, m_imageSize)} : m_write;
}

void clsKXAdr::markFilled()
{
    m_filled = true;
    m_heldRegister = m_originalRegister;
}

void clsKXAdr::resetWrite()
{
    m_write = m_original;
    m_originalRegister = m_writeRegister = m_heldRegister;
}

void clsKXAdr::accept(const QString& address, int length)
{
    m_heldRegister = m_writeRegister;
    const qint64 offset = offsetOf(address);
    for (int i = 0; i < length && !m_bModbus; ++i)
        m_original.set(offset + i, m_write.at(offset + i));
}

void clsKXAdr::acceptBits(const QString& address, int mask)
{
    m_heldRegister = m_writeRegister;
    const qint64 offset = offsetOf(address);
    m_original.set(offset, static_cast<quint8>((m_original.at(offset) & ~mask) | (m_write.at(offset) & mask)));
}

bool clsKXAdr::isUsable(const Command& read)
{
    return !read.address.isEmpty() && read.count != 0 && findReadCommand(read.command) != nullptr;
}

bool clsKXAdr::hasReads() const
{
    return std::any_of(m_reads.begin(), m_reads.end(), &clsKXAdr::isUsable);
}

// A damaged read command is one all the same, and memory that is written must have been read.
bool clsKXAdr::isCommandsOnly() const
{
    const auto names = [](const Command& entry) { return !entry.address.isEmpty(); };
    const auto writesMemory = [](const Command& entry) { return entry.command == kDirect && !entry.address.isEmpty(); };
    return std::none_of(m_reads.begin(), m_reads.end(), names) &&
           std::none_of(m_writes.begin(), m_writes.end(), writesMemory) &&
           std::any_of(m_writes.begin(), m_writes.end(), names);
}

QString clsKXAdr::writeFault(int i) const
{
    const Command& write = m_writes.at(slot(i));
    if (write.command != kDirect || write.address.isEmpty())
        return {};
    const auto read = std::find_if(m_reads.rbegin(), m_reads.rend(),
                                   [](const Command& entry) { return entry.command == kDirect && isUsable(entry); });
    if (read == m_reads.rend())
        return QStringLiteral("writes bytes that no Direct command reads");
    const auto from = platform::parseInt32(QStringLiteral("&h") + read->address);
    if (platform::parseInt32(QStringLiteral("&h") + write.address) != from || write.count > read->count)
        return QStringLiteral("writes bytes that were not read: the last Direct read is %1,%2")
            .arg(read->address)
            .arg(read->count);
    return {};
}

qint64 clsKXAdr::offsetOf(const QString& address) const
{
    const auto start = platform::parseInt32(QStringLiteral("&h") + m_startAddress);
    const auto place = platform::parseInt32(QStringLiteral("&h") + address);
    if (!start || !place)
        return kNoOffset;
    return static_cast<qint64>(*place) - *start + 1;
}

bool clsKXAdr::holds(const QString& address, int length) const
{
    if (m_bModbus)
        return length <= 2;
    const qint64 offset = offsetOf(address);
    return offset >= 1 && offset + length - 1 <= m_imageSize;
}

void clsKXAdr::setByte(const QString& sAdr, quint8 value)
{
    if (m_bModbus)
        m_originalRegister = m_writeRegister = value;
    else
        m_write.set(offsetOf(sAdr), value);
}

quint8 clsKXAdr::getByte(const QString& sAdr) const
{
    return m_bModbus ? static_cast<quint8>(m_originalRegister & 0xFF) : m_original.at(offsetOf(sAdr));
}

void clsKXAdr::setInteger(const QString& sAdr, qint16 iData)
{
    if (m_bModbus) {
        m_originalRegister = m_writeRegister = iData;
        return;
    }
    const qint64 offset = offsetOf(sAdr);
    // A value that does not lie in the image as a whole is not written in part.
    if (!m_write.contains(offset) || !m_write.contains(offset + 1))
        return;
    m_write.set(offset, static_cast<quint8>(static_cast<quint16>(iData) >> 8));
    m_write.set(offset + 1, static_cast<quint8>(iData & 0xFF));
}

qint16 clsKXAdr::getInteger(const QString& sAdr, qint16 iDefData) const
{
    Q_UNUSED(iDefData);
    if (m_bModbus)
        return m_originalRegister;
    const qint64 offset = offsetOf(sAdr);
    return static_cast<qint16>(m_original.at(offset) << 8 | m_original.at(offset + 1));
}

// The bytes from the first one of the image on, whatever the address says.
QString clsKXAdr::getString(const QString& sAdr, int iDataCount, const QString& sDefData) const
{
    Q_UNUSED(sAdr);
    Q_UNUSED(sDefData);
    QByteArray bytes;
    const int count = std::clamp(iDataCount, 0, kMaxImageBytes);
    for (int i = 1; i <= count && i <= m_original.upper(); ++i)
        bytes += static_cast<char>(m_original.at(i));
    return m_library == nullptr ? platform::CodePage::fromEnvironment().toText(bytes)
                                : m_library->context().machine.codePage.toText(bytes);
}

void clsKXAdr::setLong(const QString& sAdr, qint32 lData)
{
    Q_UNUSED(sAdr); // the controller has no 32-bit whole numbers to write
    Q_UNUSED(lData);
}

quint32 clsKXAdr::original32(const QString& address) const
{
    const qint64 offset = offsetOf(address);
    quint32 bits = 0;
    for (int i = 0; i < 4; ++i)
        bits = bits << 8U | m_original.at(offset + i);
    return bits;
}

qint32 clsKXAdr::getLong(const QString& sAdr, qint32 lDefData) const
{
    Q_UNUSED(lDefData);
    return static_cast<qint32>(original32(sAdr));
}

void clsKXAdr::setSingle(const QString& sAdr, float sngData)
{
    const auto bits = std::bit_cast<quint32>(sngData);
    const qint64 offset = offsetOf(sAdr);
    if (!m_write.contains(offset) || !m_write.contains(offset + 3))
        return;
    for (int i = 0; i < 4; ++i)
        m_write.set(offset + i, static_cast<quint8>(bits >> (24U - 8U * static_cast<unsigned>(i))));
}

float clsKXAdr::getSingle(const QString& sAdr, float sngDefData) const
{
    Q_UNUSED(sngDefData);
    return std::bit_cast<float>(original32(sAdr));
}

void clsKXAdr::setBit(const QString& sAdr, int mask, bool bValue)
{
    const qint64 offset = offsetOf(sAdr);
    const int byte = m_write.at(offset);
    if (bValue)
        m_write.set(offset, static_cast<quint8>(byte | mask));
    else if ((byte & mask) == mask)
        m_write.set(offset, static_cast<quint8>(byte ^ mask));
}

int clsKXAdr::getBit(const QString& sAdr, int mask, int lDefBit) const
{
    Q_UNUSED(lDefBit);
    if (mask == 0)
        return 0;
    return static_cast<int>(std::nearbyint(static_cast<double>(m_original.at(offsetOf(sAdr)) & mask) / mask));
}
