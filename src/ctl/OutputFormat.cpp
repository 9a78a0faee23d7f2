#include "OutputFormat.h"

#include "TextTable.h"
#include "clsKX.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

namespace {

QString blockText(const clsKX& kx, const clsData& item)
{
    const clsBlock* block = kx.getBlockByNo(item.BlockNo());
    if (block == nullptr)
        return QString();
    return block->m_sName.isEmpty() ? QString::number(block->m_lNo) : block->m_sName;
}

QByteArray asTable(const std::vector<ParameterRow>& rows)
{
    TextTable table({QStringLiteral("Tag"), QStringLiteral("Name"), QStringLiteral("Block"), QStringLiteral("Value"),
                     QStringLiteral("Data")});
    for (const ParameterRow& row : rows)
        table.add({row.tag, row.name, row.block, row.value, row.data});
    return table.text().toUtf8();
}

QString csvField(QString text)
{
    const bool quoted = text.contains(u'"') || text.contains(u',') || text.contains(u'\r') || text.contains(u'\n');
    return quoted ? u'"' + text.replace(u'"', QStringLiteral("\"\"")) + u'"' : text;
}

QByteArray asCsv(const std::vector<ParameterRow>& rows)
{
    QString text = QStringLiteral("tag,name,block,value,data\r\n");
    for (const ParameterRow& row : rows) {
        QStringList fields{row.tag, row.name, row.block, row.value, row.data};
        for (QString& field : fields)
            field = csvField(field);
        text += fields.join(u',') + QStringLiteral("\r\n");
    }
    return text.toUtf8();
}

QByteArray quoted(const QString& text)
{
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

// Written by hand because the library's objects put their keys into alphabetical order.
QByteArray jsonObject(const ParameterRow& row)
{
    const QByteArray changed = row.changed ? QByteArray(",\"changed\":true") : QByteArray();
    return "{\"tag\":" + quoted(row.tag) + ",\"name\":" + quoted(row.name) + ",\"block\":" + quoted(row.block) +
           ",\"value\":" + quoted(row.value) + ",\"data\":" + quoted(row.data) + changed + '}';
}

QByteArray asJson(const std::vector<ParameterRow>& rows)
{
    QByteArrayList objects;
    for (const ParameterRow& row : rows)
        objects << "  " + jsonObject(row);
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

std::vector<ParameterRow> parameterRows(const clsKX& kx)
{
    std::vector<ParameterRow> rows;
    for (const auto& item : kx.items()) {
        ParameterRow row{item->Key(), item->DataName(), blockText(kx, *item), QString(), QString(), false};
        row.changed = item->Edit == EditState::kChanged;
        if (item->isKnown()) {
            row.value = item->VData();
            row.data = item->Data();
        }
        rows.push_back(row);
    }
    return rows;
}

QByteArray formatParameters(const std::vector<ParameterRow>& rows, OutputFormat format)
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
