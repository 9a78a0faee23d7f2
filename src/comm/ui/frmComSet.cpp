#include "frmComSet.h"

#include "AccessibleNames.h"
#include "Clock.h"
#include "ControlRegistry.h"
#include "FormatChoice.h"
#include "ModelCodes.h"
#include "PortField.h"
#include "VisibleText.h"
#include "clsLibrary.h"
#include "frmScan.h"

#include <QCloseEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

constexpr int kPortLookMs = 1000;

template <class Control> Control* named(Control* control, const char* name)
{
    control->setObjectName(QLatin1String(name));
    return control;
}

QLabel* labelFor(QWidget* field, const char* name, const QString& caption, QWidget* parent)
{
    auto* label = named(new QLabel(caption, parent), name);
    label->setBuddy(field);
    return label;
}

// For what may be wrong with the fields above it.
QLabel* noticeLabel(const char* name, QWidget* parent)
{
    auto* label = named(new QLabel(parent), name);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QHBoxLayout* sideBySide(std::initializer_list<QWidget*> widgets)
{
    auto* row = new QHBoxLayout;
    for (QWidget* widget : widgets)
        row->addWidget(widget);
    row->addStretch();
    return row;
}

} // namespace

frmComSet::frmComSet(const ComSetSession::Parts& parts, QWidget* parent)
    : QDialog(parent), m_library(parts.library), m_session(parts),
      m_portLook(parts.library.context().machine.clock.makeTimer()), m_placement(*this, QStringLiteral("frmComSet"))
{
    setupForm();
    setupTabOrder();
    registerControls();
    m_library.tranForm(*m_registry);
    nameFields();
    fill(m_session.open());
    connectControls();
    adjustSize();
    m_library.loadFormSize(m_placement);
    growForNotices();
    m_port->setFocus();
}

frmComSet::~frmComSet() = default;

void frmComSet::Logs(Log& objErrLog, Log& objTrcLog)
{
    m_session.Logs(objErrLog, objTrcLog);
}

void frmComSet::setupForm()
{
    setObjectName(QStringLiteral("frmComSet"));
    setWindowTitle(QStringLiteral("Communication settings"));
    setWindowModality(Qt::WindowModal); // the traffic can be watched and searched while a model is detected
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(setupPortFrame());
    layout->addWidget(setupModeFrame());
    layout->addWidget(setupControllerFrame());
    layout->addWidget(setupProgress());
    layout->addStretch();
    layout->addWidget(setupButtons());
}

QGroupBox* frmComSet::setupPortFrame()
{
    auto* frame = m_frames[0] = named(new QGroupBox(QStringLiteral("Serial line"), this), "Frame1");
    m_port = named(new PortField(m_session, frame), "Combo1");
    m_error = noticeLabel("lblTrouble", frame);
    m_speed = named(new QComboBox(frame), "Combo2");
    m_format = new FormatChoice(frame);
    m_labels[0] = labelFor(m_port, "Label1", QStringLiteral("&Port:"), frame);
    m_labels[1] = labelFor(m_speed, "Label2", QStringLiteral("&Speed:"), frame);
    auto* layout = new QFormLayout(frame);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    layout->addRow(m_labels[0], m_port);
    layout->addRow(m_error);
    layout->addRow(m_labels[1], m_speed);
    layout->addRow(QString(), m_format);
    m_timeOut = named(new QLineEdit(frame), "Text3");
    m_timeOut->setInputMethodHints(Qt::ImhDigitsOnly);
    m_labels[5] = labelFor(m_timeOut, "Label6", QStringLiteral("Time-o&ut (ms):"), frame);
    layout->addRow(m_labels[5], m_timeOut);
    return frame;
}

QGroupBox* frmComSet::setupModeFrame()
{
    auto* frame = m_frames[1] = named(new QGroupBox(QStringLiteral("Transmission mode"), this), "Frame2");
    m_rtu = named(new QRadioButton(QStringLiteral("&RTU"), frame), "Option4");
    m_ascii = named(new QRadioButton(QStringLiteral("&ASCII"), frame), "Option5");
    m_warning = noticeLabel("lblWarning", frame);
    auto* layout = new QVBoxLayout(frame);
    layout->addLayout(sideBySide({m_rtu, m_ascii}));
    layout->addWidget(m_warning);
    return frame;
}

QGroupBox* frmComSet::setupControllerFrame()
{
    auto* frame = m_frames[2] = named(new QGroupBox(QStringLiteral("Controller"), this), "Frame3");
    m_slave = named(new QLineEdit(frame), "Text1");
    m_slave->setInputMethodHints(Qt::ImhDigitsOnly);
    m_model = named(new QComboBox(frame), "Combo3");
    m_modelString = named(new QLineEdit(frame), "Text2");
    m_detect = named(new QPushButton(QStringLiteral("&Detect"), frame), "Command2");
    m_detect->setToolTip(QStringLiteral("Asks the controller on the line for its model"));
    m_labels[2] = labelFor(m_slave, "Label3", QStringLiteral("S&lave address (1 to 99):"), frame);
    m_labels[3] = labelFor(m_model, "Label4", QStringLiteral("&Model:"), frame);
    m_labels[4] = labelFor(m_modelString, "Label5", QStringLiteral("Model str&ing:"), frame);
    auto* modelRow = new QHBoxLayout;
    modelRow->addWidget(m_model, 1);
    modelRow->addWidget(m_detect);
    m_search = named(new QPushButton(QStringLiteral("S&earch..."), frame), "Command3");
    m_search->setToolTip(QStringLiteral("Searches the line for controllers, with the likely settings"));
    modelRow->addWidget(m_search);
    auto* layout = new QFormLayout(frame);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    layout->addRow(m_labels[2], m_slave);
    layout->addRow(m_labels[3], modelRow);
    layout->addRow(m_labels[4], m_modelString);
    return frame;
}

QWidget* frmComSet::setupProgress()
{
    m_progress = named(new QWidget(this), "progress");
    m_progressText = named(new QLabel(m_progress), "lblProgress");
    auto* bar = named(new QProgressBar(m_progress), "ProgressBar1");
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    m_stop = named(new QPushButton(QStringLiteral("S&top"), m_progress), "cmdStop");
    m_stop->setAutoDefault(false);
    auto* layout = new QHBoxLayout(m_progress);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_progressText);
    layout->addWidget(bar, 1);
    layout->addWidget(m_stop);
    QSizePolicy policy = m_progress->sizePolicy();
    policy.setRetainSizeWhenHidden(true); // or the dialog would jump at every detection
    m_progress->setSizePolicy(policy);
    m_progress->hide();
    return m_progress;
}

QWidget* frmComSet::setupButtons()
{
    auto* row = new QWidget(this);
    m_ok = named(new QPushButton(QStringLiteral("&OK"), row), "Command1_0");
    m_cancel = named(new QPushButton(QStringLiteral("&Cancel"), row), "Command1_1");
    m_ok->setDefault(true);
    m_traffic = named(new QPushButton(QStringLiteral("Tra&ffic..."), row), "Command4");
    m_traffic->setToolTip(QStringLiteral("Shows the frames on the line"));
    m_traffic->setAutoDefault(false);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_traffic);
    layout->addStretch();
    layout->addWidget(m_ok);
    layout->addWidget(m_cancel);
    return row;
}

void frmComSet::setupTabOrder()
{
    QList<QWidget*> order = {m_port, m_speed};
    for (QRadioButton* button : m_format->buttons())
        order << button;
    order << m_format->other() << m_timeOut << m_rtu << m_ascii << m_slave << m_model << m_detect << m_search
          << m_modelString << m_stop << m_traffic << m_ok << m_cancel;
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

// The array comes last: its index would count for the single controls behind it.
void frmComSet::registerControls()
{
    m_registry = std::make_unique<platform::ControlRegistry>(*this, QStringLiteral("frmComSet"));
    for (QGroupBox* frame : m_frames)
        m_registry->add(frame, frame->objectName());
    for (QLabel* label : m_labels)
        m_registry->add(label, label->objectName());
    QWidget* const single[] = {m_port,        m_speed,  m_rtu,  m_ascii,  m_slave,   m_model,
                               m_modelString, m_detect, m_stop, m_search, m_timeOut, m_traffic};
    for (QWidget* control : single)
        m_registry->add(control, control->objectName());
    for (QRadioButton* button : m_format->buttons())
        m_registry->add(button, button->objectName());
    m_registry->add(m_ok, QStringLiteral("Command1"), 0);
    m_registry->add(m_cancel, QStringLiteral("Command1"), 1);
}

void frmComSet::nameFields()
{
    for (const QLabel* label : m_labels)
        platform::nameField(*label->buddy(), label->text());
    platform::nameField(*m_error, m_labels[0]->text());
    platform::nameField(*m_warning, m_frames[1]->title());
}

void frmComSet::connectControls()
{
    connect(m_port, &QComboBox::currentTextChanged, this, &frmComSet::showPortError);
    connect(m_portLook.get(), &platform::Timer::timeout, m_port, &PortField::look);
    connect(m_format, &FormatChoice::changed, this, &frmComSet::showLineWarning);
    connect(m_rtu, &QRadioButton::toggled, this, &frmComSet::showLineWarning);
    // Both: a hand may also pick the entry that is selected already.
    connect(m_model, &QComboBox::currentIndexChanged, this, &frmComSet::onModelPicked);
    connect(m_model, &QComboBox::activated, this, &frmComSet::onModelPicked);
    connect(m_detect, &QPushButton::clicked, this, &frmComSet::onDetect);
    connect(m_search, &QPushButton::clicked, this, &frmComSet::onSearch);
    connect(m_traffic, &QPushButton::clicked, this, &frmComSet::trafficWanted);
    connect(m_stop, &QPushButton::clicked, &m_session, &ComSetSession::stop);
    connect(m_ok, &QPushButton::clicked, this, &frmComSet::onOk);
    connect(m_cancel, &QPushButton::clicked, this, &frmComSet::leave);
    connect(&m_session, &ComSetSession::asking, this, &frmComSet::showProgress);
    connect(&m_session, &ComSetSession::asked, this, &frmComSet::hideProgress);
}

void frmComSet::fill(const ComSetFields& fields)
{
    m_port->fill(fields.port);
    m_timeOut->setText(fields.timeOutText);
    m_timeOut->setPlaceholderText(QString::number(m_session.timeOutSeconds() * platform::kMsPerSecond));
    m_model->addItems(platform::visibleTexts(m_session.modelCodes()));
    showLine(fields);
    showFields(fields);
    showPortError();
    showLineWarning();
    m_portLook->start(kPortLookMs);
}

void frmComSet::showLine(const ComSetFields& fields)
{
    m_speed->clear();
    m_speed->addItems(platform::visibleTexts(m_session.speedTexts()));
    m_speed->setCurrentIndex(static_cast<int>(m_session.speedTexts().indexOf(fields.speedText)));
    m_format->select(fields.chara, m_session.otherChara());
    (fields.ascii ? m_ascii : m_rtu)->setChecked(true);
    m_slave->setText(fields.slaveText);
}

ComSetFields frmComSet::readFields() const
{
    ComSetFields fields;
    fields.port = m_port->choice();
    fields.speedText = m_session.speedTexts().value(m_speed->currentIndex());
    fields.chara = m_format->chara();
    fields.timeOutText = m_timeOut->text();
    fields.ascii = m_ascii->isChecked();
    fields.slaveText = m_slave->text();
    fields.modelPosition = m_model->currentIndex();
    fields.modelString = modelString();
    return fields;
}

// The model only: a detection changes nothing else. It keeps the controller's own string, whatever the list says.
void frmComSet::showFields(const ComSetFields& fields)
{
    const QSignalBlocker blocker(m_model);
    m_model->setCurrentIndex(fields.modelPosition);
    showModelString(fields.modelString);
}

void frmComSet::showModelString(const QString& modelString)
{
    m_heldModelString = modelString;
    m_modelString->setText(shownModelString());
}

QString frmComSet::shownModelString() const
{
    const bool isNone = m_heldModelString == modelcodes::kNothing;
    return platform::visibleText(isNone ? m_library.tranStr(m_heldModelString) : m_heldModelString);
}

// A string that nobody typed over goes on as it came.
QString frmComSet::modelString() const
{
    const QString text = m_modelString->text();
    return text == shownModelString() ? m_heldModelString : text;
}

void frmComSet::showPortError()
{
    showNotice(*m_error, m_session.portError(m_port->choice()));
}

void frmComSet::showLineWarning()
{
    showNotice(*m_warning, m_session.lineWarning(readFields()));
}

void frmComSet::showNotice(QLabel& label, const QString& text)
{
    label.setText(platform::visibleLines(text));
    label.setVisible(!text.isEmpty());
    growForNotices();
}

// A window does not grow by itself for a text that wraps.
void frmComSet::growForNotices()
{
    layout()->activate();
    const int needed = layout()->totalHeightForWidth(width());
    if (needed > height())
        resize(width(), needed);
}

void frmComSet::showProgress(const QString& address)
{
    m_progressText->setText(
        platform::visibleText(m_library.tranStr(QStringLiteral("Asking the controller...")) + u' ' + address));
    enableControls(false);
    m_progress->show();
    m_stop->setFocus();
}

void frmComSet::hideProgress()
{
    m_progress->hide();
    enableControls(true);
    showPortError();
}

void frmComSet::enableControls(bool enabled)
{
    for (QGroupBox* frame : m_frames)
        frame->setEnabled(enabled);
    for (QPushButton* button : {m_detect, m_ok, m_cancel})
        button->setEnabled(enabled);
}

void frmComSet::onModelPicked(int position)
{
    const QString text = m_session.pickModel(position);
    if (!text.isEmpty())
        showModelString(text);
}

void frmComSet::onDetect()
{
    ComSetFields fields = readFields();
    m_session.detect(fields);
    showFields(fields);
    wrongField(fields, *m_ok).setFocus();
}

// otherwise: where there is none.
QWidget& frmComSet::wrongField(const ComSetFields& fields, QWidget& otherwise) const
{
    if (!ComSetSession::isPortSound(fields.port))
        return *m_port;
    if (!m_session.slaveNumber(fields))
        return *m_slave;
    return ComSetSession::isTimeOutRight(fields) ? otherwise : *m_timeOut;
}

void frmComSet::onSearch()
{
    ComSetFields fields = readFields();
    frmScan scan(m_session, fields, m_library, this);
    if (scan.exec() == Accepted && scan.chosen()) {
        m_session.takeFind(*scan.chosen(), fields);
        showLine(fields);
        showFields(fields);
        m_ok->setFocus();
    }
    showPortError();
}

void frmComSet::onOk()
{
    ComSetFields fields = readFields();
    const bool confirmed = m_session.confirm(fields);
    showFields(fields);
    if (!confirmed) {
        wrongField(fields, *m_port).setFocus();
        return;
    }
    hide();
    m_session.apply(fields);
    done(Accepted);
}

void frmComSet::leave()
{
    m_session.dismiss();
    done(Rejected);
}

void frmComSet::reject()
{
    if (m_session.isDetecting())
        m_session.stop();
    else
        leave();
}

void frmComSet::closeEvent(QCloseEvent* event)
{
    event->accept();
    if (!isVisible())
        return; // hidden: OK is at work, or all is done
    if (auto* scan = findChild<frmScan*>())
        scan->reject();
    m_session.stop();
    leave();
}

// Hidden by whatever way; a minimised dialog is still open.
void frmComSet::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous()) {
        m_portLook->stop();
        m_library.saveFormSize(m_placement);
    }
    QDialog::hideEvent(event);
}
