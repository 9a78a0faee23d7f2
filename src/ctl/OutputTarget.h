#pragma once

#include <QByteArray>
#include <QString>

// Writes everything to the file (replaced whole or left as it was), or to standard output when file is empty. Returns
// what went wrong in one line, empty when all was written.
[[nodiscard]] QString writeOutput(const QByteArray& bytes, const QString& file);
