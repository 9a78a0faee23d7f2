#pragma once

#include "MessagePresenter.h"

#include <QList>
#include <QStringList>

// Answers every message at once with the same code and keeps what was asked.
class RecordingMessages : public MessagePresenter
{
public:
    // Outlives the presenter, which a window may own.
    struct Record
    {
        QStringList texts;
        QList<Message> messages;
        int answer = MessageResult::kYes;
    };

    explicit RecordingMessages(Record& record) : m_record(record) {}

protected:
    int present(const Message& message) override
    {
        m_record.texts << message.prompt;
        m_record.messages << message;
        return m_record.answer;
    }

private:
    Record& m_record;
};
