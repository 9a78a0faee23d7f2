#include "frmBackups.h"

#include "AccessibleNames.h"
#include "BackupComparison.h"
#include "ControlRegistry.h"
#include "GridModel.h"
#include "MessagePresenter.h"
#include "VisibleText.h"
#include "clsKX.h"
#include "clsLibrary.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QHideEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const QString kFormName = QStringLiteral("frmBackups");
constexpr double kWidths[BackupsModel::kColumns] = {24, 20, 60, 14}; // average characters
constexpr QSize kDesignedSize(130, 24);                              // average characters and lines

} // namespace

frmBackups::frmBackups(clsKX& kx, Load load)
    : QDialog(nullptr, Qt::Window), m_kx(kx), m_library(kx.library()), m_load(std::move(load)), m_reader(kx.library()),
      m_model(m_library.translation()), m_placement(*this, kFormName)
{
    m_shown.setSourceModel(&m_model);
    m_shown.setSortRole(BackupsModel::kSortRole);
    setupForm();
    registerControls();
    connectForm();
    tranForm();
}

frmBackups::~frmBackups() = default;

void frmBackups::setupForm()
{
    setObjectName(kFormName);
    setWindowTitle(QStringLiteral("Backups"));
    setupTable();
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("Label1"));
    m_status->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(setupButtons());
    layout->addWidget(m_table, 1);
    layout->addWidget(m_status);
    resize(kDesignedSize.width() * fontMetrics().averageCharWidth(),
           kDesignedSize.height() * fontMetrics().lineSpacing());
}

QWidget* frmBackups::setupButtons()
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    int index = 0;
    const auto add = [&](const QString& caption) {
        auto* button = new QPushButton(caption, row);
        button->setObjectName(QStringLiteral("Command1_%1").arg(index++));
        button->setAutoDefault(false); // Enter belongs to the table
        layout->addWidget(button);
        return button;
    };
    m_loadButton = add(QStringLiteral("&Load as changes"));
    m_copy = add(QStringLiteral("C&opy"));
    m_reload = add(QStringLiteral("&Reload"));
    m_thisModel = new QCheckBox(QStringLiteral("&This model only"), row);
    m_thisModel->setObjectName(QStringLiteral("Check1"));
    m_thisModel->setChecked(true);
    layout->addWidget(m_thisModel);
    layout->addStretch();
    m_close = add(QStringLiteral("Clo&se"));
    return row;
}

void frmBackups::setupTable()
{
    m_table = new QTableView(this);
    m_table->setObjectName(QStringLiteral("tblBackups"));
    m_table->setModel(&m_shown);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setTabKeyNavigation(false);
    m_table->setWordWrap(false);
    m_table->setShowGrid(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(BackupsModel::kTime, Qt::DescendingOrder);
}

void frmBackups::connectForm()
{
    connect(m_loadButton, &QPushButton::clicked, this, &frmBackups::loadCurrent);
    connect(m_copy, &QPushButton::clicked, this, &frmBackups::copy);
    connect(m_reload, &QPushButton::clicked, this, &frmBackups::reload);
    connect(m_close, &QPushButton::clicked, this, &frmBackups::reject);
    connect(m_thisModel, &QCheckBox::toggled, this, &frmBackups::reload);
    connect(m_table, &QTableView::doubleClicked, this, &frmBackups::loadCurrent);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentChanged, this, &frmBackups::enableLoad);
    m_table->installEventFilter(this);
}

void frmBackups::registerControls()
{
    m_registry = std::make_unique<platform::ControlRegistry>(*this, kFormName);
    m_registry->add(m_thisModel, QStringLiteral("Check1")); // a control behind an array would get its last index
    int index = 0;
    for (QPushButton* button : {m_loadButton, m_copy, m_reload, m_close})
        m_registry->add(button, QStringLiteral("Command1"), index++);
}

void frmBackups::tranForm()
{
    m_library.tranForm(*m_registry);
    m_model.retranslate();
    platform::nameField(*m_table, windowTitle());
    setRowHeight();
    showStatus();
}

void frmBackups::setRowHeight()
{
    const int space = m_table->style()->pixelMetric(QStyle::PM_FocusFrameVMargin, nullptr, m_table);
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 2 * space);
}

void frmBackups::showEvent(QShowEvent* event)
{
    if (!event->spontaneous()) {
        if (!m_isLaidOut) {
            m_library.loadFormSize(m_placement);
            loadColumns();
        }
        m_isLaidOut = true;
        reload();
        m_table->setFocus();
    }
    QDialog::showEvent(event);
}

// Hidden by whatever way; a minimised window is still open.
void frmBackups::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous()) {
        m_library.saveFormSize(m_placement);
        saveColumns();
    }
    QDialog::hideEvent(event);
}

void frmBackups::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange && m_table != nullptr)
        setRowHeight();
    QDialog::changeEvent(event);
}

// By itself the table copies one cell only.
bool frmBackups::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isEnter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (key->matches(QKeySequence::Copy))
        copy();
    else if (isEnter)
        loadCurrent();
    else
        return QDialog::eventFilter(watched, event);
    return true;
}

// Column widths are kept as those of the grids are, in average characters.
void frmBackups::loadColumns()
{
    const double unit = fontMetrics().averageCharWidth();
    QHeaderView* headers = m_table->horizontalHeader();
    platform::GridModel widths;
    widths.setMaxCols(BackupsModel::kColumns);
    for (int i = 0; i < BackupsModel::kColumns; ++i)
        widths.setColWidth(i + 1, std::max(kWidths[i], headers->sectionSizeHint(i) / unit));
    m_library.loadColSize(widths, kFormName, QString());
    for (int i = 0; i < BackupsModel::kColumns; ++i) {
        const double pixels = widths.colWidth(i + 1) * unit;
        headers->resizeSection(i, std::max(qRound(pixels), headers->minimumSectionSize()));
    }
}

void frmBackups::saveColumns() const
{
    platform::GridModel widths;
    widths.setMaxCols(BackupsModel::kColumns);
    for (int i = 0; i < BackupsModel::kColumns; ++i)
        widths.setColWidth(i + 1, static_cast<double>(m_table->columnWidth(i)) / fontMetrics().averageCharWidth());
    m_library.saveColSize(widths, kFormName, QString());
}

void frmBackups::refresh()
{
    if (!isVisible())
        return;
    if (m_listedModel == m_kx.modelString())
        compare();
    else
        reload();
}

// What a person has chosen stays chosen.
void frmBackups::reload()
{
    const int row = currentRow();
    const QString file = row < 0 ? QString() : m_model.entry(row).file;
    m_listedModel = m_kx.modelString();
    BackupList list = BackupStore(m_kx.library()).list(m_thisModel->isChecked() ? m_listedModel : QString());
    m_unreadable = list.unreadable;
    m_model.setEntries(std::move(list.entries));
    compare();
    select(file);
    showStatus();
}

void frmBackups::compare()
{
    const BackupComparison grid(m_kx.data());
    m_shown.setDynamicSortFilter(false); // sorted once, behind the last row
    for (int row = 0; row < m_model.rowCount(); ++row) {
        const bool isOfModel = m_model.entry(row).model == m_listedModel;
        const auto set = isOfModel ? m_reader.read(m_kx.data(), m_model.entry(row).file) : ParameterSet();
        m_model.setDifferences(row, isOfModel && set.ok() ? grid.differencesTo(set.value()) : std::nullopt);
    }
    m_shown.setDynamicSortFilter(true);
    enableLoad();
}

void frmBackups::select(const QString& file)
{
    const QModelIndex chosen = m_shown.mapFromSource(m_model.index(m_model.rowOf(file), 0));
    const QModelIndex current = chosen.isValid() ? chosen : m_shown.index(0, 0);
    m_table->selectionModel()->setCurrentIndex(current,
                                               QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    enableLoad();
}

int frmBackups::currentRow() const
{
    return m_shown.mapToSource(m_table->currentIndex()).row();
}

bool frmBackups::isLoadable(int row) const
{
    return row >= 0 && m_model.entry(row).model == m_kx.modelString();
}

void frmBackups::loadCurrent()
{
    const int row = currentRow();
    if (!isLoadable(row))
        return;
    const platform::Result<ParameterSet> set = m_reader.read(m_kx.data(), m_model.entry(row).file);
    if (set.ok())
        m_load(BackupComparison(m_kx.data()).writtenPart(set.value()));
    else
        m_library.showMessage(set.error(), MessageStyle::kExclamation);
    refresh();
}

// The selected rows, or all of them.
void frmBackups::copy()
{
    std::vector<int> rows;
    const QModelIndexList selected = m_table->selectionModel()->selectedRows();
    for (const QModelIndex& index : selected)
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    if (rows.empty()) {
        for (int row = 0; row < m_shown.rowCount(); ++row)
            rows.push_back(row);
    }
    QStringList lines{m_model.copyCaptions()};
    for (const int row : rows)
        lines << m_model.copyText(m_shown.mapToSource(m_shown.index(row, 0)).row());
    QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}

void frmBackups::enableLoad()
{
    m_loadButton->setEnabled(isLoadable(currentRow()));
}

void frmBackups::showStatus()
{
    QStringList parts{m_library.tranStr(QStringLiteral("%1 backups")).arg(m_model.rowCount())};
    if (m_unreadable > 0)
        parts << m_library.tranStr(QStringLiteral("%1 files cannot be read")).arg(m_unreadable);
    m_status->setText(platform::visibleLines(parts.join(QStringLiteral("   "))));
}
