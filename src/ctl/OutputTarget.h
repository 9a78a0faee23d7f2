#pragma once

#include "Result.h"

#include <QByteArray>
#include <QString>

// Writes everything to the file (replaced whole or left as it was), or to standard output when file is empty.
platform::Result<> writeOutput(const QByteArray& bytes, const QString& file);
