#include "frmScan.h"

#include "AccessibleNames.h"
#include "ControlRegistry.h"
#include "RecordTable.h"
#include "VisibleText.h"
#include "clsLibrary.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHideEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

const QString kScanForm = QStringLiteral("frmScan");
constexpr double kScanWidths[ScanModel::kColumns] = {5, 6, 7, 7, 6, 14, 8, 30}; // average characters
constexpr QSize kScanSize(85, 20);                                              // average characters and lines

} // namespace

frmScan::frmScan(ComSetSession& session, const ComSetFields& fields, const clsLibrary& library, QWidget* parent)
    : QDialog(parent), m_session(session), m_fields(fields), m_library(library), m_model(library.translation()),
      m_placement(*this, kScanForm)
{
    setupForm();
    registerControls();
    connectForm();
    tranForm();
    enableConnect();
}

frmScan::~frmScan() = default;

void frmScan::setupForm()
{
    setObjectName(kScanForm);
    setWindowTitle(QStringLiteral("Search for controllers"));
    m_table = new RecordTable(m_library, kScanForm, {std::begin(kScanWidths), std::end(kScanWidths)}, this);
    m_table->setObjectName(QStringLiteral("tblScan"));
    m_table->setModel(&m_model);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_bar = new QProgressBar(this);
    m_bar->setObjectName(QStringLiteral("ProgressBar1"));
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("Label1"));
    m_status->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_status);
    layout->addWidget(m_bar);
    layout->addWidget(setupButtons());
    resize(kScanSize.width() * fontMetrics().averageCharWidth(), kScanSize.height() * fontMetrics().lineSpacing());
}

QWidget* frmScan::setupButtons()
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    int index = 0;
    const auto add = [&](const QString& caption) {
        auto* button = new QPushButton(caption, row);
        button->setObjectName(QStringLiteral("Command1_%1").arg(index++));
        button->setAutoDefault(false);
        layout->addWidget(button);
        return button;
    };
    m_stop = add(QStringLiteral("&Stop"));
    m_connect = add(QStringLiteral("C&onnect"));
    m_close = add(QStringLiteral("C&lose"));
    m_connect->setDefault(true);
    return row;
}

void frmScan::connectForm()
{
    ControllerScan& scan = m_session.scan();
    connect(&scan, &ControllerScan::asking, this, &frmScan::showAsked);
    connect(&scan, &ControllerScan::found, this, &frmScan::add);
    connect(&scan, &ControllerScan::portFailed, this, [this](int, const QString& reason) { m_portError = reason; });
    connect(m_stop, &QPushButton::clicked, &scan, &ControllerScan::stop);
    connect(m_connect, &QPushButton::clicked, this, &frmScan::connectTo);
    connect(m_close, &QPushButton::clicked, this, &frmScan::reject);
    connect(m_table, &QAbstractItemView::doubleClicked, this, &frmScan::connectTo);
    connect(m_table, &RecordTable::copyWanted, this, &frmScan::copy);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentChanged, this, &frmScan::enableConnect);
}

void frmScan::registerControls()
{
    m_registry = std::make_unique<platform::ControlRegistry>(*this, kScanForm);
    int index = 0;
    for (QPushButton* button : {m_stop, m_connect, m_close})
        m_registry->add(button, QStringLiteral("Command1"), index++);
}

void frmScan::tranForm()
{
    m_library.tranForm(*m_registry);
    m_model.retranslate();
    platform::nameField(*m_table, windowTitle());
    platform::nameField(*m_bar, windowTitle());
    m_table->setRowHeight();
}

void frmScan::showEvent(QShowEvent* event)
{
    if (!event->spontaneous() && !m_isBegun) {
        m_isBegun = true;
        m_library.loadFormSize(m_placement);
        m_table->loadColumns();
        // When the window is there: the search returns at its end.
        QMetaObject::invokeMethod(this, &frmScan::search, Qt::QueuedConnection);
    }
    QDialog::showEvent(event);
}

// Hidden by whatever way; a minimised window is still open.
void frmScan::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous()) {
        m_session.scan().stop();
        m_library.saveFormSize(m_placement);
        m_table->saveColumns();
    }
    QDialog::hideEvent(event);
}

void frmScan::search()
{
    if (!isVisible())
        return;
    m_stop->setFocus();
    showEnd(m_session.search(m_fields));
}

void frmScan::showAsked(const LineSettings& line, int slave, int done, int total)
{
    m_bar->setRange(0, total);
    m_bar->setValue(done);
    m_status->setText(platform::visibleText(
        m_library.tranStr(QStringLiteral("Asking slave %1 at %2...")).arg(slave).arg(line.text())));
}

// The first controller is the choice until a person makes another.
void frmScan::add(const ScanFind& find)
{
    m_model.append(find);
    const bool isFirst = m_model.firstController() == m_model.rowCount() - 1;
    if (isFirst && !m_model.isConnectable(m_table->currentIndex().row()))
        m_table->selectRow(m_model.firstController());
    enableConnect();
}

void frmScan::showEnd(bool isWhole)
{
    m_stop->setEnabled(false);
    m_bar->setValue(m_bar->maximum());
    const QString text = isWhole ? QStringLiteral("The search has ended; controllers found: %1.")
                                 : QStringLiteral("The search was stopped; controllers found: %1.");
    m_status->setText(platform::visibleLines(m_portError.isEmpty() ? m_library.tranStr(text).arg(m_model.controllers())
                                                                   : m_portError));
    (m_connect->isEnabled() ? m_connect : m_close)->setFocus();
}

void frmScan::enableConnect()
{
    m_connect->setEnabled(m_model.isConnectable(m_table->currentIndex().row()));
}

void frmScan::connectTo()
{
    const int row = m_table->currentIndex().row();
    if (!m_model.isConnectable(row))
        return;
    m_chosen = m_model.find(row);
    accept();
}

void frmScan::reject()
{
    m_session.scan().stop();
    QDialog::reject();
}

void frmScan::copy()
{
    QStringList lines{m_model.copyCaptions()};
    for (const int row : m_table->chosenRows())
        lines << m_model.copyText(row);
    QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}
