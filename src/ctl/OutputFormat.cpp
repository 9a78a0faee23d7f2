#include "OutputFormat.h"

#include "ItemUnits.h"
#include "TextTable.h"
#include "TextTools.h"
#include "VisibleText.h"
#include "WrittenItems.h"
#include "clsKX.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace {

QString blockText(const clsKX& kx, const clsData& item)
{
    const clsBlock* block = kx.getBlockByNo(item.BlockNo());
    if (block == nullptr)
        return QString();
    return block->m_sName.isEmpty() ? QString::number(block->m_lNo) : block->m_sName;
}

QByteArray asTable(const PrintedRows& printed)
{
    TextTable table(printed.headings.isEmpty() ? tableHeadings(printed.columns) : printed.headings);
    for (const QStringList& row : printed.rows)
        table.add(row);
    return table.text().toUtf8();
}

bool isPlainNumber(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("\\A[-+.0-9eE]+\\z"));
    bool isNumber = false;
    text.toDouble(&isNumber);
    return isNumber && form.match(text).hasMatch();
}

// What spreadsheets take for the beginning of a formula; the last four are full-width.
bool looksLikeFormula(const QString& text)
{
    static const QString starts = QStringLiteral("=+-@\t\r\uFF1D\uFF0B\uFF0D\uFF20");
    return !text.isEmpty() && starts.contains(text.front()) && !isPlainNumber(text);
}

QString csvField(const QString& raw)
{
    QString text = (looksLikeFormula(raw) ? QStringLiteral("'") : QString()) + platform::visibleText(raw);
    const bool quoted = text.contains(u'"') || text.contains(u',');
    return quoted ? u'"' + text.replace(u'"', QStringLiteral("\"\"")) + u'"' : text;
}

QByteArray asCsv(const PrintedRows& printed)
{
    QString text = printed.columns.join(u',') + QStringLiteral("\r\n");
    for (QStringList fields : printed.rows) {
        for (QString& field : fields)
            field = csvField(field);
        text += fields.join(u',') + QStringLiteral("\r\n");
    }
    return text.toUtf8();
}

QString jsonEscape(char32_t code)
{
    QString units;
    for (const char16_t unit : QChar::fromUcs4(code))
        units += QStringLiteral("\\u%1").arg(static_cast<uint>(unit), 4, 16, QLatin1Char('0'));
    return units;
}

// Beside what JSON itself asks for, what a terminal would take for more than text.
QByteArray withoutInvisible(const QByteArray& json)
{
    QString escaped;
    for (const char32_t code : QString::fromUtf8(json).toStdU32String())
        escaped += platform::isInvisible(code) ? jsonEscape(code) : QStringView(QChar::fromUcs4(code)).toString();
    return escaped.toUtf8();
}

// One member at a time, because the objects of the library put their keys into alphabetical order.
QByteArray jsonMember(const QString& key, const QJsonValue& value)
{
    const QByteArray object = QJsonDocument(QJsonObject{{key, value}}).toJson(QJsonDocument::Compact);
    return withoutInvisible(object.mid(1, object.size() - 2));
}

QByteArray jsonObject(const QStringList& columns, const QStringList& row, bool changed)
{
    QByteArrayList members;
    for (qsizetype i = 0; i < columns.size(); ++i)
        members << jsonMember(columns[i], row[i]);
    if (changed)
        members << jsonMember(QStringLiteral("changed"), true);
    return '{' + members.join(',') + '}';
}

QByteArray asJson(const PrintedRows& printed)
{
    QByteArrayList objects;
    for (qsizetype i = 0; i < printed.rows.size(); ++i)
        objects << "  " + jsonObject(printed.columns, printed.rows[i], printed.changed.value(i));
    return objects.isEmpty() ? QByteArray("[]\n") : "[\n" + objects.join(",\n") + "\n]\n";
}

} // namespace

std::optional<OutputFormat> outputFormatNamed(const QString& name)
{
    if (name == u"table")
        return OutputFormat::Table;
    if (name == u"csv")
        return OutputFormat::Csv;
    if (name == u"json")
        return OutputFormat::Json;
    return std::nullopt;
}

QStringList tableHeadings(const QStringList& columns)
{
    QStringList headings = columns;
    for (QString& heading : headings)
        heading[0] = heading[0].toUpper();
    return headings;
}

QString valueWithUnit(const QString& value, const QString& unit, OutputFormat format)
{
    return format == OutputFormat::Table ? texttools::withUnit(value, unit) : value;
}

void addUnits(PrintedRows& printed, const QStringList& units, OutputFormat format)
{
    if (format == OutputFormat::Table)
        return;
    printed.columns << QStringLiteral("unit");
    for (qsizetype i = 0; i < printed.rows.size(); ++i)
        printed.rows[i] << units.value(i);
}

ParameterRow parameterRow(const clsKX& kx, const clsData& item)
{
    ParameterRow row{
        item.Key(), item.DataName(), blockText(kx, item), {}, {}, false, ItemUnits(kx.data()).unitOf(item)};
    row.changed = item.Edit == EditState::kChanged;
    // A default of what is not read at all was not sent by the controller.
    if (item.isKnown() && (isRead(kx.data(), item) || !item.holdsDefault())) {
        row.value = item.VData();
        row.data = item.Data();
    }
    return row;
}

std::vector<ParameterRow> parameterRows(const clsKX& kx)
{
    std::vector<ParameterRow> rows;
    for (const auto& item : kx.items())
        rows.push_back(parameterRow(kx, *item));
    return rows;
}

QByteArray formatParameters(const std::vector<ParameterRow>& rows, OutputFormat format)
{
    PrintedRows printed{{QStringLiteral("tag"), QStringLiteral("name"), QStringLiteral("block"),
                         QStringLiteral("value"), QStringLiteral("data")},
                        {},
                        {}};
    QStringList units;
    for (const ParameterRow& row : rows) {
        printed.rows.append({row.tag, row.name, row.block, valueWithUnit(row.value, row.unit, format), row.data});
        printed.changed.append(row.changed);
        units << row.unit;
    }
    addUnits(printed, units, format);
    return formatRows(printed, format);
}

QByteArray formatRows(const PrintedRows& rows, OutputFormat format)
{
    switch (format) {
    case OutputFormat::Csv:
        return asCsv(rows);
    case OutputFormat::Json:
        return asJson(rows);
    case OutputFormat::Table:
        break;
    }
    return asTable(rows);
}
