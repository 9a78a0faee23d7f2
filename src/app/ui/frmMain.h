#pragma once

#include "GridModel.h"
#include "TransferEngine.h"
#include "clsKX.h"
#include "uclComm.h"

#include <QDateTime>
#include <QMainWindow>
#include <memory>

class MainStatusBar;
class ProgramContext;
class ProgressDialogView;
class QAction;
class QLabel;
class QStackedWidget;
struct LastState;

namespace platform {
class vaSpread;
}

// The main window: owns the grid, the loaded model, the serial link and the transfer engine, wires them and passes the
// user's commands on. The program context is kept and outlives the window.
class frmMain : public QMainWindow, public TransferShell
{
    Q_OBJECT

public:
    // questions: how the user is asked; null for message boxes.
    explicit frmMain(ProgramContext& program, std::unique_ptr<MessagePresenter> questions = {});
    ~frmMain() override;

    void setModel(const QString& modelString); // the model string, shown in status bar panel 1
    // Switches the grid to another model; nothing happens when it is the current one.
    void loadKXInfo(int lModelNo, const QString& sModel);
    // Rebuilds the grid for the current model.
    void tranForm();
    void exitApp() { close(); }
    QString getOptStr(int lIndex) const { return m_clsKX.getOptStr(lIndex); }
    void getDataFromKX(const std::vector<clsBlock*>* colRefData = nullptr);
    void ProgCancel(int Index) { m_engine->ProgCancel(Index); }
    // For a process that is asked to end: a running transfer is given up and nobody is asked.
    void closeWithoutQuestion();

    MainState state() const override { return m_eState; }
    void setState(MainState state) override;
    int slaveAddress() const override { return m_lDevNo; }
    int transmissionMode() const override { return m_MDBSTMode; }
    QString modelPanel() const override;
    void setConnectedModel(const QString& modelString) override { m_sModel = modelString; }
    void showCommSetting() override;

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void setupWindow();
    void setupGrid();
    void setupMenus();
    QAction* addAction(const QString& menuName, const QString& menuTitle, const QString& name, const QString& title);
    void initForm(const LastState& last);
    void startLink();
    void showLinkStatus();
    void showReadStatus();
    void showGridOrHint();
    void onLoadEvent(int code, int number, const QString& text);
    bool mayClose();
    void saveLastSetting();

    ProgramContext& m_program;
    std::unique_ptr<MessagePresenter> m_questions;
    platform::GridModel m_grid;
    clsKX m_clsKX;
    uclComm m_uclComm1;
    std::unique_ptr<ProgressDialogView> m_progress;
    std::unique_ptr<TransferEngine> m_engine;

    QStackedWidget* m_pages = nullptr;
    platform::vaSpread* m_sprMain = nullptr;
    QLabel* m_hint = nullptr;
    MainStatusBar* m_stbMain = nullptr;
    QAction* m_recv = nullptr;

    int m_lModelNo = 1;
    QString m_sModel;
    int m_lDevNo = 1;
    int m_MDBSTMode = 0;
    MainState m_eState = MainState::NoConnection;
    QDateTime m_readAt;
    bool m_askBeforeClosing = true;
};
