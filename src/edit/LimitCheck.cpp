#include "LimitCheck.h"

#include "ItemLimits.h"
#include "clsData.h"
#include "clsKX.h"

LimitCheck LimitCheck::of(const clsData& item, const clsKX& kx, bool given)
{
    const LimitTexts& texts = item.limitTexts();
    return {kx.checkTag(given ? texts.currentLower : item.LimitL()), item.SignL(), item.SignH(),
            kx.checkTag(given ? texts.currentUpper : item.LimitH())};
}

bool LimitCheck::allows(const QString& value) const
{
    return compareNumbers(lower, lowerSign, value) && compareNumbers(value, upperSign, upper);
}

QString LimitCheck::refusal(const clsData& item, const TranslateText& tran) const
{
    const QString title = item.DataName().isEmpty()
                              ? u' ' + tran(QStringLiteral("InputRange")) + u' '
                              : QStringLiteral(" ( ") + tran(item.DataName()) + QStringLiteral(" ) ");
    return tran(QStringLiteral("It is outside the setting range.")) + QStringLiteral("[ ") + text(title) +
           QStringLiteral(" ]");
}
