#pragma once

#include <QObject>
#include <QString>

class ControllerState;
class clsKX;
struct FrameFields;

namespace platform {
class Clock;
}

// What the traffic of the controller in use moves, by the names of its parameters. The log is older than the model that
// is shown and may know other controllers: their frames get no names. All parts are kept by reference.
class TrafficNames : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMostNames = 20;

    TrafficNames(const clsKX& kx, const ControllerState& controller, const platform::Clock& clock);

    // stamp: when the frame was logged, "2007/03/05 14:07:09.042".
    QString of(const QString& stamp, const FrameFields& fields) const;

private:
    const clsKX& m_kx;
    const ControllerState& m_controller;
    QString m_loaded; // when the model was
};
