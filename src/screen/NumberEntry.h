#pragma once

#include <QString>

// A number as a person writes it, as the number texts of the program: digits of either width, with one point and
// without commas. A comma is a decimal comma ("12,5", "0,125", "1234,567") or parts thousands ("1,234,567", "1,234.5")
// where it can be nothing else; else it stays: "1,234" may be either. What is no number is left as it is.
QString plainNumber(const QString& entered);

// Of a text that plainNumber gave: nobody can say which number it means.
bool isUnclearNumber(const QString& number);
