#include "Tour.h"

#include "HelpFiles.h"
#include "HelpWindow.h"
#include "MessagePresenter.h"
#include "Picture.h"
#include "ProgramContext.h"
#include "WhenShown.h"
#include "frmComSet.h"
#include "frmMain.h"
#include "frmMessageBox.h"
#include "frmMultiSelect.h"
#include "frmOption.h"
#include "frmProgbar.h"
#include "frmScan.h"
#include "frmShowVersion.h"
#include "vaSpread.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <QToolButton>

namespace {

constexpr QSize kMainSize(960, 660);
constexpr QSize kLargeSize(1240, 860);
constexpr QSize kHelpSize(860, 560);
constexpr QSize kTrafficSize(960, 520);
constexpr QSize kReviewSize(1180, 300);
constexpr QSize kBackupsSize(900, 260);
constexpr int kDirectionColumn = 1;
constexpr int kDataColumn = 6;
constexpr int kDataWidth = 150;
constexpr int kRemarkColumn = 8;
const QString kTime = QStringLiteral("14:07:09");

void press(QWidget& window, const char* button)
{
    window.findChild<QPushButton*>(QLatin1String(button))->click();
}

QWidget* formNamed(const QString& name)
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->objectName() == name)
            return window;
    }
    qFatal("no window %s", qPrintable(name));
}

} // namespace

Tour::Tour(ProgramContext& program, frmMain& window, const QString& folder)
    : m_program(program), m_window(window), m_folder(folder)
{}

void Tour::picture(QWidget& window, const char* name)
{
    takePicture(window, m_folder, QLatin1String(name));
}

QString Tour::text(const char* english) const
{
    return m_program.library().tranStr(QString::fromLatin1(english));
}

void Tour::start()
{
    m_window.resize(kMainSize);
    picture(m_window, "start");
}

void Tour::all()
{
    read();
    mainWindow();
    searchBar();
    messages();
    options();
    selection();
    version();
    help();
}

// The communication settings as they open, OK, and the progress half-way through the read.
void Tour::read()
{
    const WhenShown<frmComSet> settings([this](frmComSet& dialog) {
        picture(dialog, "commset");
        search(dialog);
        press(dialog, "Command1_0");
    });
    const WhenShown<frmProgbar> progress([this](frmProgbar& dialog) {
        auto* bar = dialog.findChild<QProgressBar*>(QStringLiteral("ProgressBar1"));
        QObject::connect(bar, &QProgressBar::valueChanged, &dialog, [this, bar, &dialog](int value) {
            if (value == bar->maximum() / 2)
                picture(dialog, "progress");
        });
    });
    m_window.showCommSetting();
    if (m_window.state() != MainState::UpToDate)
        qFatal("the controller was not read");
}

void Tour::mainWindow()
{
    auto* state = m_window.findChild<QLabel*>(QStringLiteral("panelState"));
    static const QRegularExpression time(QStringLiteral("\\d\\d:\\d\\d:\\d\\d"));
    state->setText(state->text().replace(time, kTime));
    m_window.resize(kLargeSize);
    goToSetValue();
    picture(m_window, "large");
    m_window.resize(kMainSize);
    goToSetValue();
    picture(m_window, "main");
}

// With its hits; names are found in every language.
void Tour::searchBar()
{
    m_window.findChild<QAction*>(QStringLiteral("mnuEdit_4"))->trigger();
    auto* field = m_window.findChild<QLineEdit*>(QStringLiteral("findText"));
    field->setText(QStringLiteral("hysteresis"));
    if (m_window.findChild<QLabel*>(QStringLiteral("findCount"))->text().isEmpty())
        qFatal("nothing is found");
    picture(m_window, "find");
    field->parentWidget()->hide();
}

void Tour::messages()
{
    {
        const WhenShown<frmMessageBox> box([this](frmMessageBox& form) {
            picture(form, "message");
            form.reject();
        });
        m_window.setVData(QStringLiteral("VQSV1"), QStringLiteral("99999"), true);
    }
    const WhenShown<frmMessageBox> box([this](frmMessageBox& form) {
        picture(form, "ask");
        form.reject();
    });
    m_program.library().showMessage(text("Transfer All Data.Sure?"), MessageStyle::kYesNoExclamation,
                                    QStringLiteral("KX"));
}

void Tour::options()
{
    m_window.showOption();
    auto* form = m_window.findChild<frmOption*>();
    auto* tabs = form->findChild<QTabWidget*>(QStringLiteral("SSTab1"));
    for (int page = 0; page < tabs->count(); ++page) {
        tabs->setCurrentIndex(page);
        picture(*form, qPrintable(QStringLiteral("option-%1").arg(page + 1)));
    }
    form->reject();
}

void Tour::selection()
{
    const WhenShown<frmMultiSelect> table([this](frmMultiSelect& form) {
        picture(form, "multiselect");
        form.reject();
    });
    const QString hint = text("%1: double-click or press Enter to choose").arg(text("Input range"));
    const QPoint cell = cellWithHint(hint);
    auto* grid = m_window.findChild<platform::vaSpread*>(QStringLiteral("sprMain"));
    Q_EMIT grid->enterPressed(cell.x(), cell.y());
}

void Tour::version()
{
    m_window.showVersion();
    auto* form = m_window.findChild<frmShowVersion*>();
    picture(*form, "version");
    form->reject();
}

// A read of which a reply was damaged; that reply is the current line.
void Tour::traffic()
{
    confirm();
    m_window.showTraffic();
    QWidget* form = formNamed(QStringLiteral("frmTraffic"));
    form->resize(kTrafficSize);
    auto* table = form->findChild<QTableView*>();
    for (int column = 0; column < kRemarkColumn; ++column)
        table->resizeColumnToContents(column);
    table->setColumnWidth(kDataColumn, kDataWidth);
    table->setColumnWidth(kRemarkColumn, 0); // and as wide as there is room for, as the last one
    QCoreApplication::processEvents();
    const QAbstractItemModel& lines = *table->model();
    int faulty = lines.rowCount() - 1;
    while (faulty >= 0 && !isRejected(lines, faulty))
        --faulty;
    if (faulty < 1)
        qFatal("every reply was sound");
    table->selectRow(faulty - 1);
    table->scrollTo(table->currentIndex(), QAbstractItemView::PositionAtCenter);
    picture(*form, "traffic");
    form->close();
}

bool Tour::isRejected(const QAbstractItemModel& lines, int row) const
{
    return lines.index(row, kDirectionColumn).data().toString() == text("Rejected");
}

void Tour::help()
{
    platform::HelpWindow window(m_program.library().translation());
    window.resize(kHelpSize);
    const QString file = platform::helpFile(m_program.machine().folders.program(), m_program.context().languageFile);
    window.showPage(platform::helpEdition(m_program.machine().paths, file), QStringLiteral("index.html"));
    picture(window, "help");
}

// With its first find.
void Tour::search(frmComSet& settings)
{
    const WhenShown<frmScan> window([this](frmScan& form) {
        auto* table = form.findChild<QTableView*>();
        QObject::connect(table->model(), &QAbstractItemModel::rowsInserted, &form, [this, &form, table] {
            QTimer::singleShot(0, &form, [this, &form, table] {
                table->resizeColumnsToContents();
                picture(form, "scan");
                form.close();
            });
        });
    });
    press(settings, "Command3");
}

// OK in the communication settings, which reads.
void Tour::confirm()
{
    const WhenShown<frmComSet> settings([](frmComSet& dialog) { press(dialog, "Command1_0"); });
    m_window.showCommSetting();
}

void Tour::report()
{
    confirm();
    {
        const WhenShown<frmMessageBox> box([](frmMessageBox& form) { form.accept(); });
        m_window.setDataToKXAll();
    }
    auto* panel = m_window.findChild<QToolButton*>(QStringLiteral("panelWrite"));
    if (panel->isHidden())
        qFatal("the write went well");
    const WhenShown<frmMessageBox> box([this](frmMessageBox& form) {
        picture(form, "report");
        form.accept();
    });
    panel->click();
}

// As a person types it.
void Tour::enter(const char* tag, const char* text)
{
    auto* grid = m_window.findChild<platform::vaSpread*>(QStringLiteral("sprMain"));
    const clsData* item = m_window.model().getDataByTag(QLatin1String(tag));
    Q_EMIT grid->editChanged(item->Col(), item->Row(), QLatin1String(text));
}

void Tour::pokeController(const QByteArray& poke)
{
    QFile control(qEnvironmentVariable("VORLANT_PICTURES_CONTROL"));
    if (!control.open(QIODevice::WriteOnly) || control.write("poke " + poke + '\n') < 0)
        qFatal("the controller cannot be told");
}

// Some values change; one of them at the front panel too.
void Tour::review()
{
    confirm();
    enter("VQSV1", "130.0");
    enter("VQSVUP", "12.0");
    enter("VQBIA", "-2.0");
    pokeController("8008=0063");
    m_window.showReview();
    QWidget* form = formNamed(QStringLiteral("frmReview"));
    form->resize(kReviewSize);
    press(*form, "Command1_0");
    enter("VQSVDWN", "8.0");
    picture(*form, "review");
    m_window.showHistory();
    QWidget* history = formNamed(QStringLiteral("frmHistory"));
    history->resize(kReviewSize);
    picture(*history, "history");
    m_window.showBackups();
    QWidget* backups = formNamed(QStringLiteral("frmBackups"));
    backups->resize(kBackupsSize);
    picture(*backups, "backups");
}

// Column and row of the first cell whose hint in the status bar holds the text.
QPoint Tour::cellWithHint(const QString& part) const
{
    auto* grid = m_window.findChild<platform::vaSpread*>(QStringLiteral("sprMain"));
    const auto* hint = m_window.findChild<QLabel*>(QStringLiteral("panelHint"));
    for (int col = 1; col <= grid->model()->columnCount(); ++col) {
        for (int row = 1; row <= grid->model()->rowCount(); ++row) {
            grid->setCurrentCell(col, row);
            if (hint->text().contains(part))
                return {col, row};
        }
    }
    qFatal("no cell about %s", qPrintable(part));
}

void Tour::goToSetValue()
{
    QCoreApplication::processEvents();
    cellWithHint(u' ' + text("Set value 1") + u' ');
    m_window.findChild<platform::vaSpread*>(QStringLiteral("sprMain"))->scrollToTop();
    m_window.findChild<platform::vaSpread*>(QStringLiteral("sprMain"))->setFocus();
}
