#include "GridHint.h"

QString gridHint(const QString& modelString, int itemCount, const QString& fault, const QString& screenFile,
                 const TranslateText& tran)
{
    if (modelString.isEmpty())
        return tran(QStringLiteral("No model has been chosen yet: begin with one of these."));
    if (itemCount == 0 && !fault.isEmpty())
        return fault;
    if (itemCount == 0)
        return tran(QStringLiteral("The screen file %1 describes no parameters: put the definition of %2 there and "
                                   "choose the model again."))
            .arg(screenFile, modelString);
    return QString();
}
