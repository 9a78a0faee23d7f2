#pragma once

#include "TransferPorts.h"

class QWidget;

// Questions and notices in message boxes over the window given (kept, not owned).
class MessageBoxQuestions : public MessagePresenter
{
public:
    explicit MessageBoxQuestions(QWidget* owner) : m_owner(owner) {}

    int showMessage(const QString& text, int style, const QString& title) override;

private:
    QWidget* m_owner;
};
