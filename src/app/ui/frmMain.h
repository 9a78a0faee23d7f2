#pragma once

#include "CellClipboard.h"
#include "CellEditor.h"
#include "ComSetOwner.h"
#include "EditorShell.h"
#include "GridModel.h"
#include "ParameterFiles.h"
#include "SelectionWindows.h"
#include "TransferEngine.h"
#include "clsKX.h"
#include "uclComm.h"

#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <memory>

class HelpKey;
class MainMenus;
class MainStatus;
class MainStatusBar;
class MainToolbar;
class MessagePresenter;
class ProgramContext;
class ProgressDialogView;
class QLabel;
class QStackedWidget;
class frmComSet;
class frmOption;
class frmShowVersion;
class frmTraffic;
struct LastState;

namespace platform {
class ControlRegistry;
class vaSpread;
} // namespace platform

// The main window: owns the grid, the loaded model, the serial link and the transfer engine, wires them and passes the
// user's commands on. The program context is kept and outlives the window.
//
// Constructing it restores the last model's grid; start(), once the window is shown, asks for the communication
// settings where they are needed.
class frmMain : public QMainWindow, public ComSetOwner
{
    Q_OBJECT

public:
    // questions: how the user is asked; null for message boxes.
    explicit frmMain(ProgramContext& program, std::unique_ptr<MessagePresenter> questions = {});
    ~frmMain() override;

    void start();

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
    // Opens the communication settings once the event at hand has ended, unless the program works off-line.
    void doCommCheck();
    void showOption();
    void showVersion();
    void showTraffic();
    // For a process that is asked to end: a running transfer is given up and nobody is asked.
    void closeWithoutQuestion();
    QString helpFile() const; // of the language in use, desktop path

    MainState state() const { return m_controller.state(); }
    int slaveAddress() const override { return m_controller.slaveAddress(); }
    int transmissionMode() const override { return m_controller.transmissionMode(); }
    void showCommSetting();

    uclComm& mainLink() override { return m_uclComm1; }
    int modelNumber() const override { return m_controller.modelNumber(); }
    QString currentModel() const override { return m_controller.model(); }
    void setConfirmed(bool confirmed) override;
    void takeOver(int slaveNo, int mode, int modelPosition, const QString& modelString) override;
    void startRead() override { getDataFromKX(); }

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void setupWindow();
    void setupGrid();
    void setupFiles();
    void connectMenus();
    void connectToolbar();
    void registerControls();
    void initForm(const LastState& last);
    void showGridOrHint();
    void tellWriteDetails();
    void connectGrid();
    void translateControls();
    void showTitle();
    void enableRecent();
    void showRecent();
    void askAndSend();
    void showHelp();
    void afterRead();
    void afterWrite();
    void runCommSetting();
    void onLoadEvent(int code, int number, const QString& text);
    bool mayClose();
    void endQuestions();
    void saveLastSetting();

    ProgramContext& m_program;
    std::unique_ptr<MessagePresenter> m_questions;
    ControllerState m_controller;
    platform::GridModel m_grid;
    clsKX m_clsKX;
    uclComm m_uclComm1;
    std::unique_ptr<ProgressDialogView> m_progress;
    std::unique_ptr<TransferEngine> m_engine;
    std::unique_ptr<EditorShell> m_shell;
    std::unique_ptr<CellEditor> m_editor;
    std::unique_ptr<CellClipboard> m_clipboard;
    std::unique_ptr<ParameterFiles> m_files;
    std::unique_ptr<SelectionWindows> m_selections;
    std::unique_ptr<MainMenus> m_menus;
    std::unique_ptr<HelpKey> m_help;
    std::unique_ptr<platform::ControlRegistry> m_controls;
    std::unique_ptr<frmOption> m_option;
    std::unique_ptr<frmShowVersion> m_version;
    std::unique_ptr<frmTraffic> m_traffic;
    QPointer<frmComSet> m_comSet; // while it is open
    QTimer m_timer1;

    QStackedWidget* m_pages = nullptr;
    platform::vaSpread* m_sprMain = nullptr;
    QLabel* m_hint = nullptr;
    MainToolbar* m_tlbMain = nullptr;
    MainStatusBar* m_stbMain = nullptr;
    MainStatus* m_status = nullptr;

    bool m_wasOffLine = false;     // when the grid was filled
    QString m_caption;             // of the window, without what it shows
    bool m_settingsWanted = false; // the communication settings are to open, or to open once more
    bool m_askBeforeClosing = true;
    bool m_asksToQuit = false;
};
