#include "frmBackups.h"

#include "AccessibleNames.h"
#include "BackupComparison.h"
#include "ControlRegistry.h"
#include "MessagePresenter.h"
#include "RecordTable.h"
#include "VisibleText.h"
#include "clsKX.h"
#include "clsLibrary.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

const QString kFormName = QStringLiteral("frmBackups");
constexpr double kWidths[BackupsModel::kColumns] = {24, 20, 60, 14}; // widths of a digit
constexpr QSize kDesignedSize(130, 24);                              // widths of a digit and lines

} // namespace

frmBackups::frmBackups(clsKX& kx, Load load)
    : RecordWindow(kx.library(), kFormName, kDesignedSize), m_kx(kx), m_load(std::move(load)), m_reader(kx.library()),
      m_model(kx.library().translation())
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
    setWindowTitle(QStringLiteral("Backups"));
    m_table = addTable(m_shown, QStringLiteral("tblBackups"), {std::begin(kWidths), std::end(kWidths)});
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(BackupsModel::kTime, Qt::DescendingOrder);
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("Label1"));
    m_status->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(setupButtons());
    layout->addWidget(m_table, 1);
    layout->addWidget(m_status);
}

QWidget* frmBackups::setupButtons()
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    m_loadButton = addButton(*layout, QStringLiteral("&Load as changes"));
    m_copy = addButton(*layout, QStringLiteral("C&opy"));
    m_reload = addButton(*layout, QStringLiteral("&Reload"));
    m_thisModel = new QCheckBox(QStringLiteral("&This model only"), row);
    m_thisModel->setObjectName(QStringLiteral("Check1"));
    m_thisModel->setChecked(true);
    layout->addWidget(m_thisModel);
    layout->addStretch();
    m_close = addButton(*layout, QStringLiteral("Clo&se"));
    return row;
}

void frmBackups::connectForm()
{
    connect(m_loadButton, &QPushButton::clicked, this, &frmBackups::loadCurrent);
    connect(m_copy, &QPushButton::clicked, this, &frmBackups::copy);
    connect(m_reload, &QPushButton::clicked, this, &frmBackups::reload);
    connect(m_close, &QPushButton::clicked, this, &frmBackups::reject);
    connect(m_thisModel, &QCheckBox::toggled, this, &frmBackups::reload);
    connect(m_table, &RecordTable::openWanted, this, &frmBackups::loadCurrent);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentChanged, this, &frmBackups::enableLoad);
    connect(m_table, &RecordTable::copyWanted, this, &frmBackups::copy);
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
    library().tranForm(*m_registry);
    m_model.retranslate();
    platform::nameField(*m_table, windowTitle());
    m_table->setRowHeight();
    showStatus();
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
        library().showMessage(set.error(), MessageStyle::kExclamation);
    refresh();
}

// The selected rows, or all of them.
void frmBackups::copy()
{
    copyRows(m_model.copyCaptions(), [this](int row) { return m_model.copyText(row); });
}

void frmBackups::enableLoad()
{
    m_loadButton->setEnabled(isLoadable(currentRow()));
}

void frmBackups::showStatus()
{
    QStringList parts{library().tranStr(QStringLiteral("Backups: %1")).arg(m_model.rowCount())};
    if (m_unreadable > 0)
        parts << library().tranStr(QStringLiteral("Files that cannot be read: %1")).arg(m_unreadable);
    m_status->setText(platform::visibleLines(parts.join(QStringLiteral("   "))));
}
