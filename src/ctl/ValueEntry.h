#pragma once

#include <QString>

class clsData;
class clsKX;

// Takes a value as the grid takes it: a number in display units that respects its limits, a choice by its text or else
// by its stored value, a switch by its caption or else by its stored value. Returns why the value is refused; the item
// is unchanged then. Empty: the item, and those that its selection table sets, hold the value, ready to be written.
QString enterValue(clsKX& kx, clsData& item, const QString& text);
