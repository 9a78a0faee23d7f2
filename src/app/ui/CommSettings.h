#pragma once

#include "ComSetOwner.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class ControllerState;
class ParameterFiles;
class ProgramContext;
class QWidget;
class TransferEngine;
class clsKX;
class frmComSet;
class uclComm;

// The communication settings over the main window: when they open, and where their result goes. All parts are kept by
// reference. What the user chose arrives as modelChosen, then readWanted when all data is to be read.
class CommSettings : public QObject, public ComSetOwner
{
    Q_OBJECT

public:
    struct Parts
    {
        ProgramContext& program;
        ControllerState& controller;
        uclComm& link;
        TransferEngine& engine;
        clsKX& kx;
        QWidget& window;
        ParameterFiles& files;
    };

    explicit CommSettings(const Parts& parts);

    // Opens them and returns when they have closed; nothing happens during a transfer. While they are open: once more
    // when they have closed.
    void show();
    bool isOpen() const;
    void close();
    // The grid has been filled anew, for the kind of work that the options name now.
    void noteFilled();
    // After the options: opens the settings once the event at hand has ended, unless the program works off-line.
    void doCommCheck();

    uclComm& mainLink() override { return m_parts.link; }
    int slaveAddress() const override;
    int transmissionMode() const override;
    int modelNumber() const override;
    QString currentModel() const override;
    bool mayDiscard() override;
    void setConfirmed(bool confirmed) override;
    void takeOver(int slaveNo, int mode, int modelPosition, const QString& modelString) override;
    void startRead() override { Q_EMIT readWanted(); }

Q_SIGNALS:
    void modelChosen(int modelNumber, const QString& modelString);
    void readWanted();
    void trafficWanted();
    void closed();

private:
    void run();

    Parts m_parts;
    QPointer<frmComSet> m_dialog; // while it is open
    QTimer m_timer1;
    bool m_wasOffLine = false; // when the grid was filled
    bool m_isWanted = false;   // they are to open, or to open once more
};
