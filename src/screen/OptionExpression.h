#pragma once

#include <QString>

// Options of a controller variant. The model string is the full model code: characters 1 to 3 are the family, later
// ones option codes.
//
// index -1: the family (3 characters); 0: the first 4; 1 to 5: the character at position index + 4; 6 to 8: the
// character at position index + 6 (positions from 1). Empty for other indexes, beyond the end, and for other families
// than KX4, KX6 and KX9.
QString optionText(const QString& modelString, int index);

// Whether an object with this "Option" expression and "Visible" value is built for the model string. Empty: the Visible
// value; "USE": always; else terms "digit=character,character..." joined by "&" that must all match.
bool isOptionOn(const QString& expression, bool visible, const QString& modelString);
