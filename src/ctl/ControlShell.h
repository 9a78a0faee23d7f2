#pragma once

#include "TransferPorts.h"

#include <QString>

// The surroundings of a transfer without a window.
class ControlShell : public TransferShell
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

private:
    QString m_modelString;
    int m_slaveAddress;
    int m_transmissionMode;
    MainState m_state = MainState::Confirmed;
};
