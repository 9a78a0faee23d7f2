#include "AccessibleNames.h"

#include <QRegularExpression>
#include <QWidget>

namespace platform {

QString spokenCaption(const QString& caption)
{
    static const QRegularExpression accessKey(QStringLiteral("\\s*\\(&[^&]\\)|&(?=[^&])"));
    QString spoken = caption;
    spoken.remove(accessKey);
    spoken = spoken.trimmed();
    while (spoken.endsWith(u':') || spoken.endsWith(u'\uFF1A'))
        spoken.chop(1);
    return spoken;
}

void nameField(QWidget& field, const QString& caption)
{
    field.setAccessibleName(spokenCaption(caption));
}

} // namespace platform
