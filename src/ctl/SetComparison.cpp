#include "SetComparison.h"

#include "Comparison.h"
#include "ItemStore.h"
#include "WrittenItems.h"
#include "clsKX.h"

std::vector<ParameterRow> comparedRows(const clsKX& kx)
{
    std::vector<ParameterRow> rows;
    for (const auto& item : kx.items()) {
        if (!isWritten(kx.data(), *item))
            continue;
        rows.push_back(parameterRow(kx, *item));
        rows.back().data = heldText(*item, rows.back().data);
    }
    return rows;
}

CommandResult compareRows(const std::vector<ParameterRow>& first, const std::vector<ParameterRow>& second,
                          const QStringList& sides, const QStringList& headings, OutputFormat format)
{
    PrintedRows differences{QStringList{QStringLiteral("tag"), QStringLiteral("name")} + sides, {}, {}};
    if (!headings.isEmpty())
        differences.headings = tableHeadings(differences.columns.first(2)) + headings;
    QStringList units;
    for (size_t i = 0; i < first.size() && i < second.size(); ++i) {
        const ParameterRow& left = first[i];
        const ParameterRow& right = second[i];
        if (isSameValue(left.data, right.data))
            continue;
        differences.rows.append({left.tag, left.name, valueWithUnit(left.value, left.unit, format),
                                 valueWithUnit(right.value, right.unit, format)});
        units << (left.unit == right.unit ? left.unit : left.unit + QStringLiteral(" / ") + right.unit);
    }
    addUnits(differences, units, format);
    const bool differ = !differences.rows.isEmpty();
    const bool isPrinted = differ || format != OutputFormat::Table;
    return {differ ? ExitStatus::Differ : ExitStatus::Done, isPrinted ? formatRows(differences, format) : QByteArray(),
            QString()};
}
