#pragma once

#include "MessagePresenter.h"
#include "ProgressView.h"

#include <QList>
#include <QStringList>

#include <functional>

// What stands around the transfers, in tests and measures: answers every message at once, and keeps the messages and
// how far the progress came.
class RecordingShell : public MessagePresenter, public ProgressView
{
public:
    int present(const Message& message) override
    {
        messages << message.prompt;
        return answer;
    }
    void open(int maximum, const QString&, const QString&, bool disableOwner, bool cancelButton) override
    {
        progressShown = disableOwner && cancelButton;
        maximumShown = maximum;
    }
    void setPosition(int position) override
    {
        positions << position;
        if (onPosition)
            onPosition(position);
    }
    void setText(const QString& text) override { progressText = text; }
    void close() override { progressShown = false; }

    int answer = MessageResult::kYes;
    std::function<void(int)> onPosition;
    QStringList messages;
    QList<int> positions;
    QString progressText;
    int maximumShown = 0;
    bool progressShown = false;
};
