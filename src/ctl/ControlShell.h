#pragma once

#include "TransferPorts.h"

#include <QString>

// The surroundings of a transfer without a window. The command given is the consent, so questions are answered yes; a
// notice is kept for the one line that the command ends with.
class ControlShell : public TransferShell, public MessagePresenter
{
public:
    ControlShell(const QString& modelString, int slaveAddress, int transmissionMode)
        : m_modelString(modelString), m_slaveAddress(slaveAddress), m_transmissionMode(transmissionMode)
    {}

    MainState state() const override { return m_state; }
    void setState(MainState state) override { m_state = state; }
    int slaveAddress() const override { return m_slaveAddress; }
    int transmissionMode() const override { return m_transmissionMode; }
    QString modelPanel() const override { return m_modelString; }
    void setConnectedModel(const QString&) override {}
    void showCommSetting() override {}

    int showMessage(const QString& text, int style, const QString& title) override;
    QString lastNotice() const { return m_lastNotice; }

private:
    QString m_modelString;
    int m_slaveAddress;
    int m_transmissionMode;
    MainState m_state = MainState::Confirmed;
    QString m_lastNotice;
};
