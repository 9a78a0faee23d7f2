#pragma once

#include <QDateTime>
#include <QString>

namespace platform {

// A date and time by a pattern of yyyy, yy, mm, dd, hh, nn, ss (any case; "mm" after "hh" means minutes), e.g.
// "yyyy/mm/dd hh:nn:ss".
QString formatDate(const QDateTime& when, const QString& pattern);

} // namespace platform
