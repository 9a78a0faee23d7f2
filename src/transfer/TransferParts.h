#pragma once

#include "ControllerState.h"
#include "MessagePresenter.h"
#include "ProgressView.h"
#include "RequestChannel.h"
#include "clsKX.h"

class clsCfg;

// What a read and a write share: the objects that they work with and the steps that both take. TransferEngine owns the
// channel; all parts are kept by reference and must outlive the transfer.
struct TransferParts
{
    static const char* const kProgressText;

    clsKX& kx;
    clsCfg& settings;
    MessagePresenter& questions;
    ProgressView& progress;
    ControllerState& controller;
    RequestChannel& channel;

    QString tran(const char* english) const;
    void notify(const QString& text, int style) const { questions.showMessage(text, style); }
    // Asks when the user wants to be asked; whether the transfer goes on.
    [[nodiscard]] bool confirmed(bool isAsked, const char* question) const;
    void notifyWrongModel(const QString& found) const;  // the model string that was found in its place
    void notifyNoResponse(const QString& reason) const; // reason: of the last request, in the user's language

    // Sets the channel up for the controller and shows the progress; steps: images to walk through, 0 and up.
    void begin(int steps) const;

    // An entry of a command list as reports name it.
    static QString entryName(const clsKXAdr& image, const QString& command, const QString& address);
};
