#include "frmHistory.h"

#include "AccessibleNames.h"
#include "ControlRegistry.h"
#include "Journal.h"
#include "RecordTable.h"
#include "VisibleText.h"
#include "clsLibrary.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const QString kHistoryForm = QStringLiteral("frmHistory");
constexpr double kHistoryWidths[HistoryModel::kColumns] = {25, 16, 26, 12, 12, 12, 16, 24, 18, 12}; // widths of a digit
constexpr QSize kHistorySize(180, 36); // widths of a digit and lines

} // namespace

frmHistory::frmHistory(const clsLibrary& library, const Journal& journal)
    : RecordWindow(library, kHistoryForm, kHistorySize), m_journal(journal), m_model(library.translation()),
      m_shown(m_model)
{
    setupForm();
    registerControls();
    connectForm();
    tranForm();
}

frmHistory::~frmHistory() = default;

void frmHistory::setupForm()
{
    setWindowTitle(QStringLiteral("History"));
    QWidget* search = setupSearch();
    m_table = addTable(m_shown, QStringLiteral("tblHistory"), {std::begin(kHistoryWidths), std::end(kHistoryWidths)});
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(HistoryModel::kTime, Qt::DescendingOrder);
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("Label3"));
    m_status->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(search);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_status);
}

QWidget* frmHistory::setupSearch()
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](auto* widget, const char* name) {
        widget->setObjectName(QLatin1String(name));
        layout->addWidget(widget);
        return widget;
    };
    m_searchLabel = add(new QLabel(QStringLiteral("&Search:"), row), "Label1");
    m_search = add(new QLineEdit(row), "Text1");
    m_searchLabel->setBuddy(m_search);
    m_dayLabel = add(new QLabel(QStringLiteral("&Day:"), row), "Label2");
    m_day = add(new QComboBox(row), "Combo1");
    m_dayLabel->setBuddy(m_day);
    layout->addStretch();
    m_copy = addButton(*layout, QStringLiteral("C&opy"));
    m_reload = addButton(*layout, QStringLiteral("&Reload"));
    m_close = addButton(*layout, QStringLiteral("&Close"));
    return row;
}

void frmHistory::connectForm()
{
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_shown.setText(text.trimmed());
        showStatus();
    });
    connect(m_day, &QComboBox::currentIndexChanged, this, &frmHistory::chooseDay);
    connect(m_copy, &QPushButton::clicked, this, &frmHistory::copy);
    connect(m_reload, &QPushButton::clicked, this, &frmHistory::reload);
    connect(m_close, &QPushButton::clicked, this, &frmHistory::reject);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_search, [this] {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    });
    connect(new QShortcut(QKeySequence::Refresh, this), &QShortcut::activated, this, &frmHistory::reload);
    connect(m_table, &RecordTable::copyWanted, this, &frmHistory::copy);
    m_table->installEventFilter(this);
}

void frmHistory::registerControls()
{
    m_registry = std::make_unique<platform::ControlRegistry>(*this, kHistoryForm);
    m_registry->add(m_searchLabel, m_searchLabel->objectName()); // a control behind an array would get its last index
    m_registry->add(m_dayLabel, m_dayLabel->objectName());
    int index = 0;
    for (QPushButton* button : {m_copy, m_reload, m_close})
        m_registry->add(button, QStringLiteral("Command1"), index++);
}

void frmHistory::tranForm()
{
    library().tranForm(*m_registry);
    m_model.retranslate();
    if (m_day->count() > 0)
        m_day->setItemText(0, platform::visibleText(library().tranStr(QStringLiteral("All days"))));
    nameFields();
    m_table->setRowHeight();
    showStatus();
}

void frmHistory::nameFields()
{
    platform::nameField(*m_search, m_searchLabel->text());
    platform::nameField(*m_day, m_dayLabel->text());
    platform::nameField(*m_table, windowTitle());
}

// The headers of a table know no keys.
bool frmHistory::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->modifiers() == Qt::AltModifier && (key->key() == Qt::Key_Up || key->key() == Qt::Key_Down)) {
        sortByCurrentColumn(key->key() == Qt::Key_Up ? Qt::AscendingOrder : Qt::DescendingOrder);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmHistory::sortByCurrentColumn(Qt::SortOrder order)
{
    const QModelIndex current = m_table->currentIndex();
    if (current.isValid())
        m_table->sortByColumn(current.column(), order);
    m_table->scrollTo(m_table->currentIndex());
}

void frmHistory::reload()
{
    JournalReading reading = m_journal.read();
    m_damagedLines = reading.damagedLines;
    m_unreadable = reading.unreadable;
    fillDays(reading);
    m_model.load(std::move(reading.entries));
    m_table->selectionModel()->setCurrentIndex(m_shown.index(0, 0), QItemSelectionModel::NoUpdate);
    m_table->scrollToTop();
    chooseDay();
}

// The days that the journal has, the newest first. The chosen one stays, also when its writes are gone.
void frmHistory::fillDays(const JournalReading& reading)
{
    const QDate chosen = m_day->currentData().toDate();
    std::vector<QDate> days;
    for (const JournalEntry& entry : reading.entries)
        days.push_back(entry.begunAt.date());
    if (chosen.isValid())
        days.push_back(chosen);
    std::sort(days.begin(), days.end(), std::greater<>());
    days.erase(std::unique(days.begin(), days.end()), days.end());
    const QSignalBlocker silent(m_day);
    m_day->clear();
    m_day->addItem(platform::visibleText(library().tranStr(QStringLiteral("All days"))));
    for (const QDate& day : days)
        m_day->addItem(day.toString(QStringLiteral("yyyy/MM/dd")), day);
    m_day->setCurrentIndex(chosen.isValid() ? m_day->findData(chosen) : 0);
}

void frmHistory::chooseDay()
{
    const QDate day = m_day->currentData().toDate();
    m_shown.setDay(day.isValid() ? std::optional(day) : std::nullopt);
    showStatus();
}

// The selected rows, or all that are shown.
void frmHistory::copy()
{
    copyRows(m_model.copyCaptions(), [this](int row) { return m_model.copyText(row); });
}

void frmHistory::showStatus()
{
    const HistoryFilter::Counts counts = m_shown.counts();
    QStringList parts{
        library().tranStr(QStringLiteral("Writes: %1, parameters: %2")).arg(counts.writes).arg(counts.parameters)};
    if (m_damagedLines > 0)
        parts << library().tranStr(QStringLiteral("damaged lines left out: %1")).arg(m_damagedLines);
    for (const QString& file : m_unreadable)
        parts << library().tranStr(QStringLiteral("%1 cannot be read")).arg(file);
    m_status->setText(platform::visibleText(parts.join(QStringLiteral("   "))));
}
