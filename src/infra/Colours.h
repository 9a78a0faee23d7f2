#pragma once

#include "SystemColors.h"

#include <QString>

// Colours as texts: a name that begins with "vb", a number ("255", "&hFF8080"), or "RGB.red.green.blue".
namespace colours {

// The value of a name (exact case), system colours in their 0x80000000 form; the default for an unknown name.
qint32 selectVbColor(const QString& name, qint32 defaultColor);

// The plain colour of a system colour; a plain colour comes back unchanged, 0 for an unknown index.
qint32 toColorRef(const platform::SystemColors& system, qint32 color);

// 0 for a text of no known form, the default for one whose numbers cannot be converted.
qint32 fromText(const platform::SystemColors& system, const QString& text, qint32 defaultColor);

// The first name of a plain colour, else "&h" and the value in hexadecimal.
QString toText(qint32 color);

// The names with an English description each, for choice lists: slots 0 to 43, and an empty last one.
constexpr int kTableSlots = 45;
// A row of the table of colour names that a person can choose from.
struct TableRow
{
    QString name;
    QString description;
};
TableRow tableRow(int slot); // empty outside the table

} // namespace colours
