#pragma once

#include <QString>

class CommandEntry;
class clsData;

// Takes a value as the grid takes it: a number in display units that respects its limits, a choice by its text or else
// by its stored value, a switch by its caption or else by its stored value. Returns why the value is refused. Empty:
// the item holds the value, and those that its interlocks and its selection table set hold theirs; no image does yet.
QString enterValue(CommandEntry& entry, clsData& item, const QString& text);
