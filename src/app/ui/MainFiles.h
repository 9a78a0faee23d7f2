#pragma once

#include <QObject>
#include <QString>

class ControllerState;
class MainMenus;
class ParameterFiles;
class QDropEvent;
class QMainWindow;
class TransferEngine;
class clsLibrary;

// The parameter files of the main window: the commands of its menu, its title, and the files that come from outside,
// which wait until no transfer runs and no other window is asked. All parts are kept by reference.
class MainFiles : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        clsLibrary& library;
        ParameterFiles& files;
        const ControllerState& controller;
        const TransferEngine& engine;
        MainMenus& menus;
        QMainWindow& window;
    };

    explicit MainFiles(const Parts& parts, QObject* parent = nullptr);

    // Opens the file as soon as the window is free; of several that wait the last. Machine path.
    void openGiven(const QString& file);
    void translate(const QString& caption); // after the menus; of the window, without what it shows
    void showTitle();
    // Nothing can be opened or saved without a grid.
    void enable(bool hasGrid);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isFree() const;
    void openWaiting();
    void openDropped(QDropEvent& event);
    void showFile();
    void enableRecent();
    void showRecent();

    Parts m_parts;
    QString m_caption;
    QString m_saveCaption; // of the command that saves without a question, while there is no file
    QString m_waiting;     // file from outside
};
