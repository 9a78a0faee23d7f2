#pragma once

#include <QString>

// Whether "left sign right" holds, in single precision. Signs: "=", "<>", "<", "<=" or "=<", ">", ">=" or "=>". False
// for any other sign and when a side is not a number.
bool holds(const QString& left, const QString& sign, const QString& right);
