#include "SpreadDelegate.h"

#include "ComboEditor.h"
#include "PaletteColors.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOptionButton>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

constexpr int kTextInset = 4;
constexpr int kLineInset = 8; // between lines of text
constexpr int kFieldInset = 2;
constexpr int kFieldLineShare = 24; // percent of the text colour
constexpr int kSelectionShare = 24; // percent of the selection colour
constexpr int kPaleShare = 59;      // percent of the background colour
constexpr QColor kFoundColor(0xFF, 0xB0, 0x00);
constexpr int kFoundShare = 55; // percent of it over the colour of the cell
constexpr int kComboMarkWidth = 16;
constexpr int kCornerShare = 3; // of the height of a cell
constexpr ColorRef kCornerColor = 0x0000C0;

constexpr int kLampSize = 8;
constexpr int kSwitchHeight = 12;
constexpr int kTrackShare = 40; // percent of the ink while it is on
constexpr int kDotSize = 2;
constexpr double kShadedContrast = 7; // to the colour of a button, which a style makes lighter or darker

// Round edges while it lives.
class SmoothPainting
{
public:
    explicit SmoothPainting(QPainter& painter) : m_painter(painter) { painter.setRenderHint(QPainter::Antialiasing); }
    ~SmoothPainting() { m_painter.setRenderHint(QPainter::Antialiasing, false); }
    SmoothPainting(const SmoothPainting&) = delete;
    SmoothPainting& operator=(const SmoothPainting&) = delete;

private:
    QPainter& m_painter;
};

const GridModel& gridOf(const QModelIndex& index)
{
    return *static_cast<const GridModel*>(index.model());
}

const Cell& cellAt(const QModelIndex& index)
{
    return gridOf(index).cell(index.row() + 1, index.column() + 1);
}

// The text of a cell while it is edited: the frame shows that keys go there.
class CellLineEdit final : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        constexpr int kFrameWidth = 2;
        QLineEdit::paintEvent(event);
        QPainter painter(this);
        painter.setPen(
            QPen(legible(palette().color(QPalette::Highlight), palette().color(QPalette::Base)), kFrameWidth));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
};

} // namespace

SpreadDelegate::SpreadDelegate(GridFonts& fonts, QObject* parent) : QStyledItemDelegate(parent), m_fonts(fonts) {}

double WidgetTextMeasure::widthUnits(const QString& text, const CellFont& font) const
{
    return m_fonts.face(font).width(text) / m_fonts.face(m_unitFont()).metrics.averageCharWidth();
}

double WidgetTextMeasure::heightPoints(const QString& text, const CellFont& font) const
{
    return text.isEmpty() ? 0 : (m_fonts.face(font).metrics.height() + kLineInset) / pixelsPerPoint();
}

void SpreadDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const Cell& cell = cellAt(index);
    const QColor back = backOf(option, index);
    painter->save();
    painter->fillRect(option.rect, back);
    const GridFonts::Face& face = m_fonts.face(gridOf(index).fontOf(cell));
    painter->setFont(face.font);
    const QColor text = shown(paintColor(cell.locked ? gridOf(index).grayColor() : cell.foreColor), option.palette);
    const bool isShaded = cell.type == CellType::Button && cell.sign == CellSign::None;
    const QColor ink = legible(text, back, cell.locked ? kOffContrast : isShaded ? kShadedContrast : kTextContrast);
    const QRect place = paintControl(painter, option, cell, back, ink);
    painter->setPen(ink);
    paintText(painter, place, static_cast<Qt::Alignment>(index.data(Qt::TextAlignmentRole).toInt()), cell, face);
    if (cell.marked)
        paintCorner(painter, option, back);
    const bool isFoundNow =
        isFound(index) && (option.state & QStyle::State_Selected) != 0; // the focus is in the search
    if ((option.state & QStyle::State_HasFocus) != 0 || isFoundNow)
        paintFocus(painter, option, back);
    painter->restore();
}

// What tells how the cell is used; returns the room that is left for its text.
QRect SpreadDelegate::paintControl(QPainter* painter, const QStyleOptionViewItem& option, const Cell& cell,
                                   const QColor& back, const QColor& ink) const
{
    const int inset = m_fonts.scaled(kTextInset);
    QRect place = option.rect.adjusted(inset, 0, -inset, 0);
    if (cell.sign == CellSign::State) {
        place.setLeft(paintLamp(painter, place, cell.value != 0, ink) + inset);
        return place;
    }
    if (cell.sign == CellSign::Switch)
        place.setRight(paintSwitch(painter, place, cell.value != 0, back, ink) - inset);
    else if (cell.type == CellType::Button)
        paintButton(painter, option, cell, back);
    if (cell.type == CellType::ComboBox || cell.sign == CellSign::Table)
        place.setRight(place.right() - m_fonts.scaled(kComboMarkWidth));
    if (cell.type == CellType::ComboBox)
        paintComboMark(painter, option, back);
    if (cell.sign == CellSign::Table)
        paintTableMark(painter, comboArrow(option.rect), ink);
    if (cell.acceptsEntry() || cell.sign != CellSign::None)
        paintField(painter, option, back);
    return place;
}

// A ring, filled while the state is on; its right edge is returned.
int SpreadDelegate::paintLamp(QPainter* painter, const QRect& place, bool isOn, const QColor& ink) const
{
    const int size = m_fonts.scaled(kLampSize);
    const QRectF lamp(place.left() + 1, place.center().y() - size / 2.0 + 0.5, size, size);
    const SmoothPainting smooth(*painter);
    painter->setPen(QPen(ink, 1));
    painter->setBrush(isOn ? QBrush(ink) : QBrush());
    painter->drawEllipse(lamp);
    return static_cast<int>(lamp.right()) + 1;
}

// A track with its knob on the side of the state; its left edge is returned.
int SpreadDelegate::paintSwitch(QPainter* painter, const QRect& place, bool isOn, const QColor& back,
                                const QColor& ink) const
{
    const double height = std::min(m_fonts.scaled(kSwitchHeight), place.height() - 4);
    const QRectF track(place.right() - 2 * height, place.center().y() - height / 2 + 0.5, 2 * height, height);
    const QRectF knob(isOn ? track.right() - height : track.left(), track.top(), height, height);
    const SmoothPainting smooth(*painter);
    painter->setPen(QPen(ink, 1));
    painter->setBrush(isOn ? mixed(ink, back, kTrackShare) : back);
    painter->drawRoundedRect(track, height / 2, height / 2);
    painter->setBrush(ink);
    painter->drawEllipse(knob);
    return static_cast<int>(track.left());
}

// Three dots: more opens.
void SpreadDelegate::paintTableMark(QPainter* painter, const QRect& place, const QColor& ink) const
{
    const int size = m_fonts.scaled(kDotSize);
    for (int dot = -1; dot <= 1; ++dot)
        painter->fillRect(QRect(place.center() + QPoint(dot * 2 * size - size / 2, 1), QSize(size, size)), ink);
}

void SpreadDelegate::setHighlights(const std::vector<CellPlace>& places)
{
    m_highlights.clear();
    for (const CellPlace& place : places)
        m_highlights.insert({place.row, place.col});
}

bool SpreadDelegate::isFound(const QModelIndex& index) const
{
    return m_highlights.contains({index.row() + 1, index.column() + 1});
}

QColor SpreadDelegate::backOf(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QColor back = shown(paintColor(cellAt(index).backColor), option.palette);
    if (isFound(index))
        back = mixed(kFoundColor, back, kFoundShare);
    const bool isSelected = (option.state & QStyle::State_Selected) != 0;
    return isSelected ? mixed(option.palette.color(QPalette::Highlight), back, kSelectionShare) : back;
}

QColor SpreadDelegate::shown(const QColor& color, const QPalette& palette) const
{
    return m_isPale ? mixed(palette.color(QPalette::Base), color, kPaleShare) : color;
}

// Cells have the colours of their definition: the rectangle is told from each of them, on light and dark desktops.
void SpreadDelegate::paintFocus(QPainter* painter, const QStyleOptionViewItem& option, const QColor& back) const
{
    painter->setPen(QPen(legible(option.palette.color(QPalette::Highlight), back), 2));
    painter->setBrush(Qt::NoBrush); // signs and the corner leave theirs
    painter->drawRect(option.rect.adjusted(1, 1, -1, -1));
}

// In the upper corner where the text of a number is not.
void SpreadDelegate::paintCorner(QPainter* painter, const QStyleOptionViewItem& option, const QColor& back)
{
    const QPoint corner = option.rect.topLeft();
    const int side = option.rect.height() / kCornerShare;
    const QPolygon triangle({corner, corner + QPoint(side, 0), corner + QPoint(0, side)});
    painter->setPen(Qt::NoPen);
    painter->setBrush(legible(paintColor(kCornerColor), back));
    painter->drawPolygon(triangle);
}

// One line that fits its cell, which nearly every text does, needs no layout.
void SpreadDelegate::paintText(QPainter* painter, const QRect& place, Qt::Alignment align, const Cell& cell,
                               const GridFonts::Face& face) const
{
    const QString text = cell.shownText();
    if (text.isEmpty())
        return;
    const double room = place.width() - face.width(text);
    if (room < 0 && !text.contains(u'\n')) {
        // Cut where it can be seen: the end of a number alone is another number.
        painter->drawText(place, static_cast<int>(align), face.metrics.elidedText(text, Qt::ElideRight, place.width()));
        return;
    }
    if (text.contains(u'\n')) {
        painter->drawText(place, static_cast<int>(align), text);
        return;
    }
    const double left = align.testFlag(Qt::AlignRight) ? room : align.testFlag(Qt::AlignHCenter) ? room / 2 : 0;
    const double base = (place.height() + face.metrics.ascent() - face.metrics.descent()) / 2;
    painter->drawText(QPointF(place.left() + left, place.top() + base), text);
}

// A line below what can be entered, so that it is told from what the controller only shows.
void SpreadDelegate::paintField(QPainter* painter, const QStyleOptionViewItem& option, const QColor& back) const
{
    const QColor line = mixed(option.palette.color(QPalette::Text), back, kFieldLineShare);
    const QRect field = option.rect.adjusted(kFieldInset, 0, -kFieldInset, -1);
    painter->fillRect(QRect(field.left(), field.bottom(), field.width(), 1), line);
}

void SpreadDelegate::paintButton(QPainter* painter, const QStyleOptionViewItem& option, const Cell& cell,
                                 const QColor& back) const
{
    QStyleOptionButton button;
    button.rect = option.rect.adjusted(1, 1, -1, -1);
    button.state = QStyle::State_Enabled | (cell.value != 0 ? QStyle::State_On : QStyle::State_Raised);
    button.palette = paletteOn(back, option.palette);
    QApplication::style()->drawControl(QStyle::CE_PushButtonBevel, &button, painter);
}

void SpreadDelegate::paintComboMark(QPainter* painter, const QStyleOptionViewItem& option, const QColor& back) const
{
    QStyleOption mark;
    mark.rect = comboArrow(option.rect).adjusted(3, 3, -3, -3);
    mark.palette = paletteOn(back, option.palette);
    mark.state = QStyle::State_Enabled;
    QApplication::style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &mark, painter);
}

// A style keeps a picture for each palette that it is given. So there is one for each colour, not one for each
// painting.
const QPalette& SpreadDelegate::paletteOn(const QColor& back, const QPalette& desktop) const
{
    if (m_desktopPalette != desktop.cacheKey())
        m_palettes.clear();
    m_desktopPalette = desktop.cacheKey();
    const auto known = m_palettes.constFind(back.rgba());
    if (known != m_palettes.cend())
        return *known;
    QPalette palette = desktop;
    palette.setColor(QPalette::Button, back);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, legible(desktop.color(role), back));
    return *m_palettes.insert(back.rgba(), palette);
}

QRect SpreadDelegate::comboArrow(const QRect& cell) const
{
    const int width = m_fonts.scaled(kComboMarkWidth);
    return {cell.right() - width, cell.top(), width, cell.height()};
}

QWidget* SpreadDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const
{
    Q_UNUSED(option);
    m_entry.reset();
    QWidget* editor =
        cellAt(index).type == CellType::ComboBox ? createComboEditor(parent, index) : createLineEditor(parent, index);
    editor->setFont(m_fonts.face(gridOf(index).fontOf(cellAt(index))).font);
    editor->setAccessibleName(index.data(Qt::AccessibleTextRole).toString());
    return editor;
}

QWidget* SpreadDelegate::createComboEditor(QWidget* parent, const QModelIndex& index) const
{
    auto* combo = new ComboEditor(parent);
    combo->addItems(visibleTexts(cellAt(index).comboList));
    for (int i = 0; i < combo->count(); ++i)
        combo->setItemData(i, index.data(Qt::TextAlignmentRole), Qt::TextAlignmentRole);
    auto* self = const_cast<SpreadDelegate*>(this);
    connect(combo, &ComboEditor::chosen, self, [self, combo] {
        Q_EMIT self->commitData(combo);
        Q_EMIT self->closeEditor(combo);
    });
    connect(combo, &ComboEditor::dismissed, self,
            [self, combo] { Q_EMIT self->closeEditor(combo, QAbstractItemDelegate::RevertModelCache); });
    return combo;
}

QWidget* SpreadDelegate::createLineEditor(QWidget* parent, const QModelIndex& index) const
{
    constexpr int kOwnMargin = 2; // of a line edit, beside the margins that it is given
    auto* edit = new CellLineEdit(parent);
    edit->setFrame(false);
    const int margin = std::max(m_fonts.scaled(kTextInset) - kOwnMargin, 0);
    edit->setTextMargins(margin, 0, margin, 0);
    edit->setAlignment(static_cast<Qt::Alignment>(index.data(Qt::TextAlignmentRole).toInt()));
    return edit;
}

void SpreadDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                          const QModelIndex& index) const
{
    Q_UNUSED(index);
    editor->setGeometry(option.rect);
}

void SpreadDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    const Cell& cell = cellAt(index);
    if (auto* combo = qobject_cast<ComboEditor*>(editor))
        combo->setCurrentIndex(static_cast<int>(cell.comboList.indexOf(cell.text)));
    else if (auto* edit = qobject_cast<QLineEdit*>(editor))
        edit->setText(visibleText(cell.text));
}

// The grid only reports what was entered; whether it is accepted is decided by those who know the parameter.
void SpreadDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    Q_UNUSED(model);
    const Cell& cell = cellAt(index);
    const auto* combo = qobject_cast<ComboEditor*>(editor);
    if (combo != nullptr && combo->isChosen() && combo->currentIndex() != cell.comboList.indexOf(cell.text))
        m_entry = {index.column() + 1, index.row() + 1, combo->currentText(), combo->currentIndex()};
    else if (auto* edit = qobject_cast<QLineEdit*>(editor); edit != nullptr && edit->isModified())
        m_entry = {index.column() + 1, index.row() + 1, edit->text(), -1};
}

// The menu bar borrows the focus: the command that is chosen there may be meant for the editor.
bool SpreadDelegate::eventFilter(QObject* editor, QEvent* event)
{
    if (event->type() == QEvent::KeyPress)
        m_hasShift = static_cast<QKeyEvent*>(event)->modifiers().testFlag(Qt::ShiftModifier);
    const bool isBorrowed =
        event->type() == QEvent::FocusOut && static_cast<QFocusEvent*>(event)->reason() == Qt::MenuBarFocusReason;
    return !isBorrowed && QStyledItemDelegate::eventFilter(editor, event);
}

void SpreadDelegate::reportEntry()
{
    const std::optional<Entry> entry = std::exchange(m_entry, std::nullopt);
    if (entry && entry->choice >= 0)
        Q_EMIT choiceMade(entry->col, entry->row, entry->choice);
    else if (entry)
        Q_EMIT textEntered(entry->col, entry->row, entry->text);
}

} // namespace platform
