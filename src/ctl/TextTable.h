#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

// Rows of text in aligned columns, two blanks apart, with a heading.
class TextTable
{
public:
    explicit TextTable(const QStringList& heading);

    // A row has as many fields as the heading. Its texts go through visibleText.
    void add(const QStringList& row);
    QString text() const;
    // One row of such a table with its end of line; the last field may be wider than its column.
    static QString line(const QStringList& row, const QList<int>& widths);

private:
    QVector<QStringList> m_rows;
    QVector<int> m_widths;
};
