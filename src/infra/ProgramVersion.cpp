#include "ProgramVersion.h"

#include "clsLibrary.h"

ProgramVersion ProgramVersion::current()
{
    return {VORLANT_VERSION_MAJOR, VORLANT_VERSION_MINOR, VORLANT_VERSION_REVISION};
}

QString ProgramVersion::plain() const
{
    return QStringLiteral("%1.%2.%3").arg(major).arg(minor).arg(revision);
}

QString ProgramVersion::text(const clsLibrary& library) const
{
    const QString twoDigits = QStringLiteral("00");
    QString numbers = library.ExFormat(major, QStringLiteral("0")) + u'.' + library.ExFormat(minor, twoDigits);
    if (revision != 0)
        numbers += u'.' + library.ExFormat(revision, twoDigits);
    return library.tranStr(QStringLiteral("Ver.")) + u' ' + numbers;
}
