#include "frmReview.h"

#include "AccessibleNames.h"
#include "ControlRegistry.h"
#include "ProgressRow.h"
#include "RecordTable.h"
#include "ReviewDelegate.h"
#include "VisibleText.h"
#include "clsLibrary.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QHideEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const QString kReviewForm = QStringLiteral("frmReview");
const std::vector<double> kReviewWidths{26, 18, 16, 12, 46, 22, 11, 10}; // widths of a digit
constexpr QSize kReviewSize(176, 32);                                    // widths of a digit and lines
constexpr const char* kFilters[] = {"ReviewAll", "ReviewConflicts", "ReviewFailed", "ReviewAccepted"};

} // namespace

frmReview::frmReview(const clsLibrary& library, Review& review)
    : RecordWindow(library, kReviewForm, kReviewSize), m_review(review), m_model(review, library.translation())
{
    m_shown.setSourceModel(&m_model);
    setupForm();
    registerControls();
    connectForm();
    tranForm();
}

frmReview::~frmReview() = default;

ProgressView& frmReview::progress()
{
    return *m_progress;
}

void frmReview::setupForm()
{
    setWindowTitle(QStringLiteral("Review and write"));
    m_table = addTable(m_shown, QStringLiteral("tblReview"), kReviewWidths);
    m_table->setItemDelegate(new ReviewDelegate(m_table));
    m_table->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder); // as the grid has them
    m_table->setSortingEnabled(true);
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("Label1"));
    m_status->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(setupFilter());
    layout->addWidget(m_table, 1);
    layout->addWidget(m_status);
    m_progress = new ProgressRow(library(), this);
    m_stop = m_progress->stopButton();
    m_stop->setObjectName(QStringLiteral("Command1_5"));
    layout->addWidget(m_progress);
    layout->addWidget(setupButtons());
}

QWidget* frmReview::setupFilter()
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_search = new QLineEdit(row);
    m_search->setObjectName(QStringLiteral("Text1"));
    m_search->setClearButtonEnabled(true);
    m_filter = new QComboBox(row);
    m_filter->setObjectName(QStringLiteral("Combo1"));
    for (const char* filter : kFilters)
        m_filter->addItem(QLatin1String(filter));
    layout->addWidget(m_search, 1);
    layout->addWidget(m_filter);
    return row;
}

QWidget* frmReview::setupButtons()
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_send = addButton(*layout, QStringLiteral("&Write ticked"));
    m_retry = addButton(*layout, QStringLiteral("Re&try failed"));
    m_revert = addButton(*layout, QStringLiteral("&Revert"));
    m_copy = addButton(*layout, QStringLiteral("C&opy"));
    layout->addStretch();
    m_close = addButton(*layout, QStringLiteral("&Close"));
    return row;
}

void frmReview::connectForm()
{
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_shown.setSearch(text);
        showStatus();
    });
    connect(m_filter, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_shown.setShow(static_cast<ReviewFilter::Show>(index));
        showStatus();
    });
    connect(&m_model, &ReviewModel::ticked, this, &frmReview::showStatus);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmReview::showStatus);
    connect(m_table, &RecordTable::copyWanted, this, &frmReview::copy);
    connect(m_table, &RecordTable::openWanted, this, &frmReview::goToCurrent);
    connect(new QShortcut(Qt::Key_Space, m_table, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
            &frmReview::tickSelected);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] { m_search->setFocus(); });
    connect(m_send, &QPushButton::clicked, this, [this] { Q_EMIT sendWanted(m_review.ticked()); });
    connect(m_retry, &QPushButton::clicked, this, [this] { Q_EMIT sendWanted(m_review.failed()); });
    connect(m_revert, &QPushButton::clicked, this, [this] { Q_EMIT revertWanted(selectedTags()); });
    connect(m_copy, &QPushButton::clicked, this, &frmReview::copy);
    connect(m_close, &QPushButton::clicked, this, &frmReview::reject);
    connect(m_stop, &QPushButton::clicked, this, &frmReview::cancelled);
    connect(m_progress, &ProgressRow::busyChanged, this, &frmReview::showStatus);
}

void frmReview::registerControls()
{
    m_registry = std::make_unique<platform::ControlRegistry>(*this, kReviewForm);
    int index = 0;
    for (QPushButton* button : {m_send, m_retry, m_revert, m_copy, m_close, m_stop})
        m_registry->add(button, QStringLiteral("Command1"), index++);
}

void frmReview::tranForm()
{
    library().tranForm(*m_registry);
    m_model.retranslate();
    for (int i = 0; i < m_filter->count(); ++i)
        m_filter->setItemText(i, platform::visibleText(library().tranStr(QLatin1String(kFilters[i]))));
    const QString search = library().tranStr(QStringLiteral("Search in name, block and tag"));
    m_search->setPlaceholderText(platform::visibleText(search));
    platform::nameField(*m_search, search);
    platform::nameField(*m_filter, library().tranStr(QStringLiteral("Show")));
    platform::nameField(*m_table, windowTitle());
    m_table->setRowHeight();
    showStatus();
}

// The current row stays where it is.
void frmReview::reload()
{
    const int current = m_table->currentIndex().row();
    const QString tag = current < 0 ? QString() : rowAt(current).change.tag;
    m_model.reload();
    for (int row = 0; !tag.isEmpty() && row < m_shown.rowCount(); ++row) {
        if (rowAt(row).change.tag == tag)
            m_table->setCurrentIndex(m_shown.index(row, 0));
    }
    showStatus();
}

void frmReview::setObstacle(const QString& reason)
{
    m_obstacle = reason;
    showStatus();
}

void frmReview::setBusy(bool busy)
{
    m_isBusy = busy;
    showStatus();
}

void frmReview::showStatus()
{
    const QStringList tags = m_review.ticked();
    const auto ticked = tags.size();
    const bool isFree = !m_isBusy && !m_progress->isBusy();
    const bool maySend = m_obstacle.isEmpty() && isFree;
    m_send->setEnabled(maySend && ticked > 0);
    m_retry->setEnabled(maySend && !m_review.failed().isEmpty());
    m_revert->setEnabled(isFree && isChangeSelected());
    for (QPushButton* button : {m_send, m_retry})
        button->setToolTip(platform::visibleText(m_obstacle));
    QString text =
        library().tranStr(QStringLiteral("Changes: %1, ticked to be written: %2")).arg(m_review.changes()).arg(ticked);
    const bool isFiltered = m_shown.rowCount() < m_model.rowCount();
    const qsizetype hidden = isFiltered ? hiddenOf(tags) : 0;
    if (hidden > 0)
        text += u'\n' +
                library().tranStr(QStringLiteral("Ticked but not shown here: %1. They are written, too.")).arg(hidden);
    if (!m_obstacle.isEmpty())
        text += u'\n' + m_obstacle;
    m_status->setText(platform::visibleLines(text));
}

ReviewRow frmReview::rowAt(int shownRow) const
{
    return m_model.row(m_shown.mapToSource(m_shown.index(shownRow, 0)).row());
}

qsizetype frmReview::hiddenOf(const QStringList& tags) const
{
    QSet<QString> hidden(tags.begin(), tags.end());
    for (int row = 0; row < m_shown.rowCount(); ++row)
        hidden.remove(rowAt(row).change.tag);
    return hidden.size();
}

QStringList frmReview::selectedTags() const
{
    QStringList tags;
    const QModelIndexList selected = m_table->selectionModel()->selectedRows();
    for (const QModelIndex& index : selected)
        tags << rowAt(index.row()).change.tag;
    return tags;
}

// What the controller has accepted is what it holds.
bool frmReview::isChangeSelected() const
{
    const QModelIndexList selected = m_table->selectionModel()->selectedRows();
    return std::any_of(selected.begin(), selected.end(),
                       [this](const QModelIndex& index) { return rowAt(index.row()).state != ReviewState::Accepted; });
}

void frmReview::copy()
{
    copyRows(m_model.copyCaptions(), [this](int row) { return m_model.copyText(row); });
}

void frmReview::goToCurrent()
{
    if (m_table->currentIndex().isValid())
        Q_EMIT goWanted(rowAt(m_table->currentIndex().row()).change.tag);
}

// All of them as the current one is not.
void frmReview::tickSelected()
{
    const QModelIndex current = m_table->currentIndex();
    if (!current.isValid())
        return;
    const Qt::CheckState wanted = rowAt(current.row()).ticked ? Qt::Unchecked : Qt::Checked;
    const QModelIndexList selected = m_table->selectionModel()->selectedRows(ReviewModel::kName);
    for (const QModelIndex& index : selected)
        m_shown.setData(index, wanted, Qt::CheckStateRole);
}
