#include "frmMain.h"

#include "GridHint.h"
#include "LastState.h"
#include "LinkStatus.h"
#include "MainStatusBar.h"
#include "MessageBoxPresenter.h"
#include "ModelCatalogue.h"
#include "ProgramContext.h"
#include "ProgressDialogView.h"
#include "ReadStatus.h"
#include "clsINI.h"
#include "vaSpread.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QLayout>
#include <QMenuBar>
#include <QStackedWidget>

#include <algorithm>

namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kMaxSpreadSpaceTwips = 3000;
constexpr double kGridPointSize = 11; // that of the labels in a definition file
constexpr QSize kFirstSize(1000, 700);

// Margin between the window's edges and the grid.
int spreadSpacePixels(clsLibrary& library)
{
    clsINI ini(library.context());
    ini.setIniPath(library.getIniFilePath(QStringLiteral("Main")));
    ini.setIniFileName(library.getIniFileName(QString()));
    const QString text =
        ini.GetIniData(QStringLiteral("Setting"), QStringLiteral("FormToSpreadSpace"), QStringLiteral("100"));
    return std::clamp(library.toLong(text, 100), 0, kMaxSpreadSpaceTwips) / kTwipsPerPixel;
}

} // namespace

frmMain::frmMain(ProgramContext& program, std::unique_ptr<MessagePresenter> questions)
    : m_program(program), m_questions(std::move(questions)), m_clsKX(program.library()),
      m_uclComm1(program.ports(), program.clock()),
      m_progress(std::make_unique<ProgressDialogView>(*this, program.library()))
{
    if (m_questions == nullptr)
        m_questions = std::make_unique<MessageBoxPresenter>(program.library(), this);
    program.context().messages = m_questions.get();
    m_engine = std::make_unique<TransferEngine>(TransferEngine::Parts{
        m_clsKX, m_uclComm1, program.settings(), program.traceLog(), *m_questions, *m_progress, *this});
    connect(m_progress.get(), &ProgressDialogView::cancelled, this, &frmMain::ProgCancel);
    connect(&m_clsKX, &clsKX::LoadEvent, this, &frmMain::onLoadEvent);
    setupWindow();
    const LastState last = LastState::load(program.library());
    initForm(last);
    m_sModel.clear();
    loadKXInfo(last.modelNo, last.modelString);
    showGridOrHint();
    startLink();
}

frmMain::~frmMain()
{
    m_program.context().messages = nullptr;
}

void frmMain::setupWindow()
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(m_program.machine().folders.baseName());
    resize(kFirstSize);
    setupGrid();
    setupMenus();
    m_stbMain = new MainStatusBar(this);
    setStatusBar(m_stbMain);
}

void frmMain::setupGrid()
{
    m_pages = new QStackedWidget(this);
    m_pages->setObjectName(QStringLiteral("pages"));
    m_sprMain = new platform::vaSpread(m_pages);
    m_sprMain->setObjectName(QStringLiteral("sprMain"));
    m_sprMain->setAccessibleName(QStringLiteral("Parameters"));
    m_sprMain->setGrid(&m_grid);
    m_grid.setBaseSize(kGridPointSize);
    m_hint = new QLabel(m_pages);
    m_hint->setObjectName(QStringLiteral("lblHint"));
    m_hint->setAccessibleName(QStringLiteral("What to do"));
    m_hint->setTextFormat(Qt::PlainText);
    m_hint->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_hint->setWordWrap(true);
    m_hint->setAlignment(Qt::AlignCenter);
    m_pages->addWidget(m_sprMain);
    m_pages->addWidget(m_hint);
    setCentralWidget(m_pages);
}

void frmMain::setupMenus()
{
    QAction* quit = addAction(QStringLiteral("mnuFile"), QStringLiteral("&File"), QStringLiteral("mnuFile_2"),
                              QStringLiteral("E&xit"));
    quit->setShortcut(QKeySequence::Quit);
    connect(quit, &QAction::triggered, this, &frmMain::exitApp);
    m_recv =
        addAction(QStringLiteral("mnuKX"), QStringLiteral("&KX"), QStringLiteral("mnuKX_1"), QStringLiteral("&Recv"));
    m_recv->setShortcut(Qt::Key_F5);
    connect(m_recv, &QAction::triggered, this, [this] { getDataFromKX(); });
}

QAction* frmMain::addAction(const QString& menuName, const QString& menuTitle, const QString& name,
                            const QString& title)
{
    QMenu* menu = menuBar()->addMenu(menuTitle);
    menu->setObjectName(menuName);
    QAction* action = menu->addAction(title);
    action->setObjectName(name);
    return action;
}

void frmMain::initForm(const LastState& last)
{
    const int space = spreadSpacePixels(m_program.library());
    m_pages->setContentsMargins(space, space, space, space);
    m_lModelNo = last.modelNo;
    m_lDevNo = last.slaveAddress;
    m_MDBSTMode = last.transmissionMode;
    setModel(last.modelString);
    ModelCatalogue(m_program.library()).ensureBuiltIn();
    m_clsKX.setSpread(&m_grid);
    m_clsKX.Logs(&m_program.errorLog(), &m_program.traceLog());
    m_clsKX.setLib(&m_program.library());
    m_uclComm1.init(1, &m_program.library());
}

// The model and port of the settings count as confirmed when the port could be opened.
void frmMain::startLink()
{
    const bool usable = !m_sModel.isEmpty() && m_uclComm1.State() != 0;
    setState(usable ? MainState::Confirmed : MainState::NoConnection);
    showLinkStatus();
}

void frmMain::setModel(const QString& modelString)
{
    m_sModel = modelString;
    m_stbMain->setModelText(modelString);
}

void frmMain::loadKXInfo(int lModelNo, const QString& sModel)
{
    if (sModel == m_sModel && lModelNo == m_lModelNo)
        return;
    m_program.eventLog().LogWrite(QStringLiteral("loadKXInfo%1-%2").arg(lModelNo).arg(sModel));
    setModel(sModel);
    m_grid.setMaxCols(0);
    m_grid.setMaxRows(0);
    m_lModelNo = lModelNo;
    m_clsKX.setMaxRC(m_lModelNo);
    tranForm();
}

void frmMain::tranForm()
{
    setState(MainState::NoConnection);
    m_clsKX.load(m_lModelNo, &m_program.library(), m_sModel);
    showGridOrHint();
}

void frmMain::getDataFromKX(const std::vector<clsBlock*>* colRefData)
{
    if (m_engine->isBusy())
        return;
    if (m_uclComm1.State() == 0 && !m_program.settings().m_bComm)
        m_uclComm1.openComm();
    showLinkStatus();
    m_engine->getDataFromKX(colRefData);
    m_readAt = m_program.clock().now();
    showLinkStatus();
    showReadStatus();
}

void frmMain::setState(MainState state)
{
    m_eState = state;
    showReadStatus();
}

QString frmMain::modelPanel() const
{
    return m_stbMain->modelText();
}

void frmMain::showCommSetting()
{
    m_questions->showMessage(communicationNotice(m_program.settingsFile()), MessageStyle::kInformation, QString());
}

void frmMain::showLinkStatus()
{
    m_stbMain->setLinkText(
        linkStatusText({m_program.settings().m_bComm, m_uclComm1.State() != 0, m_uclComm1.Port(), m_uclComm1.device(),
                        m_uclComm1.Speed(), m_uclComm1.Chara(), m_MDBSTMode, m_lDevNo, m_uclComm1.errorText()},
                       m_program.library().translation()));
}

void frmMain::showReadStatus()
{
    const ReadStatus status{m_eState, m_engine->isBusy(),  m_program.settings().m_bComm, countUnread(m_clsKX),
                            m_readAt, m_engine->lastRead()};
    const TranslateText tran = m_program.library().translation();
    m_stbMain->setStateText(readStatusText(status, tran), readStatusToolTip(status, tran));
}

void frmMain::showGridOrHint()
{
    const int items = static_cast<int>(m_clsKX.items().size());
    const QString hint = gridHint(modelPanel(), items, m_program.definitionFile(m_clsKX.entry().screenFile),
                                  m_program.library().translation());
    m_hint->setText(hint);
    m_pages->setCurrentWidget(hint.isEmpty() ? static_cast<QWidget*>(m_sprMain) : m_hint);
    m_recv->setEnabled(hint.isEmpty());
}

void frmMain::onLoadEvent(int code, int number, const QString& text)
{
    if (code == 0)
        m_progress->open(number, QStringLiteral("Initialize..."), text, false, false);
    else if (code == 1)
        m_progress->setPosition(number);
    else
        m_progress->close();
}

void frmMain::closeWithoutQuestion()
{
    m_askBeforeClosing = false;
    close();
}

void frmMain::closeEvent(QCloseEvent* event)
{
    if (!mayClose()) {
        event->ignore();
        return;
    }
    m_engine->abort();
    saveLastSetting();
    event->accept();
    Q_EMIT closed();
}

bool frmMain::mayClose()
{
    if (!m_askBeforeClosing || !m_program.settings().m_bViewEndConf)
        return true;
    const int answer = m_questions->showMessage(QStringLiteral("Quit?"), MessageStyle::kYesNoExclamation, QString());
    return answer != MessageResult::kNo;
}

// The model that was selected, even when the last read found another controller: the grid belongs to it.
void frmMain::saveLastSetting()
{
    LastState{m_lModelNo, m_lDevNo, m_MDBSTMode, modelPanel()}.save(m_program.library());
}
