#pragma once

#include "ComPorts.h"
#include "IdleClock.h"
#include "ScreenFixture.h"
#include "TransferEngine.h"
#include "clsLog.h"
#include "uclComm.h"

#include <QList>
#include <QStringList>
#include <functional>
#include <optional>

// The window around the transfers: keeps its state and what it was told.
class RecordingWindow : public MessagePresenter, public ProgressView
{
public:
    int present(const Message& message) override
    {
        messages << message.prompt;
        styles << message.style;
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
    void setText(const QString&) override {}
    void close() override { progressShown = false; }
    int answer = MessageResult::kYes;
    std::function<void(int)> onPosition;
    QStringList messages;
    QList<int> styles;
    QList<int> positions;
    int maximumShown = 0;
    bool progressShown = false;
};

// A model with a trace and a window; the clock runs while the engine waits, when a test says so.
class TransferFixture : public ScreenFixture
{
protected:
    static constexpr auto kModelString = "KX41000000-10A";

    TransferFixture()
    {
        state.setModel(1, QString::fromLatin1(kModelString));
        state.setState(MainState::Confirmed);
        trace.setLogPath(box.machine.folders.program());
        trace.setLogFileName(QStringLiteral("Trc.log"));
    }

    // So that pauses and time-outs end without anybody waiting for them.
    void runClockWhileWaiting() { idle.emplace(box.clock, 7000, 2); }
    void touchClock()
    {
        if (idle)
            idle->touch();
    }

    int traceLines(const char* tag)
    {
        return static_cast<int>(content(box.machine.folders.program() + QStringLiteral("\\Trc.log")).count(tag));
    }

    platform::ComPorts ports{QProcessEnvironment()};
    clsLog trace{box.machine};
    ControllerState state{settings};
    std::optional<IdleClock> idle;
};
