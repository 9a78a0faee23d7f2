#include "WriteRequests.h"

#include "HeldValue.h"
#include "ModbusError.h"
#include "Numbers.h"
#include "ProtocolNumbers.h"
#include "clsLibrary.h"

namespace {

const QString kLiteral = QStringLiteral("&h");

bool isLiteral(const QString& tag)
{
    return tag.startsWith(kLiteral);
}

QString writeEntryName(const clsKXAdr& image, int i)
{
    return TransferParts::entryName(image, image.WCmd(i), image.WAdr(i));
}

} // namespace

bool WriteRequests::build(const clsKXAdr& image, int i, int pass, Scope scope)
{
    if (image.WAdr(i).isEmpty() || image.WCmd(i).isEmpty())
        return false;
    const bool isDirect = image.WCmd(i) == u"Direct";
    if (isDirect != (pass == 0))
        return false;
    try {
        return isDirect ? buildDirect(image, i) : buildSet(image, i, scope);
    } catch (const ModbusError& error) {
        m_report.failed.append({writeEntryName(image, i), error.description(), m_selection.tagsIn(image, i)});
        m_parts.kx.logError(m_report.failed.last().text());
        return false;
    }
}

bool WriteRequests::buildDirect(const clsKXAdr& image, int i)
{
    if (!image.writeFault(i).isEmpty()) {
        m_report.failed.append({writeEntryName(image, i),
                                m_parts.tran("not sent, because the definition writes bytes that it does not read"),
                                m_selection.tagsIn(image, i)});
        return false;
    }
    RequestChannel& channel = m_parts.channel;
    channel.modbus().setDigitalVals(image.getWriteData(false));
    const qint32 address = m_parts.kx.library().toLong(kLiteral + image.WAdr(i), 0);
    if (!channel.modbus().WriteDirectMemory(address, image.WCnt(i)))
        return false;
    m_functionCode = functioncode::kMemory;
    channel.trace(QStringLiteral("Original :%1:").arg(image.StartAddress()), image.getOrgData());
    channel.trace(QStringLiteral("WriteData:%1:").arg(image.StartAddress()), image.getWriteData(true).bytes);
    channel.traceRequest(QStringLiteral("(Dirct)S:"));
    return true;
}

bool WriteRequests::buildSet(const clsKXAdr& image, int i, Scope scope)
{
    const QString tag = image.WTag(i);
    const bool isAnalog = image.WCmd(i) == u"SetAnalog";
    if (!isAnalog && image.WCmd(i) != u"SetDigital")
        return false;
    if (isLiteral(tag) && isAnalog && scope == Scope::Blocks)
        return false;
    if (scope == Scope::Chosen && !isLiteral(tag) && !isChosen(tag))
        return false;
    const auto value = setValue(tag);
    if (!value) {
        reportNoValue(image, i, tag);
        return false;
    }
    const qint32 reference = m_parts.kx.library().toLong(image.WAdr(i), 0);
    clsModbus& modbus = m_parts.channel.modbus();
    m_functionCode = isAnalog ? functioncode::kWriteRegister : functioncode::kWriteCoil;
    const bool isBuilt =
        isAnalog ? modbus.WriteAnalogSetValue(reference, *value) : modbus.WriteDigitalSetValue(reference, *value != 0);
    if (isBuilt && isAnalog)
        m_parts.channel.traceRequest(QStringLiteral("(SetAl)S:"));
    return isBuilt;
}

bool WriteRequests::isChosen(const QString& tag) const
{
    const clsData* item = m_parts.kx.getDataByTag(tag);
    return item != nullptr && m_selection.contains(item->Key());
}

// A parameter that was refused is reported as that already.
void WriteRequests::reportNoValue(const clsKXAdr& image, int i, const QString& tag)
{
    m_parts.kx.logError(QStringLiteral("not written: %1: %2 has no value").arg(writeEntryName(image, i), tag));
    const WriteSelection::Chosen* chosen = m_selection.find(tag);
    if ((chosen == nullptr || !chosen->refused) && !m_report.skipped.contains(tag))
        m_report.skipped << tag;
}

std::optional<qint16> WriteRequests::setValue(const QString& tag) const
{
    if (isLiteral(tag))
        return platform::parseInt16(tag);
    const clsData* item = m_parts.kx.getDataByTag(tag);
    if (item == nullptr)
        return std::nullopt;
    if (m_selection.contains(item->Key()) && !item->isReadOnly()) {
        const WriteSelection::Chosen* chosen = m_selection.find(item->Key());
        const bool isRefused = !item->isKnown() || (chosen != nullptr && chosen->refused);
        return isRefused ? std::nullopt : platform::parseInt16(item->Data());
    }
    const clsKXAdr* image = m_parts.kx.ColAdr().find(item->RSection());
    const auto held = image == nullptr ? std::nullopt : heldValue(*item, *image);
    return held ? platform::parseInt16(*held) : std::nullopt;
}
