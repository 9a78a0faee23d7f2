#include "SpreadFixture.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QWheelEvent>

#include <cmath>
#include <functional>

using platform::Cell;
using platform::CellRange;
using platform::CellType;

namespace {

// The shown grid on a sheet of empty labels, with a second edit cell in row 5.
class SpreadInput : public Spread
{
protected:
    SpreadInput()
    {
        Cell plain;
        plain.type = CellType::StaticText;
        grid.resetCells(plain);
        put(1, CellType::Edit, QStringLiteral("12.5"));
        put(2, CellType::ComboBox, QStringLiteral("K"));
        put(3, CellType::Button, QStringLiteral("Go"));
        put(4, CellType::StaticText, QStringLiteral("label"));
        put(5, CellType::Edit, QStringLiteral("3"));
        Cell right = grid.cell(1, 2);
        right.text = QStringLiteral("7");
        grid.setCell(1, 3, right);
        spread.activateWindow();
        spread.setFocus();
        settle();
    }

    std::string current() const
    {
        const QModelIndex at = spread.currentIndex();
        return std::to_string(at.row() + 1) + ',' + std::to_string(at.column() + 1);
    }
    QComboBox* combo() { return spread.viewport()->findChild<QComboBox*>(); }
    QLineEdit* line() { return spread.viewport()->findChild<QLineEdit*>(); }
    QPoint arrow(int row) { return spread.visualRect(grid.index(row - 1, 1)).adjusted(0, 0, -8, -8).bottomRight(); }
    bool isListOpen() { return combo() != nullptr && combo()->view()->isVisible(); }
    void inList(Qt::Key key)
    {
        QTest::keyClick(combo()->view(), key);
        settle();
    }
};

// What is shown of a choice is not what is compared: the list opens at the cell's own.
TEST_F(SpreadInput, ChoicesThatAreNotSeenAreShown)
{
    platform::Cell cell = grid.cell(2, 2);
    cell.comboList = QStringList{QStringLiteral("J"), QStringLiteral("K\x1b")};
    cell.text = cell.comboList.last();
    grid.setCell(2, 2, cell);
    select(2);
    key(Qt::Key_F4);
    ASSERT_TRUE(isListOpen());
    EXPECT_EQ(combo()->currentText(), u"K\\x1b");
    inList(Qt::Key_Return);
    EXPECT_TRUE(chosen.isEmpty());
}

struct Leaving
{
    const char* name;
    int row;
    const char* typed; // over the cell; null: opened by F2
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    const char* told; // null: nothing
    const char* currentThen;
};

TEST_F(SpreadInput, LeavingAnEditorGoesOn)
{
    const Leaving rows[] = {
        {"Enter goes down", 1, "9", Qt::Key_Return, {}, "9", "2,2"},
        {"Enter of the last in its column", 5, "9", Qt::Key_Return, {}, "9", "1,3"},
        {"Tab goes right", 1, "9", Qt::Key_Tab, {}, "9", "1,3"},
        {"Tab back", 5, "9", Qt::Key_Backtab, Qt::ShiftModifier, "9", "2,2"},
        {"Escape stays", 1, "9", Qt::Key_Escape, {}, nullptr, "1,2"},
    };
    for (const Leaving& row : rows) {
        edited.clear();
        entered.clear();
        select(row.row);
        if (row.typed == nullptr)
            key(Qt::Key_F2);
        else
            QTest::keyClicks(&spread, QString::fromLatin1(row.typed));
        ASSERT_NE(line(), nullptr) << row.name;
        QTest::keyClick(line(), row.key, row.modifiers);
        settle();
        EXPECT_EQ(line(), nullptr) << row.name;
        ASSERT_EQ(edited.count(), row.told == nullptr ? 0 : 1) << row.name;
        if (row.told != nullptr) {
            EXPECT_EQ(edited[0], (QList<QVariant>{2, row.row, QString::fromLatin1(row.told)})) << row.name;
        }
        EXPECT_EQ(current(), row.currentThen) << row.name;
        EXPECT_EQ(entered.count(), 0) << row.name << ": an editor's Enter is no other";
    }
}

TEST_F(SpreadInput, EntryIsToldWhenTheEditorIsGone)
{
    QObject::connect(&spread, &platform::vaSpread::editChanged, &spread, [this] {
        EXPECT_NE(qApp->focusWidget(), line());
        grid.setMaxRows(0); // another model is loaded
    });
    select(1);
    QTest::keyClicks(&spread, QStringLiteral("9"));
    leave(line(), Qt::Key_Return);
    EXPECT_EQ(edited.count(), 1);
    EXPECT_FALSE(spread.currentIndex().isValid());
}

// However the entry was ended, the cell is current and its text can be corrected; left as it is, it is given up.
TEST_F(SpreadInput, ARefusedEntryStaysOpen)
{
    QObject::connect(&spread, &platform::vaSpread::editChanged, &spread, &platform::vaSpread::refuseEntry);
    const std::function<void()> ways[] = {[this] { QTest::keyClick(line(), Qt::Key_Return); },
                                          [this] { QTest::keyClick(line(), Qt::Key_Tab); }, [this] { click(4); }};
    for (size_t way = 0; way < std::size(ways); ++way) {
        SCOPED_TRACE(way);
        edited.clear();
        select(1);
        QTest::keyClicks(&spread, QStringLiteral("9"));
        ways[way]();
        settle();
        settle();
        ASSERT_NE(line(), nullptr);
        EXPECT_EQ(line()->selectedText(), u"9");
        EXPECT_EQ(current(), "1,2");
        EXPECT_EQ(grid.cell(1, 2).text, u"12.5");
        leave(line(), Qt::Key_Return);
        EXPECT_EQ(edited.count(), 1);
        EXPECT_EQ(line(), nullptr);
    }
}

class SpreadList : public SpreadInput
{
public:
    using SpreadInput::arrow;
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        select(2);
        QTest::keyClick(&spread, key, modifiers);
    }
    void clickAt(const QPoint& at) { QTest::mouseClick(spread.viewport(), Qt::LeftButton, {}, at); }
    void clickTwice() { doubleClick(2); }
};

TEST_F(SpreadList, OpensAndTellsItsChoiceOnce)
{
    struct Row
    {
        const char* name;
        std::function<void()> open;
    };
    const Row rows[] = {
        {"F4", [this] { press(Qt::Key_F4); }},       {"Alt+Down", [this] { press(Qt::Key_Down, Qt::AltModifier); }},
        {"Space", [this] { press(Qt::Key_Space); }}, {"F2", [this] { press(Qt::Key_F2); }},
        {"arrow", [this] { clickAt(arrow(2)); }},    {"double click", [this] { clickTwice(); }}};
    for (const Row& row : rows) {
        chosen.clear();
        row.open();
        ASSERT_TRUE(isListOpen()) << row.name;
        inList(Qt::Key_Down);
        EXPECT_EQ(chosen.count(), 0) << row.name << ": only looked at";
        inList(Qt::Key_Return);
        EXPECT_EQ(combo(), nullptr) << row.name;
        ASSERT_EQ(chosen.count(), 1) << row.name;
        EXPECT_EQ(chosen[0], (QList<QVariant>{2, 2, 2})) << row.name;
        EXPECT_EQ(current(), "2,2") << row.name;
        row.open();
        ASSERT_TRUE(isListOpen()) << row.name;
        inList(Qt::Key_Up);
        inList(Qt::Key_Escape);
        EXPECT_EQ(combo(), nullptr) << row.name << ": no list, no editor";
        EXPECT_EQ(chosen.count(), 1) << row.name;
    }
}

TEST_F(SpreadList, AChoiceByTheMouseIsToldOnce)
{
    const int interval = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(0); // a list that opened just now takes no click
    clickAt(arrow(2));
    settle();
    ASSERT_TRUE(isListOpen());
    QAbstractItemView* list = combo()->view();
    const QRect first = list->visualRect(list->model()->index(0, 0));
    EXPECT_GE(list->viewport()->width(), list->sizeHintForColumn(0)) << "a narrow cell cuts no choice";
    list->setCurrentIndex(list->model()->index(0, 0)); // under the pointer
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, QPoint(5, first.center().y()));
    settle();
    QApplication::setDoubleClickInterval(interval);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen[0], (QList<QVariant>{2, 2, 0}));
}

TEST_F(SpreadList, TheWheelChangesNoChoice)
{
    const auto turn = [](QWidget* at) {
        const QPointF middle = QRectF(at->rect()).center();
        QWheelEvent event(middle, at->mapToGlobal(middle), {}, QPoint(0, -240), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(at, &event);
    };
    select(2);
    turn(spread.viewport());
    press(Qt::Key_F4);
    combo()->hidePopup();
    ASSERT_NE(combo(), nullptr);
    turn(combo());
    EXPECT_EQ(combo()->currentText(), u"K");
    settle();
    EXPECT_EQ(chosen.count(), 0);
}

TEST_F(SpreadInput, EnterOnACellIsTold)
{
    for (const int row : {1, 2, 3, 4, 6}) {
        entered.clear();
        select(row);
        key(row == 6 ? Qt::Key_Enter : Qt::Key_Return);
        ASSERT_EQ(entered.count(), 1) << row;
        EXPECT_EQ(entered[0], (QList<QVariant>{2, row}));
        EXPECT_EQ(line(), nullptr) << row;
    }
    EXPECT_EQ(pressed.count(), 0);
}

TEST_F(SpreadInput, KeysGoWhereSomethingIs)
{
    struct Row
    {
        const char* name;
        int from;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        const char* to;
    };
    const Row rows[] = {{"Home", 1, Qt::Key_Home, {}, "1,2"},
                        {"End", 1, Qt::Key_End, {}, "1,3"},
                        {"End of the sheet", 1, Qt::Key_End, Qt::ControlModifier, "5,2"},
                        {"End of an empty row", 6, Qt::Key_End, {}, "6,3"},
                        {"Tab", 3, Qt::Key_Tab, {}, "5,2"},
                        {"Page down", 1, Qt::Key_PageDown, {}, "6,2"}};
    for (const Row& row : rows) {
        select(row.from);
        QTest::keyClick(&spread, row.key, row.modifiers);
        EXPECT_EQ(current(), row.to) << row.name;
    }
}

TEST_F(SpreadInput, TheCurrentCellIsToldAndKeptInSight)
{
    grid.setMaxRows(200);
    const QSignalSpy told(&spread, &platform::vaSpread::currentCellChanged);
    spread.setCurrentCell(3, 150);
    ASSERT_EQ(told.count(), 1);
    EXPECT_EQ(told[0], (QList<QVariant>{3, 150}));
    EXPECT_TRUE(spread.viewport()->rect().contains(spread.visualRect(spread.currentIndex())));
    spread.resize(600, 150);
    settle();
    EXPECT_TRUE(spread.viewport()->rect().contains(spread.visualRect(spread.currentIndex()))) << "smaller window";
    spread.setCurrentCell(4, 1);
    spread.setCurrentCell(1, 201);
    EXPECT_EQ(told.count(), 1) << "no such cells";
}

TEST_F(SpreadInput, CopyAndPasteAreAskedFor)
{
    const QSignalSpy copied(&spread, &platform::vaSpread::copyRequested);
    const QSignalSpy pasted(&spread, &platform::vaSpread::pasteRequested);
    QGuiApplication::clipboard()->setText(QStringLiteral("1\t2\n"));
    select(2);
    QTest::keyClick(&spread, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&spread, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&spread, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(&spread, Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(copied.count(), 1);
    const auto& range = *static_cast<const CellRange*>(copied[0][0].constData());
    EXPECT_EQ((QList<int>{range.row, range.col, range.row2, range.col2}), (QList<int>{2, 2, 3, 3}));
    ASSERT_EQ(pasted.count(), 1);
    EXPECT_EQ(pasted[0], (QList<QVariant>{2, 2, QStringLiteral("1\t2\n")}));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"1\t2\n") << "what is copied is for others to say";
    QGuiApplication::clipboard()->clear();
    QTest::keyClick(&spread, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(pasted.count(), 1) << "nothing to paste";
}

TEST_F(SpreadInput, CopyAndPasteAreThoseOfAnOpenEditor)
{
    const QSignalSpy copied(&spread, &platform::vaSpread::copyRequested);
    const QSignalSpy pasted(&spread, &platform::vaSpread::pasteRequested);
    QLineEdit* editor = edit<QLineEdit>(1);
    ASSERT_NE(editor, nullptr);
    spread.setFocus(Qt::MenuBarFocusReason);
    settle();
    ASSERT_EQ(line(), editor) << "the menu leaves it open";
    editor->setSelection(0, 2);
    spread.requestCopy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"12");
    QGuiApplication::clipboard()->setText(QStringLiteral("77"));
    spread.requestPaste();
    EXPECT_EQ(editor->text(), u"77.5");
    EXPECT_EQ(copied.count() + pasted.count(), 0);
}

TEST_F(SpreadInput, AColumnDraggedByItsHeaderIsWiderInTheGrid)
{
    grid.setColHeader(2, QStringLiteral("Low end"), platform::HAlign::Right);
    EXPECT_EQ(grid.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), u"Low end");
    EXPECT_EQ(grid.headerData(2, Qt::Horizontal, Qt::DisplayRole).toString(), u"C");
    spread.showColHeaders();
    const double before = grid.colWidth(2);
    spread.horizontalHeader()->resizeSection(1, 2 * spread.columnWidth(1));
    EXPECT_NEAR(grid.colWidth(2), 2 * before, 0.2);
    grid.setColWidth(2, 20);
    EXPECT_EQ(grid.colWidth(2), 20) << "and not rounded to pixels when it is set";
}

TEST_F(SpreadList, StaysShutWhereItIsNotMeant)
{
    clickAt(middle(2));
    EXPECT_EQ(combo(), nullptr) << "a click beside the arrow selects the cell";
    grid.setLocked(2, 2, true);
    clickAt(arrow(2));
    press(Qt::Key_F4);
    EXPECT_EQ(combo(), nullptr) << "locked";
    select(1);
    key(Qt::Key_F4);
    EXPECT_EQ(line(), nullptr) << "no list";
}

// Relative luminance and contrast of the Web Content Accessibility Guidelines 2.1.
double luminance(const QColor& color)
{
    const auto channel = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF()) + 0.0722 * channel(color.blueF());
}

TEST_F(SpreadInput, TheFocusIsSeenOnEveryColour)
{
    struct Row
    {
        const char* name;
        platform::ColorRef back;
        QRgb highlight;
    };
    const Row rows[] = {
        {"light", 0xFFFFFF, 0xFF308CC6}, {"dark", 0x202020, 0xFF12608F}, {"black", 0x000000, 0xFF000000}};
    for (const Row& row : rows) {
        Cell cell = grid.cell(4, 2);
        cell.backColor = row.back;
        grid.setCell(4, 2, cell);
        QPalette colors = spread.palette();
        colors.setColor(QPalette::Highlight, QColor(row.highlight));
        spread.setPalette(colors);
        select(4);
        ASSERT_TRUE(spread.hasFocus());
        const QRect place = spread.visualRect(spread.currentIndex());
        const QImage image = spread.viewport()->grab().toImage();
        const double edge = luminance(image.pixelColor(place.left() + 1, place.center().y())) + 0.05;
        const double inner = luminance(image.pixelColor(place.left() + 4, place.center().y() + 5)) + 0.05;
        EXPECT_GE(std::max(edge, inner) / std::min(edge, inner), 2.5) << row.name;
    }
}

} // namespace
