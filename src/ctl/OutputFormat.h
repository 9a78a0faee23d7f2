#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

class clsKX;

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
};

// All items of the loaded model, in item order.
std::vector<ParameterRow> parameterRows(const clsKX& kx);

// UTF-8. Table: aligned columns with a heading. Csv: RFC 4180 with a heading. Json: an array with one object a line.
QByteArray formatParameters(const std::vector<ParameterRow>& rows, OutputFormat format);
