#include "ComboEditor.h"
#include "vaSpread.h"

#include <QAccessible>
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
constexpr Qt::KeyboardModifiers kOtherModifiers = Qt::ShiftModifier | Qt::AltModifier | Qt::MetaModifier;

std::optional<WalkStep> stepAfter(QAbstractItemDelegate::EndEditHint hint, bool hasShift)
{
    switch (hint) {
    case QAbstractItemDelegate::SubmitModelCache: // Enter
        return hasShift ? WalkStep::Up : WalkStep::Down;
    case QAbstractItemDelegate::EditNextItem:
        return WalkStep::Next;
    case QAbstractItemDelegate::EditPreviousItem:
        return WalkStep::Previous;
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

// A screen reader hears of the grid first, then of the cell in it that the keys go to.
void vaSpread::focusInEvent(QFocusEvent* event)
{
    QTableView::focusInEvent(event);
    QMetaObject::invokeMethod(this, &vaSpread::speakCurrent, Qt::QueuedConnection);
}

void vaSpread::speakCurrent()
{
    if (!QAccessible::isActive() || !hasFocus() || !currentIndex().isValid())
        return;
    QAccessibleInterface* grid = QAccessible::queryAccessibleInterface(this);
    QAccessibleInterface* cell = grid->tableInterface()->cellAt(currentIndex().row(), currentIndex().column());
    QAccessibleEvent event(cell, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
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
        pressEnter(at, event.modifiers().testFlag(Qt::ShiftModifier) ? WalkStep::Up : WalkStep::Down);
    } else if (event.key() == Qt::Key_Space) {
        if (!pressButton(at))
            openList(at);
    } else if (event.key() == Qt::Key_F4 ||
               (event.key() == Qt::Key_Down && event.modifiers().testFlag(Qt::AltModifier))) {
        openList(at);
    } else if (const auto move = moveOf(event.key());
               move && (event.modifiers() & kOtherModifiers) == 0 && event.modifiers().testFlag(Qt::ControlModifier)) {
        setCurrentIndex(moveCursor(*move, event.modifiers())); // the selection would stay behind
    } else {
        return false;
    }
    return true;
}

// A table is opened, or what else the grid is there for is done; from other cells it goes on.
void vaSpread::pressEnter(const QModelIndex& at, WalkStep step)
{
    const QModelIndex next = indexOf(nextStop(*m_grid, placeOf(at), step));
    if (!next.isValid() || m_grid->cell(at.row() + 1, at.column() + 1).opensTable())
        Q_EMIT enterPressed(at.column() + 1, at.row() + 1);
    else
        setCurrentIndex(next);
}

std::optional<QAbstractItemView::CursorAction> vaSpread::moveOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return MoveLeft;
    case Qt::Key_Right:
        return MoveRight;
    case Qt::Key_Up:
        return MoveUp;
    case Qt::Key_Down:
        return MoveDown;
    case Qt::Key_Home:
        return MoveHome;
    case Qt::Key_End:
        return MoveEnd;
    default:
        return {};
    }
}

// A grid of parameters is walked from one to the other, any other grid as tables are.
QModelIndex vaSpread::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const auto first = m_grid == nullptr ? std::nullopt : firstParameter(*m_grid);
    const bool isToBlock = modifiers.testFlag(Qt::ControlModifier);
    const bool isArrow = action == MoveLeft || action == MoveRight || action == MoveUp || action == MoveDown;
    if (!first || (isArrow && !isToBlock))
        return QTableView::moveCursor(action, modifiers);
    if (!currentIndex().isValid())
        return indexOf(first);
    const CellPlace here = placeOf(currentIndex());
    const int row = isToBlock ? 0 : here.row;
    std::optional<CellPlace> target;
    if (isArrow)
        target = nextBlock(*m_grid, here, sideOf(action));
    else if (action == MoveNext || action == MovePrevious)
        target = nextStop(*m_grid, here, action == MoveNext ? WalkStep::Next : WalkStep::Previous);
    else if (action == MoveHome || action == MoveEnd)
        target = action == MoveHome ? firstParameter(*m_grid, row) : lastParameter(*m_grid, row);
    else
        target = parameterTowards(*m_grid, here, QTableView::moveCursor(action, modifiers).row() + 1);
    return target ? indexOf(target) : currentIndex();
}

WalkSide vaSpread::sideOf(CursorAction arrow)
{
    return arrow == MoveLeft    ? WalkSide::Left
           : arrow == MoveRight ? WalkSide::Right
           : arrow == MoveUp    ? WalkSide::Up
                                : WalkSide::Down;
}

// Entries.

bool vaSpread::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event)
{
    const bool isOpen = QTableView::edit(index, trigger, event);
    if (isOpen)
        m_edited = index;
    // These correct the old text, which any other key replaces.
    if (QLineEdit* editor = openEditor(); isOpen && (trigger == DoubleClicked || trigger == EditKeyPressed) && editor)
        editor->end(false);
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
    // Where the cursor has gone elsewhere already, it stays.
    const std::optional<WalkStep> step =
        m_edited == currentIndex() ? stepAfter(hint, m_delegate.hasShift()) : std::nullopt;
    const CellPlace edited = placeOf(m_edited);
    const QPointer<vaSpread> alive(this);
    QTableView::closeEditor(editor, step ? QAbstractItemDelegate::NoHint : hint);
    m_isRefused = false;
    m_delegate.reportEntry();
    if (!alive || m_isRefused || !step || m_grid == nullptr)
        return;
    if (const QModelIndex next = indexOf(nextStop(*m_grid, edited, *step)); next.isValid())
        setCurrentIndex(next);
}

bool vaSpread::finishEntry()
{
    QWidget* editor = indexWidget(m_edited);
    if (editor == nullptr)
        return true;
    const QPointer<vaSpread> alive(this);
    const bool isText = qobject_cast<QLineEdit*>(editor) != nullptr;
    if (isText)
        commitData(editor);
    closeEditor(editor, isText ? QAbstractItemDelegate::NoHint : QAbstractItemDelegate::RevertModelCache);
    return alive && !m_isRefused;
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
    if (pressButton(index) || !m_delegate.comboArrow(visualRect(index)).contains(m_pressedAt))
        return;
    if (m_grid->cell(index.row() + 1, index.column() + 1).sign == CellSign::Table)
        Q_EMIT markClicked(index.column() + 1, index.row() + 1);
    else
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
        Q_EMIT pasteRequested(*range, text);
}

void vaSpread::requestUndo()
{
    if (QLineEdit* editor = openEditor())
        editor->undo();
    else
        Q_EMIT undoRequested();
}

void vaSpread::requestRedo()
{
    if (QLineEdit* editor = openEditor())
        editor->redo();
    else
        Q_EMIT redoRequested();
}

} // namespace platform
