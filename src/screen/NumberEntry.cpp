#include "NumberEntry.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr char16_t kWideOffset = 0xFF01 - u'!'; // of the full-width forms of ASCII
constexpr char16_t kMinusSign = 0x2212;
constexpr char16_t kLongVowelMark = 0x30FC; // what a Japanese keyboard gives for the minus key

QChar narrowed(QChar c)
{
    if (c == kMinusSign || c == kLongVowelMark)
        return u'-';
    const QChar narrow(static_cast<char16_t>(c.unicode() - kWideOffset));
    const bool isWide = c.unicode() >= kWideOffset + u'+' && c.unicode() <= kWideOffset + u'9' && narrow != u'/';
    return isWide ? narrow : c;
}

} // namespace

QString plainNumber(const QString& entered)
{
    static const QRegularExpression grouped(QStringLiteral("^[+-]?[1-9][0-9]{0,2}(,[0-9]{3})+(\\.[0-9]*)?$"));
    static const QRegularExpression oneGroup(QStringLiteral("^[+-]?[1-9][0-9]{0,2},[0-9]{3}([eE].*)?$"));
    static const QRegularExpression oneComma(QStringLiteral("^[+-]?[0-9]*,[0-9]*([eE][+-]?[0-9]+)?$"));
    QString number = entered.trimmed();
    std::transform(number.cbegin(), number.cend(), number.begin(), narrowed);
    if (oneGroup.match(number).hasMatch())
        return number;
    if (grouped.match(number).hasMatch())
        return number.remove(u',');
    return oneComma.match(number).hasMatch() ? number.replace(u',', u'.') : number;
}

bool isUnclearNumber(const QString& number)
{
    return number.contains(u',');
}
