#include "TextTools.h"

#include "Dates.h"
#include "Numbers.h"

#include <QDateTime>

namespace texttools {

QString dataToken(const QString& text, const QString& token)
{
    const auto place = text.size() < 2 ? -1 : text.indexOf(token);
    return place < 0 ? text : text.mid(place + token.size());
}

QString keyToken(const QString& text, const QString& token)
{
    const auto place = text.size() < 2 ? -1 : text.indexOf(token);
    return place < 0 ? text : text.left(place);
}

QString commandArgument(const QString& commandLine, const QString& name, bool keepCase)
{
    const QString line = keepCase ? commandLine : commandLine.toUpper();
    const QString wanted = keepCase ? name : name.toUpper();
    const auto place = line.indexOf(wanted);
    if (place < 0)
        return {};
    const QString rest = line.mid(place + wanted.size());
    return rest.left(rest.indexOf(u'/') < 0 ? rest.size() : rest.indexOf(u'/'));
}

QString hexString(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toHex().toUpper());
}

QString addressText(qint32 address)
{
    const QString text = QString::number(address);
    return address >= 0 && address <= 9 ? u'0' + text : text;
}

QString withUnit(const QString& value, const QString& unit)
{
    return value.isEmpty() || unit.isEmpty() ? value : value + u' ' + unit;
}

QString nameWithTag(const QString& name, const QString& tag)
{
    return name.isEmpty() || name == tag ? tag : QStringLiteral("%1 [%2]").arg(name, tag);
}

QString format(const QVariant& value, const QString& pattern, const QString& shortDate)
{
    if (value.typeId() == QMetaType::QDateTime) {
        QString local = pattern;
        local.replace(QStringLiteral("yyyy/mm/dd"), shortDate);
        return platform::formatDate(value.toDateTime(), local);
    }
    if (value.typeId() == QMetaType::Float)
        return platform::formatSingle(value.toFloat(), pattern);
    if (value.typeId() == QMetaType::QString) {
        const auto number = platform::parseDouble(value.toString());
        return number ? platform::formatDouble(*number, pattern) : value.toString();
    }
    return platform::formatDouble(value.toDouble(), pattern);
}

} // namespace texttools
