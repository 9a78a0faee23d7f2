#pragma once

#include <QObject>

class MainMenus;
class MessagePresenter;
class ProgramContext;
class QStatusBar;

// Commands of the menus for when something is wrong: the diagnostics on the clipboard, and the settings with their
// defaults. All parts are kept by reference.
class SupportCommands : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        ProgramContext& program;
        MessagePresenter& questions;
        const MainMenus& menus;
        QStatusBar& statusBar;
    };

    explicit SupportCommands(const Parts& parts, QObject* parent = nullptr);

private:
    void copyDiagnostics();
    void resetSettings();

    Parts m_parts;
};
