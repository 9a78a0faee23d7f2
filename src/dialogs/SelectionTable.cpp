#include "SelectionTable.h"

#include "IniBatch.h"
#include "Numbers.h"
#include "clsINI.h"
#include "clsLibrary.h"

#include <algorithm>
#include <cmath>

using platform::Cell;
using platform::CellType;
using platform::HAlign;

namespace {

const QString kFile = QStringLiteral("MultiSelect.ini");
constexpr double kWidest = 200; // average characters
constexpr double kMargin = 2;

QString numbered(const char* key, int number)
{
    return QLatin1String(key) + QString::number(number);
}

QString comparable(const QString& text)
{
    return text.normalized(QString::NormalizationForm_KC).toCaseFolded();
}

bool isNumber(const QString& text)
{
    return platform::parseDouble(text).has_value();
}

} // namespace

bool SelectionTable::load(const QString& section)
{
    IniBatch batch(m_library.context());
    const bool isUsable = loadTable(section);
    batch.commitLogged();
    return isUsable;
}

bool SelectionTable::loadTable(const QString& section)
{
    m_rows.clear();
    m_columns.clear();
    m_table = ChoiceTable();
    m_title = section;
    clsINI ini(m_library.context());
    ini.setIniPath(m_library.getIniFilePath(QString()));
    ini.setIniFileName(kFile);
    QStringList lines;
    if (!m_library.FileExists(m_library.getIniFilePath(QString()) + u'\\' + kFile)) {
        m_problem = m_library.tranStr(QStringLiteral("Not Found MultiSelect.ini"));
        return false;
    }
    // A table that is not there stays so: an empty one in its place would hide the fault.
    if (!section.isEmpty() && ini.EnumSectionString(section, lines) > 0)
        m_table.load(ini, section, m_library);
    if (m_table.entries().empty()) {
        m_problem =
            m_library
                .tranStr(QStringLiteral("The selection table %1 is missing from MultiSelect.ini or has no entries."))
                .arg(section);
        return false;
    }
    loadLook(ini, section);
    for (int row = 1; row <= rowCount(); ++row) {
        if (isSelectable(row))
            return true;
    }
    m_problem = m_library.tranStr(QStringLiteral("No entry of the selection table %1 has a value.")).arg(section);
    return false;
}

void SelectionTable::loadLook(clsINI& ini, const QString& section)
{
    const auto color = [&](const char* key, const QString& name) {
        const qint32 fallback = m_library.StrToColor(name, 0);
        return static_cast<platform::ColorRef>(
            m_library.StrToColor(ini.GetIniData(section, QLatin1String(key), name), fallback));
    };
    qsizetype parts = 1;
    for (const ChoiceTable::Entry& entry : m_table.entries()) {
        parts = std::max(parts, entry.names.size());
        QStringList& row = m_rows.emplace_back();
        for (const QString& name : entry.names)
            row << words(name);
    }
    m_title = ini.GetIniData(section, QStringLiteral("Title"), section);
    const QString count = ini.GetIniData(section, QStringLiteral("ColMax"), QString::number(parts));
    const int columns = std::clamp(m_library.toLong(count, static_cast<qint32>(parts)), 1, kMaxColumns);
    for (int number = 1; number <= columns; ++number)
        m_columns.push_back(loadColumn(ini, section, number));
    m_title = words(m_title);
    m_backColor = color("BackColor", QStringLiteral("vbWindowBackground"));
    m_foreColor = color("ForeColor", QStringLiteral("vbWindowText"));
}

SelectionTable::Column SelectionTable::loadColumn(clsINI& ini, const QString& section, int number)
{
    Column column;
    const QString header = number == 1 ? m_title : QString();
    column.header = words(ini.GetIniData(section, numbered("ColHeader", number), header));
    const int align = m_library.toLong(ini.GetIniData(section, numbered("ColAlign", number), QStringLiteral("0")), 0);
    column.align = align == 1 ? HAlign::Right : align == 2 ? HAlign::Center : HAlign::Left;
    const double needed = neededWidth(number);
    const QString width = ini.GetIniData(section, numbered("ColWidth", number), platform::doubleText(needed));
    column.width = m_library.toDouble(width, needed);
    if (!(column.width > 0 && column.width <= kWidest))
        column.width = needed;
    return column;
}

double SelectionTable::neededWidth(int number) const
{
    const platform::TextMeasure estimate;
    double width = 0;
    for (const QStringList& row : m_rows)
        width = std::max(width, estimate.widthUnits(row.value(number - 1), {}));
    return std::min(std::ceil(width) + kMargin, kWidest);
}

// Numbers and dashes are the same in every language, and would only fill the language files.
QString SelectionTable::words(const QString& text) const
{
    const bool hasWords = std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
    return hasWords && !isNumber(text) ? m_library.tranStr(text) : text;
}

void SelectionTable::fill(platform::GridModel& grid) const
{
    Cell plain;
    plain.type = CellType::StaticText;
    plain.backColor = m_backColor;
    plain.foreColor = m_foreColor;
    grid.setMaxRows(rowCount());
    grid.setMaxCols(static_cast<int>(m_columns.size()));
    grid.resetCells(plain);
    grid.beginUpdate();
    for (int col = 1; col <= grid.maxCols(); ++col) {
        const Column& column = m_columns[static_cast<size_t>(col) - 1];
        grid.setColHeader(col, column.header, column.align);
        for (int row = 1; row <= rowCount(); ++row) {
            Cell cell = plain;
            cell.text = m_rows[static_cast<size_t>(row) - 1].value(col - 1);
            cell.align = column.align;
            cell.locked = !isSelectable(row);
            grid.setCell(row, col, cell);
        }
        grid.setColWidth(col, std::max(column.width, grid.maxTextColWidth(col)));
    }
    for (int row = 1; row <= rowCount(); ++row)
        grid.setRowHeight(row, grid.maxTextRowHeight(row));
    grid.endUpdate();
}

const ChoiceTable::Entry* SelectionTable::entry(int row) const
{
    return row >= 1 && row <= rowCount() ? &m_table.entries()[static_cast<size_t>(row) - 1] : nullptr;
}

bool SelectionTable::isSelectable(int row) const
{
    return entry(row) != nullptr && !entry(row)->value().isEmpty();
}

int SelectionTable::rowOf(const QString& storedValue) const
{
    const auto wanted = platform::parseDouble(storedValue);
    for (int row = 1; wanted && row <= rowCount(); ++row) {
        const auto value = platform::parseDouble(entry(row)->value());
        if (value && *value == *wanted)
            return row;
    }
    return 0;
}

int SelectionTable::find(const QString& text) const
{
    const QString wanted = comparable(text.trimmed());
    int holding = 0;
    for (int row = 1; !wanted.isEmpty() && row <= rowCount(); ++row) {
        for (const QString& part : m_rows[static_cast<size_t>(row) - 1]) {
            const qsizetype at = comparable(part).indexOf(wanted);
            if (at == 0)
                return row;
            holding = at > 0 && holding == 0 ? row : holding;
        }
    }
    return holding;
}

std::vector<EntrySetting> SelectionTable::settingsOf(int row, const QString& itemTag) const
{
    return entry(row) == nullptr ? std::vector<EntrySetting>() : entry(row)->settingsFor(itemTag);
}
