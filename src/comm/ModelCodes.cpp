#include "ModelCodes.h"

#include "VisibleText.h"

namespace modelcodes {

bool isOfFamily(const QString& modelString)
{
    return modelString.startsWith(QStringLiteral("KX"));
}

QString memoryText(int address)
{
    return QString::number(address, 16).toUpper();
}

Selection select(const QString& modelString, const QStringList& codes)
{
    if (modelString == kNothing)
        return {Match::NoAnswer, -1};
    if (modelString.size() < kModelStringLength)
        return {};
    const QString wanted = modelString.left(kCodeLength);
    for (int i = 0; i < codes.size(); ++i) {
        if (codes[i].left(kCodeLength) == wanted)
            return {Match::Found, i};
    }
    return {};
}

QString handPicked(const QString& code)
{
    return code + QStringLiteral("00000-10A");
}

QString differenceText(const QString& expected, const QString& found, const TranslateText& tran)
{
    const QString text = tran(QStringLiteral("Model number is different."));
    if (found.trimmed().isEmpty())
        return text;
    return text + u'\n' +
           tran(QStringLiteral("Expected: %1, found: %2"))
               .arg(expected.trimmed(), platform::visibleText(found.trimmed()));
}

} // namespace modelcodes
