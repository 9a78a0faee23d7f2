#include "frmMultiSelect.h"

#include "AccessibleNames.h"
#include "ControlRegistry.h"
#include "MessagePresenter.h"
#include "MultiSelectOwner.h"
#include "OkCancelRow.h"
#include "PaletteColors.h"
#include "RegisteredGrid.h"
#include "VisibleText.h"
#include "clsData.h"
#include "clsLibrary.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QHideEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const QString kFormName = QStringLiteral("frmMultiSelect");
constexpr int kShownRows = 20; // at first; more are scrolled
constexpr QRgb kNotFound = 0xFFC00000;

} // namespace

SelectedItem SelectedItem::of(const clsData& item)
{
    return {item.Key(), item.DataName(), item.Data()};
}

frmMultiSelect::frmMultiSelect(const clsLibrary& library, MultiSelectOwner& owner, const QString& ID, QWidget* parent)
    : QDialog(parent), m_library(library), m_operations(owner), m_id(ID), m_table(library),
      m_placement(*this, kFormName, ID)
{
    setupForm();
    registerControls();
    connectForm();
}

frmMultiSelect::~frmMultiSelect() = default;

void frmMultiSelect::Logs(Log& objErrLog, Log& objTrcLog)
{
    m_errorLog = objErrLog;
    m_traceLog = objTrcLog;
}

void frmMultiSelect::setupForm()
{
    setObjectName(kFormName);
    setWindowTitle(QStringLiteral("Selection"));
    m_caption = new QLabel(QStringLiteral("&Search:"), this);
    m_caption->setObjectName(QStringLiteral("Label1"));
    m_search = new QLineEdit(this);
    m_search->setObjectName(QStringLiteral("Text1"));
    m_search->setClearButtonEnabled(true);
    m_caption->setBuddy(m_search);
    m_sprMulti = new platform::vaSpread(this);
    m_sprMulti->setObjectName(QStringLiteral("sprMulti"));
    m_sprMulti->setGrid(&m_grid);
    m_sprMulti->showColHeaders();
    m_sprMulti->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_sprMulti->setSelectionMode(QAbstractItemView::SingleSelection);
    m_sprMulti->setTabKeyNavigation(false);
    auto* searching = new QHBoxLayout;
    searching->addWidget(m_caption);
    searching->addWidget(m_search, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(searching);
    layout->addWidget(m_sprMulti, 1);
    const platform::OkCancelRow buttons(this);
    m_ok = buttons.ok;
    m_cancel = buttons.cancel;
    layout->addWidget(buttons.row);
}

void frmMultiSelect::connectForm()
{
    connect(m_ok, &QPushButton::clicked, this, &frmMultiSelect::acceptEntry);
    connect(m_cancel, &QPushButton::clicked, this, &frmMultiSelect::reject);
    connect(m_search, &QLineEdit::textEdited, this, &frmMultiSelect::onSearch);
    connect(m_sprMulti, &platform::vaSpread::dblClick, this, &frmMultiSelect::acceptEntry);
    connect(m_sprMulti, &platform::vaSpread::enterPressed, this, &frmMultiSelect::acceptEntry);
    connect(m_sprMulti, &platform::vaSpread::currentCellChanged, this,
            [this](int, int row) { m_ok->setEnabled(m_table.isSelectable(row)); });
    m_search->installEventFilter(this);
    m_sprMulti->installEventFilter(this);
}

void frmMultiSelect::registerControls()
{
    m_registry = std::make_unique<platform::ControlRegistry>(*this, kFormName);
    m_registry->add(m_caption, QStringLiteral("Label1"));
    m_registry->add(m_search, QStringLiteral("Text1"));
    m_registry->add(std::make_unique<platform::RegisteredGrid>(*m_sprMulti, QStringLiteral("sprMulti"), std::nullopt));
    m_registry->add(m_ok, QStringLiteral("Command1"), 0);
    m_registry->add(m_cancel, QStringLiteral("Command1"), 1);
}

bool frmMultiSelect::showModeless(const SelectedItem& item, QWidget* frmOwner, bool bDisable)
{
    if (!m_table.load(m_id)) {
        m_errorLog.get().LogWrite(QStringLiteral("[KXMultiSelectFormError]%1: nothing to select from").arg(m_id));
        reject();
        m_library.showMessage(m_table.problem(), MessageStyle::kExclamation);
        return false;
    }
    const bool wasOpen = isVisible();
    if (!wasOpen) {
        m_owner.attach(*this, frmOwner, bDisable);
        setModal(bDisable);
    } else {
        m_library.saveColSize(m_grid, kFormName + m_id, QString());
    }
    fill(item);
    if (!wasOpen)
        layOut();
    show();
    raise();
    activateWindow();
    m_search->setFocus();
    selectRow(m_table.rowOf(item.storedValue)); // when its rows have their places
    return true;
}

void frmMultiSelect::fill(const SelectedItem& item)
{
    m_item = item;
    m_library.tranForm(*m_registry);
    m_table.fill(m_grid);
    const QString name = m_library.tranStr(item.name);
    setWindowTitle(platform::visibleText(
        name.isEmpty() || name == m_table.title() ? m_table.title() : m_table.title() + QStringLiteral(": ") + name));
    platform::nameField(*m_sprMulti, windowTitle());
    for (int i = 0; i < m_grid.maxCols(); ++i) {
        QHeaderView* headers = m_sprMulti->horizontalHeader();
        headers->resizeSection(i, std::max(headers->sectionSize(i), headers->sectionSizeHint(i)));
    }
    m_library.loadColSize(m_grid, kFormName + m_id, QString());
    m_search->clear();
    onSearch(QString());
}

// As large as the table, within reason, until a person sized the window.
void frmMultiSelect::layOut()
{
    const int frame = 2 * m_sprMulti->frameWidth();
    const QHeaderView* rows = m_sprMulti->verticalHeader();
    const int shown = std::min(rows->count(), kShownRows);
    int height = frame + m_sprMulti->horizontalHeader()->sizeHint().height();
    for (int row = 0; row < shown; ++row)
        height += rows->sectionSize(row);
    int width = frame + m_sprMulti->horizontalHeader()->length();
    if (shown < rows->count())
        width += m_sprMulti->verticalScrollBar()->sizeHint().width();
    layout()->activate();
    const QSize others = layout()->totalSizeHint() - m_sprMulti->sizeHint();
    const QMargins margins = layout()->contentsMargins();
    resize(std::max(width + margins.left() + margins.right(), layout()->totalMinimumSize().width()),
           height + others.height());
    m_library.loadFormSize(m_placement);
}

void frmMultiSelect::selectRow(int row)
{
    if (row == 0)
        m_sprMulti->setCurrentIndex(QModelIndex());
    else
        m_sprMulti->setCurrentCell(1, row);
    if (row != 0)
        m_sprMulti->scrollTo(m_sprMulti->currentIndex(), QAbstractItemView::PositionAtCenter);
    m_ok->setEnabled(m_table.isSelectable(row));
}

int frmMultiSelect::selectedRow() const
{
    return m_sprMulti->currentIndex().row() + 1;
}

// Nothing found: the selection stays and the text says so by its colour.
void frmMultiSelect::onSearch(const QString& text)
{
    const int row = text.isEmpty() ? m_table.rowOf(m_item.storedValue) : m_table.find(text);
    QPalette colors;
    if (row == 0 && !text.trimmed().isEmpty())
        colors.setColor(QPalette::Text, platform::legible(QColor(kNotFound), palette().color(QPalette::Base)));
    m_search->setPalette(colors);
    if (row != 0)
        selectRow(row);
}

void frmMultiSelect::acceptEntry()
{
    const int row = selectedRow();
    const auto settings = m_table.settingsOf(row, m_item.tag);
    if (settings.empty())
        return;
    m_traceLog.get().LogWrite(
        QStringLiteral("[KXMultiSelectFormTrace]%1: entry %2 for %3").arg(m_id).arg(row).arg(m_item.tag));
    accept();
    m_operations.setEntry(settings);
}

// The keys that move in a list move in this one while a text is typed, and a text that is typed in the list is
// searched.
bool frmMultiSelect::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (watched == m_search ? sendToGrid(key) : sendToSearch(key))
            return true;
    }
    return QDialog::eventFilter(watched, event);
}

bool frmMultiSelect::sendToGrid(const QKeyEvent& key)
{
    const bool moves = key.key() == Qt::Key_Up || key.key() == Qt::Key_Down || key.key() == Qt::Key_PageUp ||
                       key.key() == Qt::Key_PageDown;
    if (!moves)
        return false;
    if (!m_sprMulti->currentIndex().isValid())
        selectRow(1);
    else
        QCoreApplication::sendEvent(m_sprMulti, std::unique_ptr<QEvent>(key.clone()).get());
    return true;
}

bool frmMultiSelect::sendToSearch(const QKeyEvent& key)
{
    const bool isText = !key.text().isEmpty() && key.text().at(0).isPrint() &&
                        !(key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (!isText)
        return false;
    m_search->setFocus();
    QCoreApplication::sendEvent(m_search, std::unique_ptr<QEvent>(key.clone()).get());
    return true;
}

// Hidden by whatever way; a minimised window is still open.
void frmMultiSelect::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous()) {
        m_owner.release();
        m_library.saveFormSize(m_placement);
        m_library.saveColSize(m_grid, kFormName + m_id, QString());
    }
    QDialog::hideEvent(event);
}
