#include "TextTable.h"

#include "TextWidth.h"
#include "VisibleText.h"

#include <algorithm>

namespace {

constexpr int kGap = 2;

} // namespace

TextTable::TextTable(const QStringList& heading) : m_widths(heading.size(), 0)
{
    add(heading);
}

void TextTable::add(const QStringList& row)
{
    QStringList fields;
    for (int i = 0; i < m_widths.size(); ++i) {
        fields << platform::visibleText(row.value(i));
        m_widths[i] = std::max(m_widths[i], platform::displayWidth(fields.last()));
    }
    m_rows << fields;
}

QString TextTable::text() const
{
    QString text;
    for (const QStringList& row : m_rows)
        text += line(row, m_widths);
    return text;
}

QString TextTable::line(const QStringList& row, const QList<int>& widths)
{
    QString line;
    for (int i = 0; i < row.size(); ++i)
        line += row[i] + QString(std::max(widths[i] - platform::displayWidth(row[i]), 0) + kGap, u' ');
    while (line.endsWith(u' '))
        line.chop(1);
    return line + u'\n';
}
