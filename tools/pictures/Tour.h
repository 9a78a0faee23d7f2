#pragma once

#include <QPoint>
#include <QString>

#include <functional>

class ProgramContext;
class QWidget;
class frmMain;

// Leads the windows of the program through what a person does and takes a picture of each. The main window must have a
// controller at its port that answers soundly (all) or fails now and then (report).
class Tour
{
public:
    Tour(ProgramContext& program, frmMain& window, const QString& folder);

    void all();
    void report(); // what a write did not reach

private:
    void read();
    void mainWindow();
    void messages();
    void options();
    void selection();
    void version();
    void traffic();
    void help();

    void picture(QWidget& window, const char* name);
    QString text(const char* english) const; // in the language in use
    QPoint cellWithHint(const QString& part) const;
    void goToSetValue();

    ProgramContext& m_program;
    frmMain& m_window;
    QString m_folder;
};
