#include "frmMain.h"

#include "AccessibleNames.h"
#include "ControlRegistry.h"
#include "DefinitionFault.h"
#include "DesktopTexts.h"
#include "FileChooser.h"
#include "GridCommands.h"
#include "GridHint.h"
#include "GridMenu.h"
#include "HelpWindow.h"
#include "InterruptedWrites.h"
#include "LastState.h"
#include "MainFiles.h"
#include "MainHelp.h"
#include "MainMenus.h"
#include "MainStatus.h"
#include "MainStatusBar.h"
#include "MainToolbar.h"
#include "MessageBoxPresenter.h"
#include "ModelCatalogue.h"
#include "ProgramContext.h"
#include "ProgressDialogView.h"
#include "RegisteredGrid.h"
#include "StartCommands.h"
#include "StartPage.h"
#include "SupportCommands.h"
#include "WidgetPlacement.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>

namespace {

constexpr QSize kDesignedSize(1280, 860);
const QString kFormName = QStringLiteral("frmMain");

} // namespace

frmMain::frmMain(ProgramContext& program, std::unique_ptr<MessagePresenter> questions)
    : m_program(program), m_questions(std::move(questions)), m_controller(program.settings()),
      m_clsKX(program.library()), m_uclComm1(program.ports(), program.clock()),
      m_progress(std::make_unique<ProgressDialogView>(*this, program.library()))
{
    if (m_questions == nullptr)
        m_questions = std::make_unique<MessageBoxPresenter>(program.library(), this);
    program.context().messages = *m_questions;
    setupParts();
    setupFiles();
    setupWindow();
    connectParts();
    connectWatch();
    connectMenus();
    connectEditor();
    registerControls();
    program.library().makeLangList();
    platform::WidgetPlacement placement(*this, kFormName);
    program.library().loadFormSize(placement);
    program.loadLanguageFile();
    const LastState last = LastState::load(program.library());
    initForm(last);
    loadKXInfo(last.modelNo, last.modelString);
    if (last.modelString.isEmpty())
        translateControls();
    showGridOrHint();
    m_status->showAll();
}

frmMain::~frmMain()
{
    m_program.context().messages = m_program.context().nobody;
}

void frmMain::start(const QString& file)
{
    const FolderNotices& notices = m_program.folderNotices();
    for (const FolderNotice& notice : notices)
        m_questions->showMessage(notice.in(m_program.library().tranStr(notice.text)), MessageStyle::kExclamation);
    tellInterruptedWrites(m_program, *m_questions);
    if (!file.isEmpty())
        openGiven(file);
    else if (!m_program.settings().m_bComm || m_controller.model().isEmpty())
        QMetaObject::invokeMethod(m_comm.get(), &CommSettings::show, Qt::QueuedConnection);
}

void frmMain::setupParts()
{
    m_engine = std::make_unique<TransferEngine>(TransferEngine::Parts{
        m_clsKX, m_uclComm1, m_program.settings(), m_program.traceLog(), *m_questions, *m_progress, m_controller});
    // The window of selections is modeless in its looks; what it sets belongs to the action that opened it, which goes
    // on when it has closed.
    m_shell = std::make_unique<EditorShell>(*m_engine, m_controller, [this](clsData& item, const QString& section) {
        m_selections->choose(SelectedItem::of(item), section, this);
    });
    m_editor = std::make_unique<CellEditor>(m_clsKX, *m_questions, *m_shell);
    m_selections = std::make_unique<SelectionWindows>(m_program.library(), *m_editor);
    m_selections->Logs(m_program.errorLog(), m_program.traceLog());
    m_clipboard = std::make_unique<CellClipboard>(*m_editor);
    m_trafficNames = std::make_unique<TrafficNames>(m_clsKX, m_controller, m_program.machine().clock);
    m_dialogs = std::make_unique<MainDialogs>(MainDialogs::Parts{
        m_program, *this, m_clsKX, [this] { return m_uclComm1.device(); }, m_engine->statistics(),
        [this](const QString& stamp, const FrameFields& fields) { return m_trafficNames->of(stamp, fields); },
        [this] { return m_files->mayDiscard(); },
        [this](const ParameterSet& set) { m_files->loadAsChanges(set, *m_editor, state()); }});
}

void frmMain::setupWindow()
{
    setObjectName(kFormName);
    setWindowTitle(m_program.machine().folders.baseName());
    resize(kDesignedSize.boundedTo(platform::roomFor(*this)));
    m_pages = new MainGrid(this);
    setCentralWidget(m_pages);
    m_menus = std::make_unique<MainMenus>(*menuBar());
    m_tlbMain = new MainToolbar(*m_menus, this);
    addToolBar(m_tlbMain);
    m_stbMain = new MainStatusBar(this);
    setStatusBar(m_stbMain);
    m_status =
        new MainStatus({m_program, m_controller, *m_engine, m_clsKX, m_uclComm1, m_pages->sheet(), *m_stbMain}, this);
    m_help = std::make_unique<MainHelp>(m_program, m_clsKX, m_pages->sheet());
    m_mainFiles = new MainFiles({m_program.library(), *m_files, m_controller, *m_engine, *m_menus, *this}, this);
    new SupportCommands({m_program, *m_questions, *m_menus, *m_stbMain}, this); // the window owns it
}

void frmMain::setupFiles()
{
    m_files = std::make_unique<ParameterFiles>(m_clsKX, m_program, *m_questions);
    m_closing = std::make_unique<ClosingQuestion>(m_program, *m_questions, *m_files, *m_engine);
    m_comm = std::make_unique<CommSettings>(
        CommSettings::Parts{m_program, m_controller, m_uclComm1, *m_engine, m_clsKX, *this, *m_files});
    m_files->setChooser([this](const FileQuestion& question) { return chooseFile(this, question); });
    m_files->setFinishEntry([this] { return m_pages->sheet().finishEntry(); });
    m_files->setReview([this] { m_review->show(); });
    connect(m_files.get(), &ParameterFiles::loaded, m_editor.get(), &CellEditor::clear);
    connect(m_files.get(), &ParameterFiles::modelWanted, this, &frmMain::loadKXInfo);
    connect(m_files.get(), &ParameterFiles::fileChanged, this, [this] { m_status->showData(); });
}

void frmMain::connectParts()
{
    m_review = std::make_unique<MainReview>(
        MainReview::Parts{m_program, m_controller, *m_engine, m_clsKX, *m_editor, m_pages->sheet(), *m_progress});
    connect(m_files.get(), &ParameterFiles::loaded, m_review.get(), &MainReview::refresh);
    connect(m_progress.get(), &ProgressDialogView::cancelled, this, &frmMain::ProgCancel);
    connect(m_engine.get(), &TransferEngine::readEnded, this, &frmMain::afterRead);
    connect(m_engine.get(), &TransferEngine::written, this, &frmMain::afterWrite);
    connect(m_engine.get(), &TransferEngine::settingsWanted, m_comm.get(), &CommSettings::show);
    connect(&m_clsKX, &clsKX::LoadEvent, this, &frmMain::onLoadEvent);
    connect(m_comm.get(), &CommSettings::modelChosen, this, &frmMain::loadKXInfo);
    connect(m_comm.get(), &CommSettings::readWanted, this, [this] { m_engine->getDataFromKX(nullptr); });
    connect(m_comm.get(), &CommSettings::trafficWanted, this, &frmMain::showTraffic);
    connect(m_comm.get(), &CommSettings::closed, m_status, &MainStatus::showLink);
    connect(m_engine.get(), &TransferEngine::activityChanged, this, [this] { m_dialogs->setBusy(m_engine->isBusy()); });
    connect(m_dialogs.get(), &MainDialogs::designChanged, this, &frmMain::tranForm);
    connect(m_dialogs.get(), &MainDialogs::optionsStored, m_comm.get(), &CommSettings::doCommCheck);
    connect(m_dialogs.get(), &MainDialogs::optionsStored, this, [this] {
        for (QAction* action : {m_menus->send, m_tlbMain->send()})
            action->setToolTip({}); // the language has one, or the caption is shown
        translateControls();
        showGridOrHint();
        m_status->showLink();
        m_review->refresh();
    });
    connect(m_review.get(), &MainReview::changed, this, [this] {
        m_stbMain->setChangesText(m_review->changesText());
        m_dialogs->refresh();
    });
    connect(m_stbMain, &MainStatusBar::changesClicked, this, &frmMain::showReview);
    connect(m_stbMain, &MainStatusBar::writeClicked, this, &frmMain::showWriteDetails);
}

// A port that comes back is opened again, while nobody else is at it.
void frmMain::connectWatch()
{
    const auto isLineFree = [this] { return !m_engine->isBusy() && !m_engine->isClosing() && !m_comm->isOpen(); };
    m_watch = std::make_unique<LinkWatch>(m_uclComm1, m_program.clock(),
                                          [this, isLineFree] { return isLineFree() && !m_program.settings().m_bComm; });
    m_start = new StartCommands({m_program, m_controller, m_uclComm1, *m_engine, *m_files, *m_questions, isLineFree},
                                *m_comm, *m_menus, m_pages->startPage(), this);
    connect(&m_start->simulator(), &SimulatorSession::modelChosen, this, &frmMain::loadKXInfo);
    connect(&m_start->simulator(), &SimulatorSession::ended, m_watch.get(), &LinkWatch::forget);
    connect(m_watch.get(), &LinkWatch::changed, this, [this] { m_status->setWatch(m_watch->state()); });
    connect(m_engine.get(), &TransferEngine::activityChanged, m_watch.get(), &LinkWatch::forget);
    connect(m_comm.get(), &CommSettings::closed, m_watch.get(), &LinkWatch::forget);
}

void frmMain::connectMenus()
{
    connect(m_menus->send, &QAction::triggered, this, &frmMain::setDataToKXAll);
    connect(m_tlbMain->send(), &QAction::triggered, this, &frmMain::askAndSend);
    connect(m_menus->exit, &QAction::triggered, this, &frmMain::exitApp);
    connect(m_menus->comm, &QAction::triggered, this, &frmMain::showCommSetting);
    connect(m_menus->recv, &QAction::triggered, this, [this] { getDataFromKX(); });
    connect(m_menus->review, &QAction::triggered, this, &frmMain::showReview);
    connect(m_menus->history, &QAction::triggered, m_dialogs.get(), &MainDialogs::showHistory);
    connect(m_menus->backups, &QAction::triggered, m_dialogs.get(), &MainDialogs::showBackups);
    connect(m_menus->traffic, &QAction::triggered, this, &frmMain::showTraffic);
    connect(m_menus->option, &QAction::triggered, this, &frmMain::showOption);
    connect(m_menus->version, &QAction::triggered, this, &frmMain::showVersion);
    connect(m_menus->help, &QAction::triggered, this, [this] { m_help->show(); });
}

void frmMain::connectEditor()
{
    const CellEditor* editor = m_editor.get();
    m_pages->connectTo(*m_editor, *m_clipboard);
    m_gridCommands = new GridCommands({*m_menus, *m_pages, m_clsKX, *m_editor}, this);
    new GridMenu(m_pages->sheet(), *m_editor, m_program.library()); // the sheet owns it
    connect(editor, &CellEditor::edited, m_status, &MainStatus::showHint);
    connect(editor, &CellEditor::edited, m_mainFiles, &MainFiles::showTitle);
    connect(editor, &CellEditor::edited, m_status, &MainStatus::showData);
}

void frmMain::registerControls()
{
    m_controls = std::make_unique<platform::ControlRegistry>(*this, kFormName);
    m_controls->add(m_tlbMain, m_tlbMain->numbered(), m_tlbMain->objectName());
    m_menus->registerAt(*m_controls);
    m_pages->startPage().registerAt(*m_controls);
    m_controls->add(
        std::make_unique<platform::RegisteredGrid>(m_pages->sheet(), m_pages->sheet().objectName(), std::nullopt));
    m_controls->add(static_cast<QStatusBar*>(m_stbMain), m_stbMain->objectName());
}

void frmMain::initForm(const LastState& last)
{
    m_pages->applySettings(m_program.library());
    m_controller.setModel(last.modelNo, last.modelString);
    m_controller.setLine(last.slaveAddress, last.transmissionMode);
    ModelCatalogue(m_program.library()).ensureBuiltIn();
    m_clsKX.setSpread(&m_pages->cells());
    m_clsKX.Logs(m_program.errorLog(), m_program.traceLog());
    m_clsKX.setLib(&m_program.library());
    m_uclComm1.init(1, &m_program.library());
}

void frmMain::loadKXInfo(int lModelNo, const QString& sModel)
{
    if (sModel == m_clsKX.modelString() && lModelNo == m_controller.modelNumber())
        return;
    m_program.eventLog().LogWrite(QStringLiteral("loadKXInfo%1-%2").arg(lModelNo).arg(sModel));
    m_controller.setModel(lModelNo, sModel);
    m_pages->clearCells();
    m_clsKX.setMaxRC(lModelNo);
    tranForm();
}

// A title that names a document is left alone by translation: it is put together again from the translated caption.
void frmMain::translateControls()
{
    setWindowTitle(m_controls->designCaption());
    m_program.library().tranForm(*m_controls);
    platform::translateNames(*this, m_program.library().translation());
    platform::translateDesktopDialogs(m_program.library().languageCode());
    m_dialogs->translate();
    m_gridCommands->translate();
    m_review->translate();
    m_mainFiles->translate(windowTitle());
}

void frmMain::tranForm()
{
    translateControls();
    m_controller.setState(MainState::NoConnection);
    m_selections->closeAll();
    m_comm->noteFilled();
    m_clsKX.load(m_controller.modelNumber(), &m_program.library(), m_controller.model());
    m_files->forget();
    m_review->forget();
    showGridOrHint();
    m_status->showAll();
}

void frmMain::getDataFromKX(const std::vector<clsBlock*>* colRefData)
{
    if (m_engine->isBusy() || (colRefData == nullptr && !m_files->mayReplace()))
        return;
    m_engine->getDataFromKX(colRefData);
}

void frmMain::setDataToKXAll()
{
    if (m_engine->isBusy() || !m_pages->sheet().finishEntry())
        return;
    m_questions->showMessage(m_program.library().tranStr(QStringLiteral("Transfer All Data.")),
                             MessageStyle::kInformation, QStringLiteral("KX"));
    m_engine->setDataToKXAll();
}

void frmMain::askAndSend()
{
    if (m_engine->isBusy() || !m_pages->sheet().finishEntry())
        return;
    const QString question = m_program.library().tranStr(QStringLiteral("Transfer All Data.Sure?"));
    if (m_questions->showMessage(question, MessageStyle::kYesNoExclamation, QStringLiteral("KX")) ==
        MessageResult::kYes)
        m_engine->setDataToKXAll();
}

void frmMain::afterRead()
{
    if (m_engine->lastRead().refreshed) {
        m_editor->clear();
        // All values are the controller's now, and no file's. A read-back behind a write leaves the file what it is.
        if (m_engine->activity() == TransferEngine::Activity::Idle)
            m_files->forget();
    }
    m_mainFiles->showTitle();
}

// A write, and the read-back behind it, end what can be undone here.
void frmMain::afterWrite()
{
    if (m_engine->lastWrite().accepted > 0)
        m_editor->clear();
    m_mainFiles->showTitle();
}

void frmMain::openGiven(const QString& file)
{
    m_mainFiles->openGiven(file);
}

void frmMain::showWriteDetails()
{
    const QString details = m_status->writeDetails();
    if (!details.isEmpty())
        m_questions->showMessage(details, MessageStyle::kExclamation);
}

void frmMain::showGridOrHint()
{
    const int items = static_cast<int>(m_clsKX.items().size());
    const QString hint =
        gridHint(m_controller.model(), items, definitionFault(m_program.library(), m_clsKX.entry()),
                 m_program.definitionFile(m_clsKX.entry().screenFile), m_program.library().translation());
    m_pages->showHint(hint, m_controller.model().isEmpty());
    for (QAction* action : {m_menus->recv, m_menus->review})
        action->setEnabled(hint.isEmpty());
    m_mainFiles->enable(hint.isEmpty());
    m_gridCommands->setEnabled(hint.isEmpty());
    const bool neverWrites = m_program.settings().neverWrites();
    for (QAction* action : {m_menus->send, m_tlbMain->send()}) {
        action->setEnabled(hint.isEmpty() && !neverWrites);
        if (neverWrites)
            action->setToolTip(m_program.library().tranStr(
                QStringLiteral("Off, because the program is set never to write to a controller.")));
    }
}

void frmMain::onLoadEvent(int code, int number, const QString& text)
{
    if (!m_program.settings().m_bLoadView)
        return;
    if (code == 0)
        m_progress->open(number, QStringLiteral("Initialize..."), text, false, false);
    else if (code == 1)
        m_progress->setPosition(number);
    else
        m_progress->close();
}

void frmMain::closeEvent(QCloseEvent* event)
{
    if (!m_closing->mayClose()) {
        event->ignore();
        return;
    }
    m_engine->abort();
    m_comm->close();
    m_selections->closeAll();
    m_dialogs->close();
    m_review->close();
    m_start->simulator().lastState().save(m_program.library());
    m_program.library().saveFormSize(platform::WidgetPlacement(*this, kFormName));
    m_gridCommands->save();
    platform::HelpWindow::closeAll();
    event->accept();
    Q_EMIT closed();
}
