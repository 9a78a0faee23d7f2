#include "WriteOutcomes.h"

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

QStringList fieldsOf(const WriteRow& row, bool planned)
{
    const auto english = [](const QString& text) { return text; };
    const ChangeRow& change = row.change;
    return {change.tag,
            change.name,
            change.block,
            parameterClassName(change.kind),
            causeText(change.cause, change.cause.tag, english),
            change.heldShown,
            change.valueShown,
            outcomeText(row, planned),
            row.reason,
            row.kept};
}

// A parameter among those of its outcome.
QString mention(const WriteRow& row)
{
    const QString& tag = row.change.tag;
    switch (row.outcome) {
    case SendOutcome::Conflict:
        return QStringLiteral("%1 was %2, is %3").arg(tag, row.change.heldShown, row.kept);
    case SendOutcome::NotAccepted:
        return QStringLiteral("%1 (sent %2, kept %3)").arg(tag, row.change.valueShown, row.kept);
    case SendOutcome::Failed:
    case SendOutcome::Refused:
        return QStringLiteral("%1 (%2)").arg(tag, row.reason);
    default:
        return tag;
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
    for (const WriteRow& row : rows)
        printed.rows.append(fieldsOf(row, planned));
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
