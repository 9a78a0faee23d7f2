#pragma once

#include "Log.h"
#include "MessagePresenter.h"

#include <functional>

// The presenter where there is nobody to be asked: each message is a line of the error log and counts as answered by
// its default button.
class UnansweredMessages final : public MessagePresenter
{
public:
    // errorLog: the one that it stands for at the moment of each message.
    explicit UnansweredMessages(const std::reference_wrapper<Log>& errorLog) : m_errorLog(errorLog) {}

protected:
    int present(const Message& message) override;

private:
    const std::reference_wrapper<Log>& m_errorLog;
};
