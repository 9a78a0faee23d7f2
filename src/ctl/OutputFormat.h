#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>
#include <vector>

class clsData;
class clsKX;

// How results are printed: for people, for spreadsheets, for programs.
enum class OutputFormat { Table, Csv, Json };

// "table", "csv" or "json"; nothing for another name.
std::optional<OutputFormat> outputFormatNamed(const QString& name);

// One parameter as it is printed. A value that the controller did not send is empty, as in the grid.
struct ParameterRow
{
    QString tag;
    QString name;
    QString block; // the block's name, its number when it has none, empty for an item of no block
    QString value; // display text
    QString data;  // stored text
    bool changed = false;
    QString unit = {}; // of the value; empty for none
};

// Texts by column. The table heads the columns with the headings; without these with the names of the columns, the
// first letter a capital.
struct PrintedRows
{
    QStringList columns;
    QVector<QStringList> rows; // each with as many fields as there are columns
    QVector<bool> changed;     // by row, for Json only; may be empty
    QStringList headings = {}; // for the table only; may be empty
};

// The table has units behind the values; the other forms have them in the last column, for the values to stay numbers.
QString valueWithUnit(const QString& value, const QString& unit, OutputFormat format);
void addUnits(PrintedRows& printed, const QStringList& units, OutputFormat format); // by row

// What the table heads columns of these names with.
QStringList tableHeadings(const QStringList& columns);

ParameterRow parameterRow(const clsKX& kx, const clsData& item);
// All items of the loaded model, in item order.
std::vector<ParameterRow> parameterRows(const clsKX& kx);

QByteArray formatParameters(const std::vector<ParameterRow>& rows, OutputFormat format);

// UTF-8. Table: aligned columns with a heading. Csv: RFC 4180 with a heading; a text that a
// spreadsheet would take for a formula has an apostrophe before it. Json: an array with one object a line. Characters
// that are not seen are shown, in Json escaped.
QByteArray formatRows(const PrintedRows& rows, OutputFormat format);
