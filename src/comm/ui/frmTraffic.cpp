#include "frmTraffic.h"

#include "AccessibleNames.h"
#include "ControlRegistry.h"
#include "Fonts.h"
#include "RecordTable.h"
#include "TrafficDelegate.h"
#include "VisibleText.h"
#include "clsLibrary.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QHideEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

const QString kFormName = QStringLiteral("frmTraffic");
constexpr int kDetailLines = 6;
constexpr double kWidths[TrafficModel::kColumns] = {16, 14, 7, 27, 9, 26, 7, 24, 12, 40}; // widths of a digit
constexpr QSize kDesignedSize(190, 40);                                                   // widths of a digit and lines

} // namespace

frmTraffic::frmTraffic(const clsLibrary& library, const QString& logFile)
    : RecordWindow(library, kFormName, kDesignedSize), m_reader(library.context().machine.codePage, logFile),
      m_model(library.translation()), m_timer(library.context().machine.clock.makeTimer())
{
    m_shown.setSourceModel(&m_model);
    m_shown.setFilterRole(TrafficModel::kIsErrorRole);
    setupForm();
    registerControls();
    connectForm();
    tranForm();
}

frmTraffic::~frmTraffic() = default;

void frmTraffic::setupForm()
{
    setWindowTitle(QStringLiteral("Traffic"));
    m_table = addTable(m_shown, QStringLiteral("tblTraffic"), {std::begin(kWidths), std::end(kWidths)});
    m_table->setItemDelegate(new TrafficDelegate(m_table));
    m_details = new QPlainTextEdit(this);
    m_details->setObjectName(QStringLiteral("Text1"));
    m_details->setReadOnly(true);
    m_details->setTabChangesFocus(true);
    m_details->setFont(platform::fixedFont(font().pointSizeF()));
    m_details->setFixedHeight(kDetailLines * m_details->fontMetrics().lineSpacing() + 2 * m_details->frameWidth() +
                              static_cast<int>(2 * m_details->document()->documentMargin()));
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("Label1"));
    m_status->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(setupButtons());
    layout->addWidget(m_table, 1);
    layout->addWidget(m_details);
    m_counts = new QLabel(this);
    m_counts->setObjectName(QStringLiteral("Label2"));
    m_counts->setWordWrap(true);
    layout->addWidget(m_counts);
    layout->addWidget(m_status);
}

QWidget* frmTraffic::setupButtons()
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_pause = addButton(*layout, QStringLiteral("&Pause"));
    m_pause->setCheckable(true);
    m_copy = addButton(*layout, QStringLiteral("C&opy"));
    m_clear = addButton(*layout, QStringLiteral("C&lear"));
    m_errorsOnly = new QCheckBox(QStringLiteral("&Errors only"), row);
    m_errorsOnly->setObjectName(QStringLiteral("Check1"));
    layout->addWidget(m_errorsOnly);
    layout->addStretch();
    m_close = addButton(*layout, QStringLiteral("Clo&se"));
    m_reset = addButton(*layout, QStringLiteral("&Reset counts"));
    layout->removeWidget(m_reset);
    layout->insertWidget(layout->indexOf(m_errorsOnly), m_reset);
    return row;
}

void frmTraffic::connectForm()
{
    connect(m_timer.get(), &platform::Timer::timeout, this, &frmTraffic::look);
    connect(m_pause, &QPushButton::toggled, this, &frmTraffic::setPaused);
    connect(m_copy, &QPushButton::clicked, this, &frmTraffic::copy);
    connect(m_clear, &QPushButton::clicked, this, &frmTraffic::clear);
    connect(m_close, &QPushButton::clicked, this, &frmTraffic::reject);
    connect(m_reset, &QPushButton::clicked, this, [this] {
        if (m_statistics != nullptr)
            m_statistics->reset();
        showCounts();
    });
    connect(m_errorsOnly, &QCheckBox::toggled, this, &frmTraffic::showErrorsOnly);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentChanged, this, &frmTraffic::showDetails);
    connect(m_table, &RecordTable::copyWanted, this, &frmTraffic::copy);
}

void frmTraffic::registerControls()
{
    m_registry = std::make_unique<platform::ControlRegistry>(*this, kFormName);
    m_registry->add(m_errorsOnly, QStringLiteral("Check1")); // a control behind an array would get its last index
    int index = 0;
    for (QPushButton* button : {m_pause, m_copy, m_clear, m_close, m_reset})
        m_registry->add(button, QStringLiteral("Command1"), index++);
}

void frmTraffic::tranForm()
{
    library().tranForm(*m_registry);
    m_model.retranslate();
    platform::nameField(*m_table, windowTitle());
    platform::nameField(*m_details, library().tranStr(QStringLiteral("Details")));
    m_table->setRowHeight();
    showDetails();
    showStatus();
}

void frmTraffic::aboutToShow()
{
    look();
    m_timer->start(kLookMs);
    // What has the focus has a current line: the newest, not the first, which is out of sight.
    m_table->selectionModel()->setCurrentIndex(m_shown.index(m_shown.rowCount() - 1, 0), QItemSelectionModel::NoUpdate);
}

void frmTraffic::hidden()
{
    m_timer->stop();
}

void frmTraffic::look()
{
    if (isMinimized())
        return;
    LogReader::Look found = m_reader.look();
    const bool isNew = !found.entries.empty() || found.restarted || found.lost;
    const bool hasChanged = isNew || found.problem != m_problem;
    m_problem = found.problem;
    if (isNew && m_pause->isChecked())
        m_waiting.add(std::move(found));
    else if (isNew)
        add(found);
    if (hasChanged)
        showStatus();
    showCounts();
}

void frmTraffic::add(const LogReader::Look& look)
{
    QScrollBar* bar = m_table->verticalScrollBar();
    const bool follows = bar->value() >= bar->maximum();
    int removed = 0;
    const auto counting = connect(&m_shown, &QAbstractItemModel::rowsRemoved, this,
                                  [&removed](const QModelIndex&, int first, int last) { removed += last - first + 1; });
    if (look.restarted)
        m_model.appendNote(QStringLiteral("the log was started anew"), false);
    if (look.lost)
        m_model.appendNote(QStringLiteral("lines are missing here: the log was overwritten before it was read"), true);
    m_model.append(look.entries);
    disconnect(counting);
    if (follows)
        m_table->scrollToBottom();
    else // what a person looks at stays where it is
        bar->setValue(bar->value() - removed);
}

void frmTraffic::setPaused(bool paused)
{
    if (!paused) {
        for (const LogReader::Look& look : m_waiting.take())
            add(look);
    }
    showStatus();
}

// The selected rows, or all of them.
void frmTraffic::copy()
{
    const QString counts = m_counts->text().isEmpty() ? QString() : m_counts->text() + u'\n';
    copyRows(counts + m_model.copyCaptions(), [this](int row) { return m_model.copyText(row); });
}

void frmTraffic::clear()
{
    m_model.clear();
    showDetails();
    showStatus();
}

void frmTraffic::showErrorsOnly(bool only)
{
    m_shown.setFilterFixedString(only ? QStringLiteral("true") : QString());
    const QModelIndex current = m_table->currentIndex();
    if (current.isValid())
        m_table->scrollTo(current);
    else
        m_table->scrollToBottom();
}

void frmTraffic::showDetails()
{
    const QModelIndex current = m_table->currentIndex();
    m_details->setPlainText(current.isValid() ? current.data(TrafficModel::kDetailsRole).toString() : QString());
}

void frmTraffic::showCounts()
{
    m_counts->setText(m_statistics == nullptr ? QString()
                                              : platform::visibleText(m_statistics->text(library().translation())));
}

void frmTraffic::showStatus()
{
    const bool paused = m_pause->isChecked();
    m_pause->setText(
        platform::visibleText(library().tranStr(paused ? QStringLiteral("&Continue") : QStringLiteral("&Pause"))));
    QStringList parts;
    if (m_problem != LogReader::Problem::None)
        parts << problemText();
    if (paused)
        parts << library().tranStr(QStringLiteral("paused, new lines: %1")).arg(m_waiting.lines());
    parts << library()
                 .tranStr(QStringLiteral("lines: %1, with errors: %2"))
                 .arg(m_model.rowCount())
                 .arg(m_model.errors());
    parts.prepend(m_device());
    parts.removeAll(QString());
    m_status->setText(platform::visibleLines(parts.join(QStringLiteral("   "))));
}

QString frmTraffic::problemText() const
{
    const auto text = [this](const QString& english) { return library().tranStr(english).arg(m_reader.file()); };
    switch (m_problem) {
    case LogReader::Problem::None:
        return {};
    case LogReader::Problem::Missing:
        return text(QStringLiteral("Nothing was logged yet in %1."));
    case LogReader::Problem::Unreadable:
        return text(QStringLiteral("The log %1 cannot be read."));
    case LogReader::Problem::Damaged:
        return text(QStringLiteral("The log %1 is damaged."));
    }
    return {};
}
