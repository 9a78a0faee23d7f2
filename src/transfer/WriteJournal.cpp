#include "WriteJournal.h"

#include "ControllerState.h"
#include "ItemUnits.h"
#include "clsKX.h"
#include "clsLibrary.h"

#include <utility>

namespace {

// The words of the journal are English: other programs read them.
QString wordOf(const SentParameter& parameter, const WriteReport& report)
{
    switch (parameter.outcome) {
    case SendOutcome::Accepted:
        return parameter.changes ? QStringLiteral("accepted") : QStringLiteral("unchanged");
    case SendOutcome::NotAccepted:
        return QStringLiteral("not accepted");
    case SendOutcome::Failed:
        return QStringLiteral("failed");
    case SendOutcome::Refused:
        return report.outsideLimits.contains(parameter.tag) ? QStringLiteral("outside its limits")
                                                            : QStringLiteral("no value");
    default:
        return QStringLiteral("not sent");
    }
}

QString wordOf(WriteOutcome outcome)
{
    switch (outcome) {
    case WriteOutcome::Complete:
        return QStringLiteral("complete");
    case WriteOutcome::Cancelled:
        return QStringLiteral("cancelled");
    case WriteOutcome::Aborted:
        return QStringLiteral("aborted");
    default:
        return QStringLiteral("failed");
    }
}

} // namespace

WriteJournal::WriteJournal(const clsKX& kx, const ControllerState& controller)
    : m_kx(kx), m_controller(controller), m_journal(kx.library().context())
{}

platform::Result<> WriteJournal::begin(const QString& cause, const QString& device,
                                       const QVector<SentParameter>& parameters)
{
    chooseTags(parameters);
    WriteReport planned;
    planned.parameters = parameters;
    JournalEntry entry;
    entry.cause = cause;
    entry.device = device;
    entry.slave = m_controller.slaveAddress();
    entry.mode = m_controller.transmissionMode() == 1 ? QStringLiteral("ASCII") : QStringLiteral("RTU");
    entry.model = m_kx.modelString();
    entry.parameters = entriesOf(planned);
    platform::Result<QString> begun = m_journal.begin(entry);
    if (!begun.ok())
        return platform::Failure{begun.error()};
    m_id = begun.value();
    return {};
}

// What changes, and what has an effect of its own whatever the controller held.
void WriteJournal::chooseTags(const QVector<SentParameter>& parameters)
{
    m_tags.clear();
    for (const SentParameter& parameter : parameters) {
        const clsData* item = m_kx.getDataByTag(parameter.tag);
        const bool isCommand = item != nullptr && item->Class() == ParameterClass::Command;
        if (parameters.size() == 1 || parameter.changes || isCommand)
            m_tags << parameter.tag;
    }
}

QVector<JournalParameter> WriteJournal::entriesOf(const WriteReport& report) const
{
    QVector<JournalParameter> entries;
    const TranslateText tran = m_kx.library().translation();
    const ItemUnits units(m_kx.data());
    const auto shown = [&](const clsData& item, const QString& stored) {
        return stored.isEmpty() ? QString() : translatedValue(item, m_kx.data().lookup, stored, tran);
    };
    for (const SentParameter& parameter : report.parameters) {
        const clsData* item = m_kx.getDataByTag(parameter.tag);
        if (item != nullptr && m_tags.contains(parameter.tag))
            entries.append({parameter.tag, tran(item->nameOrTag()), parameter.before, parameter.value,
                            wordOf(parameter, report), shown(*item, parameter.before), shown(*item, parameter.value),
                            units.unitOf(*item)});
    }
    return entries;
}

platform::Result<> WriteJournal::complete(const WriteReport& report)
{
    const QString id = std::exchange(m_id, {});
    return id.isEmpty() ? platform::Result<>() : m_journal.complete(id, wordOf(report.outcome), entriesOf(report));
}
