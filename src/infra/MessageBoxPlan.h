#pragma once

#include "MessagePresenter.h"

#include <QString>
#include <QVector>

// The pictures of a message; each has its place in a style.
enum class MessageIcon { None, Stop, Question, Exclamation, Information };

// A button of a message and what it answers.
struct MessageButton
{
    QString caption; // English
    int result;
};

// What a style asks for: icon, buttons from left to right, which of them is the default and which one Escape means.
class MessageBoxPlan
{
public:
    explicit MessageBoxPlan(int style = MessageStyle::kOkOnly, const QString& extra = {});

    MessageIcon icon() const { return m_icon; }
    const QVector<MessageButton>& buttons() const { return m_buttons; }
    bool offers(int result) const { return indexOf(result) >= 0; }

    // The first button where the style names one that its set does not have.
    int defaultIndex() const { return m_defaultIndex; }
    int defaultResult() const { return m_buttons[m_defaultIndex].result; }

    // The button that changes least: Cancel, else No, else the first.
    int escapeIndex() const;
    int escapeResult() const { return m_buttons[escapeIndex()].result; }

    // A prompt as it is shown: its "vbCrLf" as line breaks, the rest visible.
    static QString shownText(const QString& prompt);

private:
    int indexOf(int result) const;

    MessageIcon m_icon = MessageIcon::None;
    QVector<MessageButton> m_buttons;
    int m_defaultIndex = 0;
};
