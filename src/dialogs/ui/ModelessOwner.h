#pragma once

#include <QPointer>
#include <QWidget>

// The window that a dialog was opened over: kept disabled while the dialog is open, if it is asked to, and enabled
// again by release or when this object goes. The window may go first.
class ModelessOwner
{
public:
    ModelessOwner() = default;
    ~ModelessOwner();
    ModelessOwner(const ModelessOwner&) = delete;
    ModelessOwner& operator=(const ModelessOwner&) = delete;

    // Makes dialog a window of the owner. owner may be null.
    void attach(QWidget& dialog, QWidget* owner, bool disable);
    void release();

private:
    QPointer<QWidget> m_owner;
    bool m_disabled = false;
};
