#include "AccessibleNames.h"

#include <QRegularExpression>
#include <QWidget>

namespace platform {

namespace {

constexpr const char* kNameKey = "nameKey";

} // namespace

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

void nameWidget(QWidget& widget, const QString& english)
{
    widget.setProperty(kNameKey, english);
    widget.setAccessibleName(english);
}

void translateNames(QWidget& window, const std::function<QString(const QString&)>& tran)
{
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const QString english = widget->property(kNameKey).toString();
        if (!english.isEmpty())
            widget->setAccessibleName(tran(english));
    }
}

} // namespace platform
