#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>

#include <functional>

// Each form of its kind that is shown is handed to the function, in its own event loop.
template <class Form> class WhenShown : public QObject
{
public:
    explicit WhenShown(std::function<void(Form&)> act) : m_act(std::move(act)) { qApp->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        auto* form = qobject_cast<Form*>(object);
        if (form == nullptr || event->type() != QEvent::Show)
            return false;
        ++m_count;
        QTimer::singleShot(0, form, [this, form] { m_act(*form); });
        return false;
    }
    int count() const { return m_count; }

private:
    std::function<void(Form&)> m_act;
    int m_count = 0;
};
