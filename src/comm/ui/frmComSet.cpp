#include "frmComSet.h"

#include "AccessibleNames.h"
#include "Clock.h"
#include "ControlRegistry.h"
#include "VisibleText.h"
#include "clsLibrary.h"
#include "frmScan.h"

#include <QCloseEvent>
#include <QComboBox>
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

constexpr int kPortCharacters = 40; // a device and the beginning of its description

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
    : QDialog(parent), m_library(parts.library), m_session(parts), m_placement(*this, QStringLiteral("frmComSet"))
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
    growForError();
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
    m_port = named(new QComboBox(frame), "Combo1");
    // A long description of an adapter must not widen the dialog.
    m_port->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_port->setMinimumContentsLength(kPortCharacters);
    // A name may be typed; the list stays what it is, and nothing is put behind what somebody types.
    m_port->setEditable(true);
    m_port->setInsertPolicy(QComboBox::NoInsert);
    m_port->setCompleter(nullptr);
    m_error = named(new QLabel(frame), "lblTrouble");
    m_error->setWordWrap(true);
    m_error->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_speed = named(new QComboBox(frame), "Combo2");
    m_eightBits = named(new QRadioButton(QStringLiteral("&8 bits, no parity"), frame), "Option7");
    m_sevenBits = named(new QRadioButton(QStringLiteral("&7 bits, even parity"), frame), "Option6");
    m_otherFormat = named(new QRadioButton(frame), "optOther");
    m_labels[0] = labelFor(m_port, "Label1", QStringLiteral("&Port:"), frame);
    m_labels[1] = labelFor(m_speed, "Label2", QStringLiteral("&Speed:"), frame);
    auto* layout = new QFormLayout(frame);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    layout->addRow(m_labels[0], m_port);
    layout->addRow(m_error);
    layout->addRow(m_labels[1], m_speed);
    layout->addRow(QString(), sideBySide({m_eightBits, m_sevenBits, m_otherFormat}));
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
    frame->setLayout(sideBySide({m_rtu, m_ascii}));
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
    m_labels[2] = labelFor(m_slave, "Label3", QStringLiteral("Slave &number (1 to 99):"), frame);
    m_labels[3] = labelFor(m_model, "Label4", QStringLiteral("&Model:"), frame);
    m_labels[4] = labelFor(m_modelString, "Label5", QStringLiteral("Model s&tring:"), frame);
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
    m_stop = named(new QPushButton(QStringLiteral("&Stop"), m_progress), "cmdStop");
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
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    layout->addWidget(m_ok);
    layout->addWidget(m_cancel);
    return row;
}

void frmComSet::setupTabOrder()
{
    QWidget* const order[] = {m_port,  m_speed, m_eightBits, m_sevenBits, m_otherFormat, m_timeOut, m_rtu, m_ascii,
                              m_slave, m_model, m_detect,    m_search,    m_modelString, m_stop,    m_ok,  m_cancel};
    for (size_t i = 1; i < std::size(order); ++i)
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
    QWidget* const single[] = {m_port,  m_speed,       m_eightBits, m_sevenBits, m_rtu,    m_ascii,  m_slave,
                               m_model, m_modelString, m_detect,    m_stop,      m_search, m_timeOut};
    for (QWidget* control : single)
        m_registry->add(control, control->objectName());
    m_registry->add(m_ok, QStringLiteral("Command1"), 0);
    m_registry->add(m_cancel, QStringLiteral("Command1"), 1);
}

void frmComSet::nameFields()
{
    for (const QLabel* label : m_labels)
        platform::nameField(*label->buddy(), label->text());
    platform::nameField(*m_error, m_labels[0]->text());
}

void frmComSet::connectControls()
{
    connect(m_port, &QComboBox::currentTextChanged, this, &frmComSet::showPortError);
    // Both: a hand may also pick the entry that is selected already.
    connect(m_model, &QComboBox::currentIndexChanged, this, &frmComSet::onModelPicked);
    connect(m_model, &QComboBox::activated, this, &frmComSet::onModelPicked);
    connect(m_detect, &QPushButton::clicked, this, &frmComSet::onDetect);
    connect(m_search, &QPushButton::clicked, this, &frmComSet::onSearch);
    connect(m_stop, &QPushButton::clicked, &m_session, &ComSetSession::stop);
    connect(m_ok, &QPushButton::clicked, this, &frmComSet::onOk);
    connect(m_cancel, &QPushButton::clicked, this, &frmComSet::leave);
    connect(&m_session, &ComSetSession::asking, this, &frmComSet::showProgress);
    connect(&m_session, &ComSetSession::asked, this, &frmComSet::hideProgress);
}

void frmComSet::fill(const ComSetFields& fields)
{
    m_port->addItems(platform::visibleTexts(m_session.portTexts()));
    m_port->addItems(platform::visibleTexts(m_session.recentPorts()));
    m_port->setPlaceholderText(platform::visibleText(m_session.triedPortText()));
    m_timeOut->setText(fields.timeOutText);
    m_timeOut->setPlaceholderText(QString::number(m_session.timeOutSeconds() * platform::kMsPerSecond));
    m_model->addItems(platform::visibleTexts(m_session.modelCodes()));
    m_port->lineEdit()->setPlaceholderText(m_port->placeholderText());
    showLine(fields);
    showFields(fields);
    showPortError();
}

void frmComSet::showLine(const ComSetFields& fields)
{
    m_port->setCurrentIndex(fields.portPosition);
    if (!fields.portName.isEmpty())
        m_port->setEditText(platform::visibleText(fields.portName));
    m_speed->clear();
    m_speed->addItems(platform::visibleTexts(m_session.speedTexts()));
    m_speed->setCurrentIndex(static_cast<int>(m_session.speedTexts().indexOf(fields.speedText)));
    showChara(fields.chara);
    (fields.ascii ? m_ascii : m_rtu)->setChecked(true);
    m_slave->setText(fields.slaveText);
}

// A format beside the usual two is a choice for as long as it is the stored one.
void frmComSet::showChara(const QString& chara)
{
    const QString other = m_session.otherChara();
    m_otherFormat->setText(platform::visibleText(other));
    m_otherFormat->setVisible(!other.isEmpty());
    (!other.isEmpty() && chara == other                  ? m_otherFormat
     : chara == QLatin1String(ComSetSession::kSevenBits) ? m_sevenBits
                                                         : m_eightBits)
        ->setChecked(true);
}

QString frmComSet::chosenChara() const
{
    if (m_otherFormat->isChecked())
        return m_session.otherChara();
    return QLatin1String(m_sevenBits->isChecked() ? ComSetSession::kSevenBits : ComSetSession::kEightBits);
}

ComSetFields frmComSet::readFields() const
{
    ComSetFields fields;
    readPort(fields);
    fields.speedText = m_session.speedTexts().value(m_speed->currentIndex());
    fields.chara = chosenChara();
    fields.timeOutText = m_timeOut->text();
    fields.ascii = m_ascii->isChecked();
    fields.slaveText = m_slave->text();
    fields.modelPosition = m_model->currentIndex();
    fields.modelString = modelString();
    return fields;
}

// An entry of the list stands for what it was made from, whatever is shown of it.
void frmComSet::readPort(ComSetFields& fields) const
{
    const QString text = m_port->currentText();
    const int entry = m_port->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    fields.portPosition = entry < ComSetSession::kPorts ? entry : -1;
    fields.portName = m_session.recentPorts().value(entry - ComSetSession::kPorts);
    if (entry < 0)
        ComSetSession::choosePort(text, fields);
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
    m_modelString->setText(platform::visibleText(modelString));
}

// A string that nobody typed over goes on as it came.
QString frmComSet::modelString() const
{
    const QString text = m_modelString->text();
    return text == platform::visibleText(m_heldModelString) ? m_heldModelString : text;
}

void frmComSet::showPortError()
{
    ComSetFields fields;
    readPort(fields);
    const QString error = m_session.portError(fields);
    m_error->setText(platform::visibleLines(error));
    m_error->setVisible(!error.isEmpty());
    growForError();
}

// A window does not grow by itself for a text that wraps.
void frmComSet::growForError()
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
    if (!ComSetSession::isWellNamed(fields))
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
    if (!event->spontaneous())
        m_library.saveFormSize(m_placement);
    QDialog::hideEvent(event);
}
