#pragma once

#include "CellClipboard.h"
#include "CellEditor.h"
#include "ClosingQuestion.h"
#include "CommSettings.h"
#include "EditorShell.h"
#include "LinkWatch.h"
#include "MainDialogs.h"
#include "MainGrid.h"
#include "MainReview.h"
#include "ParameterFiles.h"
#include "SelectionWindows.h"
#include "TrafficNames.h"
#include "TransferEngine.h"
#include "clsKX.h"
#include "uclComm.h"

#include <QMainWindow>
#include <memory>

class GridCommands;
class MainHelp;
class MainFiles;
class MainMenus;
class MainStatus;
class MainStatusBar;
class MainToolbar;
class MessagePresenter;
class ProgramContext;
class ProgressDialogView;
class StartCommands;
struct LastState;

namespace platform {
class ControlRegistry;
}

// The main window: owns the grid, the loaded model, the serial link and the transfer engine, wires them and passes the
// user's commands on. The program context is kept and outlives the window.
//
// Constructing it restores the last model's grid; start(), once the window is shown, opens a file or asks for the
// communication settings where they are needed.
class frmMain : public QMainWindow
{
    Q_OBJECT

public:
    // questions: how the user is asked; null for message boxes.
    explicit frmMain(ProgramContext& program, std::unique_ptr<MessagePresenter> questions = {});
    ~frmMain() override;

    void start(const QString& file = {}); // machine path; empty: none
    // A file from outside, as soon as no transfer runs and no other window is asked.
    void openGiven(const QString& file);

    // Switches the grid to another model; nothing happens when it is the current one.
    void loadKXInfo(int lModelNo, const QString& sModel);
    // The window in the language in use; rebuilds the grid for the current model.
    void tranForm();
    void exitApp() { close(); }
    QString getOptStr(int lIndex) const { return m_editor->getOptStr(lIndex); }
    int getDataTempMax() const { return m_editor->getDataTempMax(); }
    QString getDataTag(int lIndex) const { return m_editor->getDataTag(lIndex); }
    QString getDataByTag(const QString& sTag) const { return m_editor->getDataByTag(sTag); }
    void setVData(const QString& sTag, const QString& VData, bool bCheck) { m_editor->setVData(sTag, VData, bCheck); }
    void setData(const QString& sTag, const QString& sData, bool bCheck) { m_editor->setData(sTag, sData, bCheck); }
    void refreshSpread() { m_editor->refreshSpread(); }
    void getDataFromKX(const std::vector<clsBlock*>* colRefData = nullptr);
    void setDataToKXAll();
    void ProgCancel(int Index) { m_engine->ProgCancel(Index); }
    void openDataFile() { m_files->openDataFile(state()); }
    void saveDataFile() { m_files->saveDataFile(); }
    void setFileChooser(const FileChooser& chooser) { m_files->setChooser(chooser); }
    void doCommCheck() { m_comm->doCommCheck(); }
    void showCommSetting() { m_comm->show(); }
    CommSettings& commSettings() { return *m_comm; }
    StartCommands& startCommands() { return *m_start; }
    void showOption() { m_dialogs->showOption(); }
    void showVersion() { m_dialogs->showVersion(); }
    void showTraffic() { m_dialogs->showTraffic(); }
    void showHistory() { m_dialogs->showHistory(); }
    void showBackups() { m_dialogs->showBackups(); }
    void showReview() { m_review->show(); }
    // For a process that is asked to end: a running transfer is given up and nobody is asked.
    void closeWithoutQuestion() { m_closing->closeUnasked(*this); }

    MainState state() const { return m_controller.state(); }
    const clsKX& model() const { return m_clsKX; }
    uclComm& mainLink() { return m_uclComm1; }

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void setupParts();
    void setupWindow();
    void setupFiles();
    void connectParts();
    void connectWatch();
    void connectMenus();
    void connectEditor();
    void registerControls();
    void initForm(const LastState& last);
    void showGridOrHint();
    void translateControls();
    void askAndSend();
    void showWriteDetails();
    void afterRead();
    void afterWrite();
    void onLoadEvent(int code, int number, const QString& text);

    ProgramContext& m_program;
    std::unique_ptr<MessagePresenter> m_questions;
    ControllerState m_controller;
    clsKX m_clsKX;
    uclComm m_uclComm1;
    std::unique_ptr<ProgressDialogView> m_progress;
    std::unique_ptr<TransferEngine> m_engine;
    std::unique_ptr<EditorShell> m_shell;
    std::unique_ptr<CellEditor> m_editor;
    std::unique_ptr<CellClipboard> m_clipboard;
    std::unique_ptr<ParameterFiles> m_files;
    std::unique_ptr<SelectionWindows> m_selections;
    std::unique_ptr<CommSettings> m_comm;
    std::unique_ptr<TrafficNames> m_trafficNames;
    std::unique_ptr<MainDialogs> m_dialogs;
    std::unique_ptr<MainReview> m_review;
    std::unique_ptr<LinkWatch> m_watch;
    std::unique_ptr<ClosingQuestion> m_closing;
    std::unique_ptr<MainMenus> m_menus;
    std::unique_ptr<MainHelp> m_help;
    std::unique_ptr<platform::ControlRegistry> m_controls;

    MainGrid* m_pages = nullptr;
    GridCommands* m_gridCommands = nullptr;
    MainToolbar* m_tlbMain = nullptr;
    MainStatusBar* m_stbMain = nullptr;
    MainStatus* m_status = nullptr;
    MainFiles* m_mainFiles = nullptr;
    StartCommands* m_start = nullptr;
};
