#include "ControllerState.h"

#include "clsCfg.h"

ControllerState::ControllerState(const clsCfg& settings, QObject* parent) : QObject(parent), m_settings(settings) {}

void ControllerState::setModel(int number, const QString& modelString)
{
    m_lModelNo = number;
    m_sModel = modelString;
    Q_EMIT changed();
}

void ControllerState::setLine(int slaveAddress, int transmissionMode)
{
    m_lDevNo = slaveAddress;
    m_MDBSTMode = transmissionMode;
    Q_EMIT changed();
}

MainState ControllerState::state() const
{
    return m_settings.m_bComm ? MainState::UpToDate : m_eState;
}

void ControllerState::setState(MainState state)
{
    m_eState = state;
    Q_EMIT changed();
}
