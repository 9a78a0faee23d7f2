#include "WriteOutcomes.h"

#include "TextTools.h"

namespace {

QString outcomeText(const WriteRow& row, bool planned)
{
    if (planned && row.isChosen)
        return QStringLiteral("would be sent");
    switch (row.outcome) {
    case SendOutcome::Conflict:
        return QStringLiteral("conflict");
    case SendOutcome::Refused:
        return QStringLiteral("cannot be sent");
    case SendOutcome::Failed:
        return QStringLiteral("failed");
    case SendOutcome::NotAccepted:
        return QStringLiteral("not accepted");
    case SendOutcome::Accepted:
        return QStringLiteral("accepted");
    case SendOutcome::NotSent:
        break;
    }
    return QStringLiteral("not sent");
}

QStringList fieldsOf(const WriteRow& row, bool planned, OutputFormat format)
{
    const auto english = [](const QString& text) { return text; };
    const ChangeRow& change = row.change;
    const auto shown = [&](const QString& value) { return valueWithUnit(value, row.unit, format); };
    return {change.tag,
            change.name,
            change.block,
            parameterClassName(change.kind),
            causeText(change.cause, change.cause.tag, english),
            shown(change.heldShown),
            shown(change.valueShown),
            outcomeText(row, planned),
            row.reason,
            shown(row.kept)};
}

// A parameter among those of its outcome.
QString mention(const WriteRow& row)
{
    const ChangeRow& change = row.change;
    const QString name = texttools::nameWithTag(change.name, change.tag);
    const auto shown = [&](const QString& value) { return valueWithUnit(value, row.unit, OutputFormat::Table); };
    switch (row.outcome) {
    case SendOutcome::Conflict:
        return QStringLiteral("%1 was %2, is %3").arg(name, shown(change.heldShown), shown(row.kept));
    case SendOutcome::NotAccepted:
        return QStringLiteral("%1 (written %2, kept %3)").arg(name, shown(change.valueShown), shown(row.kept));
    case SendOutcome::Failed:
    case SendOutcome::Refused:
        return QStringLiteral("%1 (%2)").arg(name, row.reason);
    default:
        return name;
    }
}

struct FailureForm
{
    SendOutcome outcome;
    const char16_t* text;
};

constexpr FailureForm kFailures[] = {
    {SendOutcome::Conflict, u"the controller changed while this ran: %1; read it and repeat"},
    {SendOutcome::Refused, u"cannot be sent: %1; correct the values"},
    {SendOutcome::NotAccepted, u"the controller did not accept %1; see what its manual asks for first"},
    {SendOutcome::Failed, u"failed: %1; read the controller before going on"},
    {SendOutcome::NotSent, u"not sent: %1; repeat when the others are in the controller"},
};

} // namespace

QByteArray formatWriteRows(const std::vector<WriteRow>& rows, bool planned, OutputFormat format)
{
    PrintedRows printed;
    for (const char* column : {"tag", "name", "block", "class", "cause", "held", "new", "outcome", "reason", "kept"})
        printed.columns << QString::fromLatin1(column);
    QStringList units;
    for (const WriteRow& row : rows) {
        printed.rows.append(fieldsOf(row, planned, format));
        units << row.unit;
    }
    addUnits(printed, units, format);
    const bool isPrinted = !rows.empty() || format != OutputFormat::Table;
    return isPrinted ? formatRows(printed, format) : QByteArray();
}

QString writeFailure(const std::vector<WriteRow>& rows)
{
    QStringList failures;
    for (const FailureForm& form : kFailures) {
        QStringList mentions;
        for (const WriteRow& row : rows) {
            if (row.isChosen && row.outcome == form.outcome)
                mentions << mention(row);
        }
        if (!mentions.isEmpty())
            failures << QString::fromUtf16(form.text).arg(mentions.join(QStringLiteral(", ")));
    }
    return failures.join(QStringLiteral("; "));
}
