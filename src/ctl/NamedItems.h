#pragma once

#include "CommandResult.h"
#include "OutputFormat.h"

#include <QStringList>
#include <vector>

class clsData;
class clsKX;

// The items with exactly these tags, in this order. Fails when the model lacks one.
CommandResult findItems(const clsKX& kx, const QStringList& tags, std::vector<clsData*>& items);

// Table: one line "TAG=value" for each; else as formatParameters.
QByteArray formatItems(const clsKX& kx, const std::vector<clsData*>& items, OutputFormat format);
