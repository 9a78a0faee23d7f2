#include "frmMain.h"

#include "ControlRegistry.h"
#include "DefinitionFault.h"
#include "DesktopTexts.h"
#include "FileChooser.h"
#include "GridHint.h"
#include "HelpFiles.h"
#include "HelpKey.h"
#include "LastState.h"
#include "MainMenus.h"
#include "MainStatus.h"
#include "MainStatusBar.h"
#include "MainToolbar.h"
#include "MessageBoxPresenter.h"
#include "ModelCatalogue.h"
#include "ProgramContext.h"
#include "ProgressDialogView.h"
#include "RegisteredGrid.h"
#include "VisibleText.h"
#include "WidgetPlacement.h"
#include "clsINI.h"
#include "frmComSet.h"
#include "frmOption.h"
#include "frmShowVersion.h"
#include "frmTraffic.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QFileInfo>
#include <QLabel>
#include <QLayout>
#include <QMenuBar>
#include <QScopedValueRollback>
#include <QStackedWidget>

#include <algorithm>
#include <utility>

namespace {

constexpr int kMaxSpreadSpaceTwips = 3000;
constexpr int kCommCheckMs = 100;
constexpr double kGridPointSize = 11; // that of the labels in a definition file
constexpr QSize kDesignedSize(1280, 860);
const QString kFormName = QStringLiteral("frmMain");

// Margin between the window's edges and the grid.
int spreadSpacePixels(clsLibrary& library)
{
    clsINI ini(library.context());
    ini.setIniPath(library.getIniFilePath(QStringLiteral("Main")));
    ini.setIniFileName(library.getIniFileName(QString()));
    const QString text =
        ini.GetIniData(QStringLiteral("Setting"), QStringLiteral("FormToSpreadSpace"), QStringLiteral("100"));
    return platform::pixels(std::clamp(library.toLong(text, 100), 0, kMaxSpreadSpaceTwips));
}

platform::ColorRef namedColor(const clsLibrary& library, const char* name)
{
    return static_cast<platform::ColorRef>(library.StrToColor(QLatin1String(name), 0));
}

} // namespace

frmMain::frmMain(ProgramContext& program, std::unique_ptr<MessagePresenter> questions)
    : m_program(program), m_questions(std::move(questions)), m_controller(program.settings()),
      m_clsKX(program.library()), m_uclComm1(program.ports(), program.clock()),
      m_progress(std::make_unique<ProgressDialogView>(*this, program.library()))
{
    if (m_questions == nullptr)
        m_questions = std::make_unique<MessageBoxPresenter>(program.library(), this);
    program.context().messages = m_questions.get();
    m_engine = std::make_unique<TransferEngine>(TransferEngine::Parts{
        m_clsKX, m_uclComm1, program.settings(), program.traceLog(), *m_questions, *m_progress, m_controller});
    // The window is modeless in its looks; what it sets belongs to the action that opened it, which goes on when it has
    // closed.
    m_shell = std::make_unique<EditorShell>(*m_engine, m_controller, [this](clsData& item, const QString& section) {
        m_selections->choose(SelectedItem::of(item), section, this);
    });
    m_editor = std::make_unique<CellEditor>(m_clsKX, *m_questions, *m_shell);
    m_selections = std::make_unique<SelectionWindows>(program.library(), *m_editor);
    m_clipboard = std::make_unique<CellClipboard>(*m_editor);
    setupFiles();
    m_help = std::make_unique<HelpKey>(
        HelpKey::Parts{program.machine().paths, program.library().translation(), [this] { return helpFile(); }});
    m_selections->Logs(&program.errorLog(), &program.traceLog());
    connect(m_progress.get(), &ProgressDialogView::cancelled, this, &frmMain::ProgCancel);
    connect(m_engine.get(), &TransferEngine::readEnded, this, &frmMain::afterRead);
    connect(m_engine.get(), &TransferEngine::written, this, &frmMain::afterWrite);
    connect(m_engine.get(), &TransferEngine::settingsWanted, this, &frmMain::showCommSetting);
    connect(&m_clsKX, &clsKX::LoadEvent, this, &frmMain::onLoadEvent);
    setupWindow();
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
    m_program.context().messages = nullptr;
}

void frmMain::start()
{
    const FolderNotices& notices = m_program.folderNotices();
    for (const FolderNotice& notice : notices)
        m_questions->showMessage(notice.in(m_program.library().tranStr(notice.text)), MessageStyle::kExclamation);
    if (!m_program.settings().m_bComm || m_controller.model().isEmpty())
        QMetaObject::invokeMethod(this, &frmMain::showCommSetting, Qt::QueuedConnection);
}

void frmMain::setupWindow()
{
    setObjectName(kFormName);
    setWindowTitle(m_program.machine().folders.baseName());
    resize(kDesignedSize.boundedTo(platform::roomFor(*this)));
    setupGrid();
    m_menus = std::make_unique<MainMenus>(*menuBar());
    m_tlbMain = new MainToolbar(this);
    addToolBar(m_tlbMain);
    m_stbMain = new MainStatusBar(this);
    setStatusBar(m_stbMain);
    m_status = new MainStatus({m_program, m_controller, *m_engine, m_clsKX, m_uclComm1, *m_sprMain, *m_stbMain}, this);
    connectMenus();
    connectToolbar();
    connectGrid();
    m_timer1.setSingleShot(true);
    m_timer1.setInterval(kCommCheckMs);
    connect(&m_timer1, &QTimer::timeout, this, [this] {
        if (!m_program.settings().m_bComm)
            showCommSetting();
    });
    registerControls();
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
    m_hint->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_hint->setWordWrap(true);
    m_hint->setAlignment(Qt::AlignCenter);
    m_pages->addWidget(m_sprMain);
    m_pages->addWidget(m_hint);
    setCentralWidget(m_pages);
}

void frmMain::setupFiles()
{
    m_files = std::make_unique<ParameterFiles>(m_clsKX, m_program, *m_questions);
    m_files->setChooser([this](const FileQuestion& question) { return chooseFile(this, question); });
    connect(m_files.get(), &ParameterFiles::loaded, m_editor.get(), &CellEditor::clear);
    connect(m_files.get(), &ParameterFiles::fileChanged, this, &frmMain::showTitle);
    connect(m_files.get(), &ParameterFiles::fileChanged, this, &frmMain::enableRecent);
    connect(m_files.get(), &ParameterFiles::fileChanged, this, [this] { m_status->showData(); });
}

void frmMain::connectMenus()
{
    connect(m_menus->open, &QAction::triggered, this, &frmMain::openDataFile);
    connect(m_menus->save, &QAction::triggered, this, &frmMain::saveDataFile);
    connect(m_menus->send, &QAction::triggered, this, &frmMain::setDataToKXAll);
    connect(m_stbMain, &MainStatusBar::writeClicked, this, &frmMain::tellWriteDetails);
    connect(m_menus->copy, &QAction::triggered, m_sprMain, &platform::vaSpread::requestCopy);
    connect(m_menus->paste, &QAction::triggered, m_sprMain, &platform::vaSpread::requestPaste);
    connect(m_menus->undo, &QAction::triggered, m_editor.get(), &CellEditor::undo);
    connect(m_menus->redo, &QAction::triggered, m_editor.get(), &CellEditor::redo);
    connect(m_menus->exit, &QAction::triggered, this, &frmMain::exitApp);
    connect(m_menus->comm, &QAction::triggered, this, &frmMain::showCommSetting);
    connect(m_menus->recv, &QAction::triggered, this, [this] { getDataFromKX(); });
    connect(m_menus->traffic, &QAction::triggered, this, &frmMain::showTraffic);
    connect(m_menus->option, &QAction::triggered, this, &frmMain::showOption);
    connect(m_menus->version, &QAction::triggered, this, &frmMain::showVersion);
    connect(m_menus->help, &QAction::triggered, this, &frmMain::showHelp);
    connect(m_menus->clearRecent, &QAction::triggered, m_files.get(), &ParameterFiles::clearRecent);
    connect(m_menus->recent, &QMenu::aboutToShow, this, &frmMain::showRecent);
}

void frmMain::connectToolbar()
{
    const std::pair<const char*, void (frmMain::*)()> commands[] = {
        {"Open", &frmMain::openDataFile},   {"Save", &frmMain::saveDataFile}, {"Comm", &frmMain::showCommSetting},
        {"Option", &frmMain::showOption},   {"Exit", &frmMain::exitApp},      {"Send", &frmMain::askAndSend},
        {"Version", &frmMain::showVersion}, {"Help", &frmMain::showHelp}};
    for (const auto& [key, command] : commands)
        connect(m_tlbMain->button(QLatin1String(key)), &QAction::triggered, this, command);
    connect(m_tlbMain->button(QStringLiteral("Recv")), &QAction::triggered, this, [this] { getDataFromKX(); });
}

void frmMain::connectGrid()
{
    using platform::vaSpread;
    CellEditor* editor = m_editor.get();
    connect(m_sprMain, &vaSpread::editChanged, editor, [this](int col, int row, const QString& text) {
        if (!m_editor->checkCell(col, row, true, text))
            m_sprMain->refuseEntry(col, row, text);
    });
    connect(m_sprMain, &vaSpread::comboSelChange, editor,
            [editor](int col, int row, int choice) { editor->changeCombo(col, row, choice); });
    connect(m_sprMain, &vaSpread::buttonClicked, editor, &CellEditor::clickCell);
    connect(m_sprMain, &vaSpread::dblClick, editor, &CellEditor::openSelect);
    connect(m_sprMain, &vaSpread::enterPressed, editor, &CellEditor::openSelect);
    connect(m_sprMain, &vaSpread::copyRequested, this, [this](const platform::CellRange& range) {
        QGuiApplication::clipboard()->setText(m_clipboard->copy(range));
    });
    connect(m_sprMain, &vaSpread::pasteRequested, this, [this](int col, int row, const QString& text) {
        m_clipboard->paste({row, col}, text);
    });
    connect(editor, &CellEditor::edited, m_status, &MainStatus::showHint);
    connect(editor, &CellEditor::edited, this, &frmMain::showTitle);
    connect(editor, &CellEditor::edited, m_status, &MainStatus::showData);
    const auto showHistory = [this] {
        m_menus->undo->setEnabled(m_editor->canUndo());
        m_menus->redo->setEnabled(m_editor->canRedo());
    };
    connect(editor, &CellEditor::historyChanged, this, showHistory);
    showHistory();
}

void frmMain::registerControls()
{
    m_controls = std::make_unique<platform::ControlRegistry>(*this, kFormName);
    m_controls->add(m_tlbMain, m_tlbMain->objectName());
    m_menus->registerAt(*m_controls);
    m_controls->add(std::make_unique<platform::RegisteredGrid>(*m_sprMain, m_sprMain->objectName(), std::nullopt));
    m_controls->add(static_cast<QStatusBar*>(m_stbMain), m_stbMain->objectName());
}

void frmMain::initForm(const LastState& last)
{
    const int space = spreadSpacePixels(m_program.library());
    m_pages->setContentsMargins(space, space, space, space);
    m_controller.setModel(last.modelNo, last.modelString);
    m_controller.setLine(last.slaveAddress, last.transmissionMode);
    m_sprMain->setSelectionColors(namedColor(m_program.library(), "vbHighlight"),
                                  namedColor(m_program.library(), "vbHighlightText"));
    ModelCatalogue(m_program.library()).ensureBuiltIn();
    m_clsKX.setSpread(&m_grid);
    m_clsKX.Logs(&m_program.errorLog(), &m_program.traceLog());
    m_clsKX.setLib(&m_program.library());
    m_uclComm1.init(1, &m_program.library());
}

void frmMain::loadKXInfo(int lModelNo, const QString& sModel)
{
    if (sModel == m_clsKX.modelString() && lModelNo == m_controller.modelNumber())
        return;
    m_program.eventLog().LogWrite(QStringLiteral("loadKXInfo%1-%2").arg(lModelNo).arg(sModel));
    m_controller.setModel(lModelNo, sModel);
    m_grid.setMaxCols(0);
    m_grid.setMaxRows(0);
    m_clsKX.setMaxRC(lModelNo);
    tranForm();
}

// A title that names a document is left alone by translation: it is put together again from the translated caption.
void frmMain::translateControls()
{
    setWindowTitle(m_controls->designCaption());
    m_program.library().tranForm(*m_controls);
    platform::translateDesktopDialogs(m_program.library().languageCode());
    if (m_traffic != nullptr)
        m_traffic->tranForm();
    m_caption = windowTitle();
    showTitle();
}

void frmMain::tranForm()
{
    translateControls();
    m_controller.setState(MainState::NoConnection);
    m_selections->closeAll();
    m_wasOffLine = m_program.settings().m_bComm;
    m_clsKX.load(m_controller.modelNumber(), &m_program.library(), m_controller.model());
    m_files->forget();
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
    if (m_engine->isBusy())
        return;
    m_questions->showMessage(m_program.library().tranStr(QStringLiteral("Transfer All Data.")),
                             MessageStyle::kInformation, QStringLiteral("KX"));
    m_engine->setDataToKXAll();
}

void frmMain::askAndSend()
{
    if (m_engine->isBusy())
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
    showTitle();
}

// A write, and the read-back behind it, end what can be undone here.
void frmMain::afterWrite()
{
    if (m_engine->lastWrite().taken > 0)
        m_editor->clear();
    showTitle();
}

void frmMain::showCommSetting()
{
    if (m_engine->isBusy())
        return;
    // The read that the settings start may ask for them: they open once more when they have closed.
    m_settingsWanted = m_comSet != nullptr;
    if (m_settingsWanted)
        return;
    do
        runCommSetting();
    while (std::exchange(m_settingsWanted, false) && !m_engine->isClosing());
    m_status->showLink();
}

void frmMain::runCommSetting()
{
    frmComSet dialog({*this, m_program.ports(), m_program.library(), QCoreApplication::arguments().mid(1).join(u' ')},
                     this);
    m_comSet = &dialog;
    dialog.Logs(&m_program.errorLog(), &m_program.traceLog());
    dialog.exec();
    m_comSet = nullptr;
}

void frmMain::setConfirmed(bool confirmed)
{
    m_controller.setState(confirmed ? MainState::Confirmed : MainState::NoConnection);
}

void frmMain::takeOver(int slaveNo, int mode, int modelPosition, const QString& modelString)
{
    m_controller.setLine(slaveNo, mode);
    loadKXInfo(modelPosition < 0 ? m_controller.modelNumber() : modelPosition + 1, modelString);
}

void frmMain::showOption()
{
    if (m_option == nullptr) {
        m_option = std::make_unique<frmOption>(m_program.library(), m_program.settings());
        connect(m_option.get(), &frmOption::designChanged, this, &frmMain::tranForm);
        connect(m_option.get(), &frmOption::stored, this, &frmMain::doCommCheck);
    }
    m_option->Logs(&m_program.errorLog(), &m_program.traceLog());
    m_option->showModeless(this, true);
}

void frmMain::showVersion()
{
    if (m_version == nullptr)
        m_version = std::make_unique<frmShowVersion>(m_program.library(), ProgramVersion::current());
    m_version->showModeless(this, true);
}

// A window of its own: it is there while a transfer or the communication settings keep this one.
void frmMain::showTraffic()
{
    if (m_traffic == nullptr)
        m_traffic = std::make_unique<frmTraffic>(m_program.library(), m_program.traceLog().filePath());
    m_traffic->show();
    m_traffic->raise();
    m_traffic->activateWindow();
}

// What was there before the options changed to on-line or off-line work is no controller's current data.
void frmMain::doCommCheck()
{
    const bool isOffLine = m_program.settings().m_bComm;
    if (isOffLine != std::exchange(m_wasOffLine, isOffLine)) {
        if (isOffLine && m_clsKX.holdsDefaults()) // what was read, loaded or entered stays
            m_clsKX.fillOffLine();
        m_controller.setState(MainState::NoConnection);
    }
    m_timer1.start();
}

void frmMain::showTitle()
{
    setWindowTitle(windowTitleText(m_caption, m_controller.model(), QFileInfo(m_files->file()).fileName()));
    setWindowModified(m_files->isChanged());
}

void frmMain::enableRecent()
{
    m_menus->recent->setEnabled(m_menus->open->isEnabled() && !m_files->recent().files().isEmpty());
}

// When the menu is about to be looked at.
void frmMain::showRecent()
{
    m_menus->showRecent(m_files->recent().files(), [this](const QString& file) { m_files->openRecent(file, state()); });
}

QString frmMain::helpFile() const
{
    return platform::helpFile(m_program.machine().folders.program(), m_program.context().languageFile);
}

// The page about what the user is at, as the key does.
void frmMain::showHelp()
{
    m_help->openFor(QApplication::focusWidget());
}

void frmMain::tellWriteDetails()
{
    m_questions->showMessage(m_status->writeDetails(), MessageStyle::kExclamation);
}

void frmMain::showGridOrHint()
{
    const int items = static_cast<int>(m_clsKX.items().size());
    const QString hint =
        gridHint(m_controller.model(), items, definitionFault(m_program.library(), m_clsKX.entry()),
                 m_program.definitionFile(m_clsKX.entry().screenFile), m_program.library().translation());
    m_hint->setText(platform::visibleLines(hint));
    m_pages->setCurrentWidget(hint.isEmpty() ? static_cast<QWidget*>(m_sprMain) : m_hint);
    for (QAction* action : {m_menus->recv, m_menus->send, m_menus->open, m_menus->save, m_menus->paste})
        action->setEnabled(hint.isEmpty());
    for (const char* key : {"Recv", "Send", "Open", "Save"})
        m_tlbMain->button(QLatin1String(key))->setEnabled(hint.isEmpty());
    enableRecent();
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

void frmMain::closeWithoutQuestion()
{
    m_askBeforeClosing = false;
    if (m_asksToQuit)
        endQuestions();
    else
        close();
}

// A window that is being closed cannot be closed again: the question whether to ends, and with it the closing goes on.
void frmMain::endQuestions()
{
    while (QWidget* question = QApplication::activeModalWidget()) {
        if (!question->close())
            return;
    }
}

void frmMain::closeEvent(QCloseEvent* event)
{
    if (!mayClose()) {
        event->ignore();
        return;
    }
    m_engine->abort();
    if (m_comSet != nullptr)
        m_comSet->close();
    m_selections->closeAll();
    if (m_traffic != nullptr)
        m_traffic->close();
    saveLastSetting();
    m_program.library().saveFormSize(platform::WidgetPlacement(*this, kFormName));
    platform::HelpWindow::closeAll();
    event->accept();
    Q_EMIT closed();
}

bool frmMain::mayClose()
{
    if (!m_askBeforeClosing || !m_program.settings().m_bViewEndConf)
        return true;
    const QString question = m_program.library().tranStr(QStringLiteral("Quit?"));
    const QScopedValueRollback<bool> asks(m_asksToQuit, true);
    return m_questions->showMessage(question, MessageStyle::kYesNoExclamation) != MessageResult::kNo ||
           !m_askBeforeClosing;
}

// The model that was selected, even when the last read found another controller: the grid belongs to it.
void frmMain::saveLastSetting()
{
    LastState{m_controller.modelNumber(), m_controller.slaveAddress(), m_controller.transmissionMode(),
              m_controller.model()}
        .save(m_program.library());
}
