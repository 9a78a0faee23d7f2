#pragma once

#include "MessagePresenter.h"

#include <QString>

// What a transfer needs from the program around it. The window, the command line and the tests each have their own.

class ProgressView
{
public:
    virtual ~ProgressView() = default;
    virtual void open(int maximum, const QString& title, const QString& text, bool disableOwner, bool cancelButton) = 0;
    virtual void setPosition(int position) = 0;
    virtual void setText(const QString& text) = 0;
    virtual void close() = 0;
};

// State of the window around a transfer.
enum class MainState {
    NoConnection = 0, // no model and port confirmed
    Confirmed = 1,    // confirmed, the grid is not filled from the controller
    UpToDate = 2      // the grid holds the controller's current data
};

class TransferShell
{
public:
    virtual ~TransferShell() = default;
    virtual MainState state() const = 0;
    virtual void setState(MainState state) = 0;
    virtual int slaveAddress() const = 0;     // m_lDevNo
    virtual int transmissionMode() const = 0; // m_MDBSTMode: 0 RTU, 1 ASCII
    virtual QString modelPanel() const = 0;   // the model that the user selected
    // The controller's own model string, as it answered.
    virtual void setConnectedModel(const QString& modelString) = 0;
    virtual void showCommSetting() = 0;
};
