#pragma once

#include "MessagePresenter.h"

#include <QString>

// Messages where nobody is asked: the command given is the consent, so a question is answered yes; anything else is
// answered by the button that changes least. The last notice is kept for the one line that the command ends with.
class HeadlessMessages : public MessagePresenter
{
public:
    QString lastNotice() const { return m_lastNotice; }
    void forget() { m_lastNotice.clear(); } // what it was about is settled

protected:
    int present(const Message& message) override;

private:
    QString m_lastNotice;
};
