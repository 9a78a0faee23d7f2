#pragma once

#include "SimulatorSession.h"

#include <QObject>

class CommSettings;
class MainMenus;
class StartPage;

// The ways to begin that the start page and the menu offer: a controller, a parameter file, the simulator. All parts
// are kept by reference.
class StartCommands : public QObject
{
    Q_OBJECT

public:
    StartCommands(const SimulatorSession::Parts& parts, CommSettings& settings, const MainMenus& menus,
                  const StartPage& page, QObject* parent = nullptr);

    SimulatorSession& simulator() { return m_simulator; }

private:
    SimulatorSession m_simulator;
};
