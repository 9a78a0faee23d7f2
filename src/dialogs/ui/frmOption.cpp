#include "frmOption.h"

#include "AccessibleNames.h"
#include "ControlRegistry.h"
#include "MessagePresenter.h"
#include "OkCancelRow.h"
#include "VisibleText.h"
#include "clsLibrary.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHideEvent>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

enum CheckIndex {
    kAskRecv = 0,
    kAskSend = 1,
    kAskEnd = 2,
    kDesignWidths = 3,
    kForceFont = 4,
    kLoadingScreen = 5,
    kOffLine = 6,
    kAskInput = 7,
    kAskUnit = 8,
    kSingleInstance = 9,
    kAskDiscard = 10,
    kNeverWrite = 11
};

QVBoxLayout* columnOn(QWidget* page)
{
    auto* layout = new QVBoxLayout(page);
    layout->setAlignment(Qt::AlignTop);
    return layout;
}

} // namespace

frmOption::frmOption(clsLibrary& library, clsCfg& settings, FontChooser chooser)
    : m_library(library), m_chooser(std::move(chooser)), m_values(library, settings),
      m_placement(*this, QStringLiteral("frmOption"))
{
    setupForm();
    registerControls();
    connect(m_chooseFont, &QPushButton::clicked, this, &frmOption::onFont);
    connect(m_ok, &QPushButton::clicked, this, &frmOption::onOk);
    connect(m_cancel, &QPushButton::clicked, this, &frmOption::reject);
}

frmOption::~frmOption() = default;

void frmOption::Logs(Log& objErrLog, Log& objTrcLog)
{
    m_errorLog = objErrLog;
    m_traceLog = objTrcLog;
}

void frmOption::setupForm()
{
    setObjectName(QStringLiteral("frmOption"));
    setWindowTitle(QStringLiteral("Options"));
    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("SSTab1"));
    m_tabs->addTab(setupGeneralPage(), QStringLiteral("General"));
    m_tabs->addTab(setupQuestionPage(), QStringLiteral("Questions"));
    m_tabs->addTab(setupDisplayPage(), QStringLiteral("Display"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    const platform::OkCancelRow buttons(this);
    m_ok = buttons.ok;
    m_cancel = buttons.cancel;
    layout->addWidget(buttons.row);
}

QWidget* frmOption::setupGeneralPage()
{
    auto* page = new QWidget(m_tabs);
    m_frames[0] = new QGroupBox(QStringLiteral("Language"), page);
    m_languages = new QComboBox(m_frames[0]);
    m_languages->setObjectName(QStringLiteral("Combo1"));
    columnOn(m_frames[0])->addWidget(m_languages);
    QVBoxLayout* column = columnOn(page);
    column->addWidget(m_frames[0]);
    column->addWidget(addCheck(kOffLine, QStringLiteral("&Work offline: send nothing to the controller")));
    column->addWidget(addCheck(kNeverWrite, QStringLiteral("&Never write to a controller")));
    column->addWidget(addCheck(kSingleInstance, QStringLiteral("Start the program only &once at a time")));
    return page;
}

QWidget* frmOption::setupQuestionPage()
{
    auto* page = new QWidget(m_tabs);
    m_frames[1] = new QGroupBox(QStringLiteral("Ask before"), page);
    QVBoxLayout* column = columnOn(m_frames[1]);
    column->addWidget(addCheck(kAskRecv, QStringLiteral("&Reading from the controller")));
    column->addWidget(addCheck(kAskSend, QStringLiteral("&Writing to the controller")));
    column->addWidget(addCheck(kAskInput, QStringLiteral("Changing an &input selection")));
    column->addWidget(addCheck(kAskUnit, QStringLiteral("Changing the &unit")));
    column->addWidget(addCheck(kAskEnd, QStringLiteral("&Ending the program")));
    column->addWidget(addCheck(kAskDiscard, QStringLiteral("&Discarding changes not written or saved")));
    columnOn(page)->addWidget(m_frames[1]);
    return page;
}

QWidget* frmOption::setupDisplayPage()
{
    auto* page = new QWidget(m_tabs);
    QVBoxLayout* column = columnOn(page);
    column->addWidget(addCheck(kDesignWidths, QStringLiteral("Use the column &widths of the screen file")));
    column->addWidget(addCheck(kLoadingScreen, QStringLiteral("Show the &progress while a model is loaded")));
    m_frames[2] = new QGroupBox(QStringLiteral("Font"), page);
    m_font = new QLabel(m_frames[2]);
    m_font->setObjectName(QStringLiteral("Label1"));
    m_chooseFont = new QPushButton(QStringLiteral("&Font..."), m_frames[2]);
    m_chooseFont->setObjectName(QStringLiteral("Command2"));
    m_chooseFont->setAutoDefault(false);
    auto* row = new QHBoxLayout;
    row->addWidget(m_font, 1);
    row->addWidget(m_chooseFont);
    QVBoxLayout* inFrame = columnOn(m_frames[2]);
    inFrame->addWidget(addCheck(kForceFont, QStringLiteral("&Use this font in the whole program")));
    inFrame->addLayout(row);
    column->addWidget(m_frames[2]);
    return page;
}

QCheckBox* frmOption::addCheck(int index, const QString& caption)
{
    m_checks[index] = new QCheckBox(caption, this);
    m_checks[index]->setObjectName(QStringLiteral("Check1_%1").arg(index));
    return m_checks[index];
}

// The arrays come last: their indexes would count for the single controls behind them.
void frmOption::registerControls()
{
    m_registry = std::make_unique<platform::ControlRegistry>(*this, QStringLiteral("frmOption"));
    m_registry->add(m_tabs, QStringLiteral("SSTab1"));
    for (int i = 0; i < 3; ++i) {
        m_frames[i]->setObjectName(QStringLiteral("Frame%1").arg(i + 1));
        m_registry->add(m_frames[i], m_frames[i]->objectName());
    }
    m_registry->add(m_languages, QStringLiteral("Combo1"));
    m_registry->add(m_font, QStringLiteral("Label1"));
    m_registry->add(m_chooseFont, QStringLiteral("Command2"));
    for (int i = 0; i < OptionValues::kChecks; ++i)
        m_registry->add(m_checks[i], QStringLiteral("Check1"), i);
    m_registry->add(m_ok, QStringLiteral("Command1"), 0);
    m_registry->add(m_cancel, QStringLiteral("Command1"), 1);
}

void frmOption::showModeless(QWidget* frmOwner, bool bDisable)
{
    m_owner.attach(*this, frmOwner, bDisable);
    setModal(bDisable);
    m_library.tranForm(*m_registry);
    platform::nameField(*m_languages, m_frames[0]->title());
    platform::nameField(*m_tabs, windowTitle());
    fill();
    adjustSize();
    m_library.loadFormSize(m_placement);
    show();
    m_languages->setFocus();
}

void frmOption::fill()
{
    m_values.load();
    m_languages->clear();
    m_languages->addItems(platform::visibleTexts(m_values.languages()));
    m_languages->setCurrentIndex(m_values.language());
    for (int i = 0; i < OptionValues::kChecks; ++i)
        m_checks[i]->setChecked(m_values.isChecked(i));
    m_font->setText(platform::visibleText(m_values.fontText()));
    m_tabs->setCurrentIndex(0);
}

void frmOption::onFont()
{
    const std::optional<FontRecord> chosen = m_chooser(this, m_values.font());
    if (!chosen)
        return;
    m_values.setFont(*chosen);
    m_font->setText(platform::visibleText(m_values.fontText()));
}

// The owner acts on the options while the dialog is still there: it may take a moment, with a progress of its own.
void frmOption::onOk()
{
    m_values.setLanguage(m_languages->currentIndex());
    for (int i = 0; i < OptionValues::kChecks; ++i)
        m_values.setChecked(i, m_checks[i]->isChecked());
    const bool isDesignChanged = m_values.changeDesign();
    if (isDesignChanged && !m_mayReload())
        return;
    const platform::Result<> stored = m_values.store();
    trace(isDesignChanged ? QStringLiteral("options stored, the owner is translated anew")
                          : QStringLiteral("options stored"));
    if (!stored.ok())
        m_library.showMessage(m_library.tranStr(QStringLiteral("The settings were not saved: %1")).arg(stored.error()),
                              MessageStyle::kExclamation);
    if (isDesignChanged)
        Q_EMIT designChanged();
    Q_EMIT this->stored();
    accept();
}

void frmOption::trace(const QString& message)
{
    m_traceLog.get().LogWrite(QStringLiteral("[KXOptionFormTrace]") + message);
}

// Hidden by whatever way; a minimised dialog is still open.
void frmOption::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous()) {
        m_owner.release();
        m_library.saveFormSize(m_placement);
    }
    QDialog::hideEvent(event);
}
