#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>

#include <functional>

// The first form of its kind that is shown is handed to the function, in its own event loop.
template <class Form> class WhenShown : public QObject
{
public:
    explicit WhenShown(std::function<void(Form&)> act) : m_act(std::move(act)) { qApp->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        auto* form = qobject_cast<Form*>(object);
        if (form == nullptr || event->type() != QEvent::Show || m_done)
            return false;
        m_done = true;
        QTimer::singleShot(0, form, [this, form] { m_act(*form); });
        return false;
    }
    bool done() const { return m_done; }

private:
    std::function<void(Form&)> m_act;
    bool m_done = false;
};
