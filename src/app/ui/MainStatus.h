#pragma once

#include "LinkWatch.h"

#include <QDateTime>
#include <QObject>

class ControllerState;
class MainStatusBar;
class ProgramContext;
class TransferEngine;
class clsKX;
class uclComm;

namespace platform {
class vaSpread;
}

// Keeps the status bar and the look of the grid at what is true: model, line, state of the data, the current cell, and
// what the last write left. All parts are kept by reference.
class MainStatus : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        ProgramContext& program;
        const ControllerState& controller;
        const TransferEngine& engine;
        const clsKX& kx;
        const uclComm& link;
        platform::vaSpread& grid;
        MainStatusBar& bar;
    };

    explicit MainStatus(const Parts& parts, QObject* parent = nullptr);

    void showAll();
    void showLink();
    void setWatch(LinkWatch::State state);
    void showData(); // how far the values are the controller's
    void showHint(); // about the current cell
    QString writeDetails() const;

private:
    void showWrite();

    Parts m_parts;
    LinkWatch::State m_watch = LinkWatch::State::Quiet;
    QDateTime m_readAt;
    QDateTime m_writtenAt;
};
