#pragma once

#include "ProgressView.h"

#include <QTextStream>

// Shows progress on one line of a terminal and wipes it at the end. Switched off it shows nothing.
class ConsoleProgress : public ProgressView
{
public:
    ConsoleProgress(QTextStream& terminal, bool shown) : m_terminal(terminal), m_shown(shown) {}

    void open(int maximum, const QString& title, const QString& text, bool disableOwner, bool cancelButton) override;
    void setPosition(int position) override;
    void setText(const QString& text) override;
    void close() override;

private:
    void draw();

    QTextStream& m_terminal;
    bool m_shown;
    int m_maximum = 0;
    int m_position = 0;
    QString m_text;
};
