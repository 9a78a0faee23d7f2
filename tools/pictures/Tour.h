#pragma once

#include <QPoint>
#include <QString>

#include <functional>

class ProgramContext;
class QAbstractItemModel;
class QWidget;
class frmComSet;
class frmMain;

// Leads the windows of the program through what a person does and takes a picture of each. The main window must have a
// controller at its port that answers soundly (all), refuses now and then (report), can
// be told to change its memory (review: a named pipe, VORLANT_PICTURES_CONTROL) or sends a damaged reply at times
// (traffic).
class Tour
{
public:
    Tour(ProgramContext& program, frmMain& window, const QString& folder);

    void start(); // nothing was ever chosen
    void all();
    void report(); // what a write did not reach
    void review(); // and its neighbours, the history and the backups
    void traffic();

private:
    void read();
    void search(frmComSet& settings);
    void confirm();
    void mainWindow();
    void searchBar();
    void messages();
    void options();
    void selection();
    void version();
    void help();

    void picture(QWidget& window, const char* name);
    QString text(const char* english) const; // in the language in use
    bool isRejected(const QAbstractItemModel& lines, int row) const;
    QPoint cellWithHint(const QString& part) const;
    void enter(const char* tag, const char* text);
    void pokeController(const QByteArray& poke);
    void goToSetValue();

    ProgramContext& m_program;
    frmMain& m_window;
    QString m_folder;
};
