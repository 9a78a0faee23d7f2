#include "JournalLines.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString kEvent = QStringLiteral("event");
const QString kId = QStringLiteral("id");
const QString kTime = QStringLiteral("time");
const QString kUser = QStringLiteral("user");
const QString kVersion = QStringLiteral("version");
const QString kProcess = QStringLiteral("process");
const QString kStarted = QStringLiteral("started");
const QString kCause = QStringLiteral("cause");
const QString kDevice = QStringLiteral("device");
const QString kSlave = QStringLiteral("slave");
const QString kMode = QStringLiteral("mode");
const QString kModel = QStringLiteral("model");
const QString kOutcome = QStringLiteral("outcome");
const QString kParameters = QStringLiteral("parameters");
const QString kTag = QStringLiteral("tag");
const QString kName = QStringLiteral("name");
const QString kOld = QStringLiteral("old");
const QString kNew = QStringLiteral("new");
const QString kOldShown = QStringLiteral("oldShown");
const QString kNewShown = QStringLiteral("newShown");
const QString kUnit = QStringLiteral("unit");
const QString kBegun = QStringLiteral("begun");
const QString kCompleted = QStringLiteral("completed");
const QString kInterrupted = QStringLiteral("interrupted");

QJsonObject eventObject(const QString& event, const QString& id, const QDateTime& time)
{
    const QDateTime local = time.toLocalTime();
    return {
        {kEvent, event}, {kId, id}, {kTime, local.toOffsetFromUtc(local.offsetFromUtc()).toString(Qt::ISODateWithMs)}};
}

QJsonArray parameterArray(const QVector<JournalParameter>& parameters, bool withOutcome)
{
    QJsonArray array;
    for (const JournalParameter& parameter : parameters) {
        QJsonObject object{
            {kTag, parameter.tag}, {kName, parameter.name}, {kOld, parameter.held}, {kNew, parameter.value}};
        if (!parameter.heldShown.isEmpty())
            object.insert(kOldShown, parameter.heldShown);
        if (!parameter.valueShown.isEmpty())
            object.insert(kNewShown, parameter.valueShown);
        if (!parameter.unit.isEmpty())
            object.insert(kUnit, parameter.unit);
        if (withOutcome)
            object.insert(kOutcome, parameter.outcome);
        array.append(object);
    }
    return array;
}

QByteArray asLine(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QVector<JournalParameter> parametersOf(const QJsonObject& line)
{
    QVector<JournalParameter> parameters;
    for (const auto& value : line.value(kParameters).toArray())
        parameters.append({value[kTag].toString(), value[kName].toString(), value[kOld].toString(),
                           value[kNew].toString(), value[kOutcome].toString(), value[kOldShown].toString(),
                           value[kNewShown].toString(), value[kUnit].toString()});
    return parameters;
}

// What was begun stays as it was; the end adds what became of it.
void addOutcomes(QVector<JournalParameter>& begun, const QVector<JournalParameter>& ended)
{
    QHash<QString, qsizetype> places;
    for (qsizetype i = 0; i < begun.size(); ++i)
        places.insert(begun[i].tag, i);
    for (const JournalParameter& parameter : ended) {
        const auto place = places.constFind(parameter.tag);
        if (place != places.constEnd())
            begun[place.value()].outcome = parameter.outcome;
        else
            begun.append(parameter);
    }
}

} // namespace

QByteArray journallines::begun(const JournalEntry& entry, const platform::ProcessIdentity& process)
{
    QJsonObject line = eventObject(kBegun, entry.id, entry.begunAt);
    line.insert(kUser, entry.user);
    line.insert(kVersion, entry.version);
    line.insert(kProcess, process.number);
    line.insert(kStarted, process.started);
    line.insert(kCause, entry.cause);
    line.insert(kDevice, entry.device);
    line.insert(kSlave, entry.slave);
    line.insert(kMode, entry.mode);
    line.insert(kModel, entry.model);
    line.insert(kParameters, parameterArray(entry.parameters, false));
    return asLine(line);
}

QByteArray journallines::completed(const QString& id, const QDateTime& time, const QString& outcome,
                                   const QVector<JournalParameter>& parameters)
{
    QJsonObject line = eventObject(kCompleted, id, time);
    line.insert(kOutcome, outcome);
    line.insert(kParameters, parameterArray(parameters, true));
    return asLine(line);
}

QByteArray journallines::interrupted(const QString& id, const QDateTime& time)
{
    return asLine(eventObject(kInterrupted, id, time));
}

void JournalRecords::add(const QByteArray& content)
{
    for (qsizetype from = 0; from < content.size();) {
        const qsizetype end = content.indexOf('\n', from);
        const QByteArray line = content.sliced(from, (end < 0 ? content.size() : end) - from);
        if (!line.isEmpty() && !addLine(line))
            ++m_damagedLines;
        from += line.size() + 1;
    }
}

bool JournalRecords::addLine(const QByteArray& text)
{
    const QJsonObject line = QJsonDocument::fromJson(text).object();
    const QString event = line.value(kEvent).toString();
    const QString id = line.value(kId).toString();
    const QDateTime time = QDateTime::fromString(line.value(kTime).toString(), Qt::ISODateWithMs).toLocalTime();
    if (id.isEmpty() || !time.isValid())
        return false;
    if (event == kBegun)
        return addBegun(id, time, line);
    if (event == kCompleted)
        return addCompleted(id, time, line);
    return event == kInterrupted && addInterrupted(id);
}

bool JournalRecords::addBegun(const QString& id, const QDateTime& time, const QJsonObject& line)
{
    if (find(id) != nullptr)
        return false;
    JournalRecord& record = make(id, time);
    record.process = {line.value(kProcess).toInteger(), line.value(kStarted).toInteger()};
    record.entry.user = line.value(kUser).toString();
    record.entry.version = line.value(kVersion).toString();
    record.entry.cause = line.value(kCause).toString();
    record.entry.device = line.value(kDevice).toString();
    record.entry.slave = line.value(kSlave).toInt();
    record.entry.mode = line.value(kMode).toString();
    record.entry.model = line.value(kModel).toString();
    record.entry.parameters = parametersOf(line);
    return true;
}

// One whose begin is damaged is told all the same.
bool JournalRecords::addCompleted(const QString& id, const QDateTime& time, const QJsonObject& line)
{
    JournalRecord* begun = find(id);
    JournalRecord& record = begun != nullptr ? *begun : make(id, time);
    record.isCompleted = true;
    record.entry.endedAt = time;
    record.entry.outcome = line.value(kOutcome).toString();
    addOutcomes(record.entry.parameters, parametersOf(line));
    return true;
}

bool JournalRecords::addInterrupted(const QString& id)
{
    JournalRecord* record = find(id);
    if (record != nullptr)
        record->isTold = true;
    return record != nullptr;
}

JournalRecord* JournalRecords::find(const QString& id)
{
    const auto place = m_places.constFind(id);
    return place == m_places.constEnd() ? nullptr : &m_records[place.value()];
}

JournalRecord& JournalRecords::make(const QString& id, const QDateTime& time)
{
    m_places.insert(id, m_records.size());
    JournalRecord& record = m_records.emplace_back();
    record.entry.id = id;
    record.entry.begunAt = time;
    return record;
}
