#pragma once

#include "CommandResult.h"
#include "ControlLink.h"
#include "HeadlessMessages.h"
#include "LoadedModel.h"
#include "TransferEngine.h"

#include <QObject>
#include <memory>

class ProgramContext;

// A command's dealings with one controller: load, open, read, and then a write, which looks before and reads back.
// Stricter than the window: a request that gets no valid reply ends a read, so that either every value is the
// controller's or none is shown. The transfers return when they have ended, dispatching events while they wait.
class ControllerSession : public QObject
{
    Q_OBJECT

public:
    // All kept by reference.
    ControllerSession(ProgramContext& program, const CommandLine& line, ProgressView& progress);
    ~ControllerSession() override;

    // wanted: as for chooseModel; where no model was used before the controller says which it is.
    CommandResult load(const QString& wanted);
    // The read may bring another model, or other options: what the loaded one lacks may be there then.
    bool isModelOpen() const;
    CommandResult open();
    // A model that was given by its code alone, or not at all, is loaded anew where the controller has other options:
    // look items up again behind it.
    CommandResult read();
    // The values that these parameters have now. Done when it came to its end: lastWrite tells what became of each, and
    // the failure what is not in the history.
    CommandResult writeChosen(const QStringList& tags);
    const WriteReport& lastWrite() const { return m_engine->lastWrite(); }

    // Ends a transfer that is under way, and with it the command.
    void interrupt();
    QString statisticsText() const; // of the line, English; empty before it was opened

    clsKX& kx() { return m_model.kx(); }
    QString lineText() const { return m_controlLink.text(); }

private:
    void onAttemptFailed(const QString& entry, int attempt, int maximum, const QString& reason);
    CommandResult readResult() const;
    CommandResult definitionResult() const;
    CommandResult writeResult() const;
    CommandResult nothingWritten() const;
    QString notInHistory() const;
    QString lastLineFault() const;
    QStringList unreadSections() const;
    CommandResult noAnswer() const;
    CommandResult wrongModel() const;
    bool isVariant(const QString& answered) const;

    ProgramContext& m_program;
    ProgressView& m_progress;
    const bool m_withoutBackup;
    ControlLink m_controlLink;
    LoadedModel m_model;
    HeadlessMessages m_messages;
    ControllerState m_controller;
    std::unique_ptr<TransferEngine> m_engine;
    QString m_wanted; // the model, as it was given
    bool m_interrupted = false;
    bool m_wrote = false;  // something was sent that may have changed the controller
    QString m_lostRequest; // the request that was given up, with the reason
    QString m_lostRemedy;
};
