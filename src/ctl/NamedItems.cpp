#include "NamedItems.h"

#include "VisibleText.h"
#include "clsKX.h"

CommandResult findItems(const clsKX& kx, const QStringList& tags, std::vector<clsData*>& items)
{
    QStringList unknown;
    items.clear();
    for (const QString& tag : tags) {
        clsData* item = kx.getDataByTag(tag);
        if (item == nullptr || item->Key() != tag)
            unknown << u'"' + tag + u'"';
        else
            items.push_back(item);
    }
    if (unknown.isEmpty())
        return {};
    return CommandResult::failed(
        ExitStatus::Usage,
        QStringLiteral("%1 has no parameter %2; vorlantctl read lists them").arg(kx.ModelName(), unknown.join(u", ")));
}

QByteArray formatItems(const clsKX& kx, const std::vector<clsData*>& items, OutputFormat format)
{
    std::vector<ParameterRow> rows;
    rows.reserve(items.size());
    for (const clsData* item : items)
        rows.push_back(parameterRow(kx, *item));
    if (format != OutputFormat::Table)
        return formatParameters(rows, format);
    QString lines;
    for (const ParameterRow& row : rows)
        lines += row.tag + u'=' + platform::visibleText(row.value) + u'\n';
    return lines.toUtf8();
}
