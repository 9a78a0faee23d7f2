#include "GridHint.h"

QString gridHint(const QString& modelString, int itemCount, const QString& screenFile, const QString& settingsFile)
{
    if (modelString.isEmpty())
        return QStringLiteral("No model has been chosen yet: set LastModelNo and LastModelString (such as 1 and "
                              "KX41000000-10A) in section [Setting] of %1 and start again.")
            .arg(settingsFile);
    if (itemCount == 0)
        return QStringLiteral("The screen file %1 describes no parameters: put the definition of %2 there and start "
                              "again.")
            .arg(screenFile, modelString);
    return QString();
}
