#include "CellWalk.h"
#include "ComboEditor.h"
#include "vaSpread.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>

#include <utility>

namespace platform {

namespace {

constexpr int kLongestPaste = 1000000; // characters; more than a grid of parameters can take

std::optional<WalkStep> stepAfter(QAbstractItemDelegate::EndEditHint hint)
{
    switch (hint) {
    case QAbstractItemDelegate::SubmitModelCache: // Enter
        return WalkStep::Down;
    case QAbstractItemDelegate::EditNextItem:
        return WalkStep::Right;
    case QAbstractItemDelegate::EditPreviousItem:
        return WalkStep::Left;
    default:
        return {};
    }
}

CellPlace placeOf(const QModelIndex& index)
{
    return {index.row() + 1, index.column() + 1};
}

} // namespace

QModelIndex vaSpread::indexOf(const std::optional<CellPlace>& place) const
{
    return m_grid == nullptr || !place ? QModelIndex() : m_grid->index(place->row - 1, place->col - 1);
}

void vaSpread::setCurrentCell(int col, int row)
{
    if (const QModelIndex index = indexOf(CellPlace{row, col}); index.isValid())
        setCurrentIndex(index);
}

void vaSpread::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    if (isVisible())
        executeDelayedItemsLayout(); // how far the view can scroll is not known right after a change of the grid's size
    QTableView::currentChanged(current, previous);
    if (current.isValid())
        Q_EMIT currentCellChanged(current.column() + 1, current.row() + 1);
}

void vaSpread::resizeEvent(QResizeEvent* event)
{
    const bool wasSeen =
        currentIndex().isValid() && QRect(QPoint(), event->oldSize()).intersects(visualRect(currentIndex()));
    QTableView::resizeEvent(event);
    if (wasSeen)
        scrollTo(currentIndex());
}

// Keys.

void vaSpread::keyPressEvent(QKeyEvent* event)
{
    const QModelIndex at = currentIndex();
    const bool isEditing = state() == EditingState && !hasFocus();
    if (m_grid != nullptr && at.isValid() && !isEditing && handleKey(*event, at))
        event->accept();
    else
        QTableView::keyPressEvent(event);
}

bool vaSpread::handleKey(const QKeyEvent& event, const QModelIndex& at)
{
    if (event.matches(QKeySequence::Copy)) {
        requestCopy();
    } else if (event.matches(QKeySequence::Paste)) {
        requestPaste();
    } else if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) {
        Q_EMIT enterPressed(at.column() + 1, at.row() + 1);
    } else if (event.key() == Qt::Key_Space) {
        if (!pressButton(at))
            openList(at);
    } else if (event.key() == Qt::Key_F4 ||
               (event.key() == Qt::Key_Down && event.modifiers().testFlag(Qt::AltModifier))) {
        openList(at);
    } else {
        return false;
    }
    return true;
}

// Home and End: the cells of the row that hold something; with Ctrl those of the whole grid.
QModelIndex vaSpread::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    QModelIndex target;
    if (m_grid != nullptr && currentIndex().isValid()) {
        const CellPlace here = placeOf(currentIndex());
        const int row = modifiers.testFlag(Qt::ControlModifier) ? 0 : here.row;
        if (action == MoveNext || action == MovePrevious)
            target = indexOf(nextEditable(*m_grid, here, action == MoveNext ? WalkStep::Right : WalkStep::Left));
        else if (action == MoveHome)
            target = indexOf(firstUsed(*m_grid, row));
        else if (action == MoveEnd)
            target = indexOf(lastUsed(*m_grid, row));
    }
    return target.isValid() ? target : QTableView::moveCursor(action, modifiers);
}

// Entries.

bool vaSpread::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event)
{
    const bool isOpen = QTableView::edit(index, trigger, event);
    // The button of a double click is still down, and its release would choose from the list.
    if (isOpen && trigger == DoubleClicked)
        m_opensListOnRelease = true;
    else if (isOpen)
        showList(index);
    return isOpen;
}

void vaSpread::showList(const QModelIndex& index)
{
    auto* combo = qobject_cast<ComboEditor*>(indexWidget(index));
    if (combo != nullptr && !combo->isListOpen())
        combo->showPopup();
}

bool vaSpread::openList(const QModelIndex& index)
{
    const bool isCombo = m_grid->cell(index.row() + 1, index.column() + 1).type == CellType::ComboBox;
    return isCombo && edit(index, AllEditTriggers, nullptr);
}

// What was entered is reported when the editor is gone: the answer may be a question, or a grid that changes.
void vaSpread::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    const std::optional<WalkStep> step = stepAfter(hint);
    const CellPlace edited = placeOf(currentIndex());
    const QPointer<vaSpread> alive(this);
    QTableView::closeEditor(editor, step ? QAbstractItemDelegate::NoHint : hint);
    m_isRefused = false;
    m_delegate.reportEntry();
    if (!alive || m_isRefused || !step || m_grid == nullptr)
        return;
    if (const QModelIndex next = indexOf(nextEditable(*m_grid, edited, *step)); next.isValid())
        setCurrentIndex(next);
}

// Once the event that ended the entry is over: a click elsewhere moves the current cell yet.
void vaSpread::refuseEntry(int col, int row, const QString& text)
{
    m_isRefused = true;
    QMetaObject::invokeMethod(
        this, [this, col, row, text] { correct(col, row, text); }, Qt::QueuedConnection);
}

void vaSpread::correct(int col, int row, const QString& text)
{
    const QModelIndex at = indexOf(CellPlace{row, col});
    if (!at.isValid() || !m_grid->cell(row, col).acceptsEntry() || !isEnabled())
        return;
    setCurrentIndex(at);
    if (!edit(at, AllEditTriggers, nullptr))
        return;
    if (QLineEdit* editor = openEditor()) {
        editor->setText(text);
        editor->selectAll();
    }
}

QLineEdit* vaSpread::openEditor() const
{
    return qobject_cast<QLineEdit*>(indexWidget(currentIndex()));
}

// The mouse.

void vaSpread::mousePressEvent(QMouseEvent* event)
{
    m_pressedAt = event->pos();
    QTableView::mousePressEvent(event);
}

void vaSpread::mouseReleaseEvent(QMouseEvent* event)
{
    const bool opensList = std::exchange(m_opensListOnRelease, false);
    QTableView::mouseReleaseEvent(event);
    if (opensList)
        showList(currentIndex());
}

void vaSpread::onClicked(const QModelIndex& index)
{
    if (!pressButton(index) && SpreadDelegate::comboArrow(visualRect(index)).contains(m_pressedAt))
        openList(index);
}

bool vaSpread::pressButton(const QModelIndex& index)
{
    const Cell& cell = m_grid->cell(index.row() + 1, index.column() + 1);
    if (!cell.acceptsClick())
        return false;
    Q_EMIT buttonClicked(index.column() + 1, index.row() + 1);
    return true;
}

// The clipboard.

std::optional<CellRange> vaSpread::selectedRange() const
{
    const QItemSelection selection = selectionModel() == nullptr ? QItemSelection() : selectionModel()->selection();
    if (!selection.isEmpty()) {
        const QItemSelectionRange& first = selection.first();
        return CellRange(first.top() + 1, first.left() + 1, first.bottom() + 1, first.right() + 1);
    }
    if (currentIndex().isValid())
        return CellRange(currentIndex().row() + 1, currentIndex().column() + 1);
    return {};
}

void vaSpread::requestCopy()
{
    if (const QLineEdit* editor = openEditor())
        editor->copy();
    else if (const auto range = selectedRange())
        Q_EMIT copyRequested(*range);
}

void vaSpread::requestPaste()
{
    if (QLineEdit* editor = openEditor()) {
        editor->paste();
        return;
    }
    const QString text = QGuiApplication::clipboard()->text().left(kLongestPaste);
    if (const auto range = selectedRange(); range && !text.isEmpty())
        Q_EMIT pasteRequested(range->col, range->row, text);
}

} // namespace platform
