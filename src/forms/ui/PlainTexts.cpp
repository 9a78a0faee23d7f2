#include "PlainTexts.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPointer>

namespace platform {

namespace {

void setPlain(QLabel& label)
{
    if (label.textFormat() == Qt::AutoText)
        label.setTextFormat(Qt::PlainText);
}

class LabelFilter : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Polish)
            return false;
        if (auto* label = qobject_cast<QLabel*>(watched))
            setPlain(*label);
        return false;
    }
};

} // namespace

void showTextsPlain()
{
    static QPointer<LabelFilter> filter;
    if (filter)
        return;
    filter = new LabelFilter(qApp);
    qApp->installEventFilter(filter);
}

void showTextsPlain(QWidget& widget)
{
    showTextsPlain();
    if (auto* label = qobject_cast<QLabel*>(&widget))
        setPlain(*label);
    const auto labels = widget.findChildren<QLabel*>();
    for (QLabel* label : labels)
        setPlain(*label);
}

} // namespace platform
