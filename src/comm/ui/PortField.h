#pragma once

#include "ComSetSession.h"

#include <QComboBox>

// The port of the communication settings: a list that follows what is plugged in, and a name may be typed.
// session is kept by reference; fill first. currentTextChanged tells every change, also one that a look has made.
class PortField : public QComboBox
{
    Q_OBJECT

public:
    explicit PortField(ComSetSession& session, QWidget* parent = nullptr);

    void fill(const PortChoice& choice);
    PortChoice choice() const;

    // Looks what is plugged in now. What was chosen or typed stays, and an open list as it is.
    void look();

private:
    void addChoice(const QString& text, const PortChoice& choice);
    void select(const PortChoice& choice);

    ComSetSession& m_session;
    QVector<platform::ComPort> m_shown;
    PortChoice m_lost; // chosen once, and its adapter has gone; number 0
};
