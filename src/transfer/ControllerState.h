#pragma once

#include <QObject>
#include <QString>

class clsCfg;

// How far the program has come with its controller.
enum class MainState {
    NoConnection = 0, // no model and port confirmed
    Confirmed = 1,    // confirmed, the grid is not filled from the controller
    UpToDate = 2      // the grid holds the controller's current data
};

// The controller that the program works with: which one the user chose, how it is reached, and how far its data are
// here. Transfers, windows and the command line share it. The settings are kept by reference.
class ControllerState : public QObject
{
    Q_OBJECT

public:
    explicit ControllerState(const clsCfg& settings, QObject* parent = nullptr);

    int modelNumber() const { return m_lModelNo; } // in the catalogue, from 1
    QString model() const { return m_sModel; }     // model string that the user chose; empty before the first use
    void setModel(int number, const QString& modelString);

    int slaveAddress() const { return m_lDevNo; }
    int transmissionMode() const { return m_MDBSTMode; } // 0 RTU, 1 ASCII
    void setLine(int slaveAddress, int transmissionMode);

    MainState state() const; // off-line the grid always holds what there is
    void setState(MainState state);

Q_SIGNALS:
    void changed();

private:
    const clsCfg& m_settings;
    int m_lModelNo = 1;
    QString m_sModel;
    int m_lDevNo = 1;
    int m_MDBSTMode = 0;
    MainState m_eState = MainState::NoConnection;
};
