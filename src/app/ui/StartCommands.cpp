#include "StartCommands.h"

#include "CommSettings.h"
#include "ControllerState.h"
#include "MainMenus.h"
#include "ParameterFiles.h"
#include "StartPage.h"

#include <QAction>

StartCommands::StartCommands(const SimulatorSession::Parts& parts, CommSettings& settings, const MainMenus& menus,
                             const StartPage& page, QObject* parent)
    : QObject(parent), m_simulator(parts)
{
    SimulatorSession* simulator = &m_simulator;
    connect(&settings, &CommSettings::modelChosen, simulator, &SimulatorSession::leave);
    connect(&settings, &CommSettings::closed, simulator, &SimulatorSession::settle);
    connect(menus.simulator, &QAction::triggered, simulator, &SimulatorSession::start);
    connect(&page, &StartPage::simulatorWanted, simulator, &SimulatorSession::start);
    connect(&page, &StartPage::connectWanted, &settings, &CommSettings::show);
    connect(&page, &StartPage::fileWanted, this,
            [&files = parts.files, &controller = parts.controller] { files.openAny(controller.state()); });
}
