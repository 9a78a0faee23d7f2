#include "SpreadFixture.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QWheelEvent>

#include <functional>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

using platform::vaSpread;

namespace {

TEST_F(Spread, LeavingAnEditorGoesOn)
{
    // Where, how it is left, what is reported, and the current cell then.
    const std::tuple<int, Qt::Key, Qt::KeyboardModifiers, const char*, const char*> rows[] = {
        {1, Qt::Key_Return, {}, "2,1,9", "2,2"},   {5, Qt::Key_Return, {}, "2,5,9", "1,3"}, // the last in its column
        {1, Qt::Key_Tab, {}, "2,1,9", "2,2"},      {5, Qt::Key_Backtab, Qt::ShiftModifier, "2,5,9", "3,2"},
        {1, Qt::Key_Escape, {}, "", "1,2"},        {1, Qt::Key_Down, {}, "2,1,9", "2,2"},
        {1, Qt::Key_PageDown, {}, "2,1,9", "5,2"}, {5, Qt::Key_Return, Qt::ShiftModifier, "2,5,9", "3,2"},
    };
    for (const auto& [row, key, modifiers, report, then] : rows) {
        SCOPED_TRACE(key);
        type(row, "9");
        ASSERT_NE(line(), nullptr);
        leave(line(), key, modifiers);
        EXPECT_EQ(line(), nullptr);
        EXPECT_EQ(reported(edited), report);
        EXPECT_EQ(current(), then);
        EXPECT_EQ(entered.count(), 0) << "an editor's Enter is no other";
    }
}

TEST_F(Spread, TypingReplacesButF2AndADoubleClickCorrect)
{
    const std::pair<std::function<void()>, const char*> rows[] = {{[this] { click(middle(1)), click(middle(1)); }, "7"},
                                                                  {[this] { press(1, Qt::Key_F2); }, "12.57"},
                                                                  {[this] { doubleClick(1); }, "12.57"}};
    for (const auto& [open, text] : rows) {
        open();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_7);
        ASSERT_NE(line(), nullptr);
        EXPECT_EQ(line()->text(), text);
        leave(line(), Qt::Key_Escape);
        EXPECT_EQ(reported(edited), u"");
    }
}

TEST_F(Spread, EntryIsReportedWhenTheEditorIsGone)
{
    QObject::connect(&spread, &vaSpread::editChanged, &spread, [this] {
        EXPECT_NE(qApp->focusWidget(), line());
        grid.setMaxRows(0); // another model is loaded
    });
    type(1, "9");
    leave(line(), Qt::Key_Return);
    EXPECT_EQ(edited.count(), 1);
    EXPECT_FALSE(spread.currentIndex().isValid());
}

// However the entry was ended, the cell is current and its text can be corrected; left as it is, it is given up.
TEST_F(Spread, ARefusedEntryStaysOpen)
{
    QObject::connect(&spread, &vaSpread::editChanged, &spread, &vaSpread::refuseEntry);
    const std::function<void()> ways[] = {[this] { QTest::keyClick(line(), Qt::Key_Return); },
                                          [this] { QTest::keyClick(line(), Qt::Key_Tab); },
                                          [this] { click(middle(4)); }, [this] { EXPECT_FALSE(spread.finishEntry()); }};
    for (const auto& way : ways) {
        SCOPED_TRACE(&way - ways);
        type(1, "9");
        way();
        settle();
        settle();
        ASSERT_NE(line(), nullptr);
        EXPECT_EQ(line()->selectedText(), u"9");
        EXPECT_EQ(current(), u"1,2");
        EXPECT_EQ(grid.cell(1, 2).text, u"12.5");
        leave(line(), Qt::Key_Return);
        EXPECT_EQ(reported(edited), u"2,1,9");
        EXPECT_EQ(line(), nullptr);
    }
}

TEST_F(Spread, AListOpensAndReportsItsChoiceOnce)
{
    const std::pair<const char*, std::function<void()>> rows[] = {{"F4", [this] { press(2, Qt::Key_F4); }},
                                                                  {"Alt+Down", [this] { press(2, Qt::Key_Down, Qt::AltModifier); }},
                                                                  {"Space", [this] { press(2, Qt::Key_Space); }},
                                                                  {"F2", [this] { press(2, Qt::Key_F2); }},
                                                                  {"arrow", [this] { click(arrow()); }},
                                                                  {"double click", [this] { doubleClick(2); }}};
    for (const auto& [name, open] : rows) {
        SCOPED_TRACE(name);
        const std::tuple<Qt::Key, Qt::Key, QString> ends[] = {{Qt::Key_Down, Qt::Key_Return, "2,2,2"},
                                                              {Qt::Key_Up, Qt::Key_Escape, ""}};
        for (const auto& [look, end, report] : ends) {
            open();
            ASSERT_TRUE(isListOpen());
            leave(combo()->view(), look);
            EXPECT_EQ(chosen.count(), 0) << "only looked at";
            leave(combo()->view(), end);
            EXPECT_EQ(combo(), nullptr) << "no list, no editor";
            EXPECT_EQ(reported(chosen), report);
            EXPECT_EQ(current(), u"2,2");
        }
    }
}

// What is shown of a choice is not what is compared: the list opens at the cell's own.
TEST_F(Spread, AListLeftAsItWasReportsNothing)
{
    platform::Cell cell = grid.cell(2, 2);
    cell.comboList << "L\x1b";
    for (const auto& [text, shown] : {std::pair("K", "K"), {"L\x1b", "L\\x1b"}, {"not in the list", ""}, {"", ""}}) {
        cell.text = text;
        grid.setCell(2, 2, cell);
        press(2, Qt::Key_F4);
        ASSERT_TRUE(isListOpen());
        EXPECT_EQ(combo()->currentText(), shown);
        leave(combo(), Qt::Key_Return);
        EXPECT_EQ(reported(chosen), u"");
    }
    type(2, "T");
    ASSERT_TRUE(combo() != nullptr && combo()->currentText() == u"T");
    Q_EMIT spread.itemDelegate()->commitData(combo()); // another window comes to the front
    Q_EMIT spread.itemDelegate()->closeEditor(combo());
    settle();
    EXPECT_EQ(reported(chosen), u"") << "looked at, not chosen";
}

TEST_F(Spread, AChoiceByTheMouseIsReportedOnce)
{
    const int interval = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(0); // a list that opened just now takes no click
    click(arrow());
    settle();
    ASSERT_TRUE(isListOpen());
    QAbstractItemView* list = combo()->view();
    const QModelIndex first = list->model()->index(0, 0);
    EXPECT_GE(list->viewport()->width(), list->sizeHintForColumn(0)) << "a narrow cell cuts no choice";
    list->setCurrentIndex(first); // under the pointer
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, QPoint(5, list->visualRect(first).center().y()));
    settle();
    QApplication::setDoubleClickInterval(interval);
    EXPECT_EQ(reported(chosen), u"2,2,0");
}

TEST_F(Spread, TheWheelChangesNoChoice)
{
    const auto turn = [](QWidget* at) {
        const QPointF middle = QRectF(at->rect()).center();
        QWheelEvent event(middle, at->mapToGlobal(middle), {}, {0, -240}, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(at, &event);
    };
    spread.setCurrentCell(2, 2);
    turn(spread.viewport());
    press(2, Qt::Key_F4);
    combo()->hidePopup();
    ASSERT_NE(combo(), nullptr);
    turn(combo());
    EXPECT_EQ(combo()->currentText(), u"K");
    settle();
    EXPECT_EQ(chosen.count(), 0);
}

TEST_F(Spread, EnterAndButtonsAreReported)
{
    platform::Cell table = grid.cell(4, 2);
    table.use = platform::CellUse::Table;
    table.sign = platform::CellSign::Table;
    grid.setCell(4, 2, table);
    QSignalSpy opened(&spread, &vaSpread::markClicked);
    for (const QPoint& at : {middle(4), arrow() + middle(4) - middle(2)})
        click(at);
    EXPECT_EQ(reported(opened), u"2,4") << "only the dots";
    press(4, Qt::Key_Return);
    press(4, Qt::Key_Enter);
    press(3, Qt::Key_Return);
    EXPECT_EQ(reported(entered), u"2,4 2,4") << "it goes on from other cells";
    EXPECT_EQ(current(), u"4,2");
    EXPECT_EQ(pressed.count(), 0);
    click(middle(3));
    press(3, Qt::Key_Space);
    EXPECT_EQ(reported(pressed), u"2,3 2,3");
    EXPECT_EQ(line(), nullptr) << "a button has no text to edit";
}

TEST_F(Spread, CellsRefuseWhatIsNotMeant)
{
    click(middle(2));
    EXPECT_EQ(combo(), nullptr) << "a click beside the arrow selects the cell";
    press(1, Qt::Key_F4);
    EXPECT_EQ(line(), nullptr) << "no list";
    for (const bool isLocked : {true, false}) {
        for (const int row : {1, 2, 3}) {
            platform::Cell cell = grid.cell(row, 2);
            cell.locked = isLocked;
            cell.readOnly = !isLocked;
            grid.setCell(row, 2, cell);
        }
        press(1, Qt::Key_F2);
        doubleClick(1);
        press(2, Qt::Key_F2);
        press(2, Qt::Key_F4);
        click(arrow());
        EXPECT_TRUE(line() == nullptr && combo() == nullptr) << isLocked;
        click(middle(3));
        press(3, Qt::Key_Space);
        EXPECT_EQ(pressed.count(), 0) << isLocked;
        type(1, "35");
        EXPECT_TRUE(line() == nullptr && current() == u"1,2") << "not the cell that begins so";
    }
}

TEST_F(Spread, KeysGoWhereSomethingIs)
{
    const std::tuple<int, Qt::Key, Qt::KeyboardModifiers, const char*> rows[] = {
        {1, Qt::Key_Home, {}, "1,2"},
        {1, Qt::Key_End, {}, "1,3"},
        {1, Qt::Key_End, Qt::ControlModifier, "5,2"},
        {6, Qt::Key_End, {}, "6,2"}, // an empty row
        {3, Qt::Key_Tab, {}, "5,2"},
        {1, Qt::Key_PageDown, {}, "5,2"},
        {5, Qt::Key_Return, Qt::ShiftModifier, "3,2"},
        {5, Qt::Key_Up, Qt::ControlModifier, "3,2"},
        {1, Qt::Key_Right, Qt::ControlModifier, "1,3"}};
    for (const auto& [from, key, modifiers, to] : rows) {
        press(from, key, modifiers);
        EXPECT_EQ(current(), to) << key;
        EXPECT_EQ(spread.selectionModel()->selectedIndexes(), QModelIndexList{spread.currentIndex()}) << key;
    }
}

TEST_F(Spread, TheCurrentCellIsReportedAndKeptInSight)
{
    const auto isSeen = [this] { return spread.viewport()->rect().contains(spread.visualRect(spread.currentIndex())); };
    grid.setMaxRows(200);
    QSignalSpy moved(&spread, &vaSpread::currentCellChanged);
    spread.setCurrentCell(3, 150);
    EXPECT_TRUE(isSeen());
    spread.resize(600, 150);
    settle();
    EXPECT_TRUE(isSeen()) << "smaller window";
    spread.setCurrentCell(4, 1);
    spread.setCurrentCell(1, 201);
    EXPECT_EQ(reported(moved), u"3,150") << "the others are no cells";
}

// As with a screen reader on the desktop, which the offscreen platform has not.
TEST_F(Spread, AScreenReaderHearsOfTheCellThatTheKeysGoTo)
{
    static QStringList heard;
    QPlatformAccessibility* desktop = QGuiApplicationPrivate::platformIntegration()->accessibility();
    desktop->setActive(true);
    const auto before = QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
        if (event->type() == QAccessible::Focus)
            heard << event->accessibleInterface()->text(QAccessible::Name);
    });
    spread.setCurrentCell(2, 5);
    spread.clearFocus();
    heard.clear();
    spread.setFocus();
    settle();
    EXPECT_EQ(heard.value(heard.size() - 1), u"3") << qPrintable(heard.join('|'));
    QTest::keyClick(&spread, Qt::Key_Up);
    EXPECT_EQ(heard.last(), u"label");
    QAccessible::installUpdateHandler(before);
    desktop->setActive(false);
}

TEST_F(Spread, CommandsAreAskedForOrThoseOfAnOpenEditor)
{
    QSignalSpy undone(&spread, &vaSpread::undoRequested);
    QSignalSpy copied(&spread, &vaSpread::copyRequested);
    QSignalSpy pasted(&spread, &vaSpread::pasteRequested);
    QClipboard& clipboard = *QGuiApplication::clipboard();
    clipboard.setText("1\t2\n");
    press(2, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&spread, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&spread, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(&spread, Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(copied.count(), 1);
    const platform::CellRange range = *static_cast<const platform::CellRange*>(copied.takeFirst()[0].constData());
    EXPECT_EQ((QList<int>{range.row, range.col, range.row2, range.col2}), (QList<int>{2, 2, 3, 3}));
    spread.clearSelection();
    QTest::keyClick(&spread, Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(pasted.count(), 2);
    for (const bool isBlock : {true, false}) {
        const auto& into = *static_cast<const platform::CellRange*>(pasted[0][0].constData());
        EXPECT_TRUE(into.contains(2, 2) == isBlock && into.contains(3, 3)) << "what is selected, or the current cell";
        EXPECT_EQ(pasted.takeFirst()[1].toString(), u"1\t2\n");
    }
    EXPECT_EQ(clipboard.text(), u"1\t2\n") << "what is copied is for others to say";
    clipboard.clear();
    QTest::keyClick(&spread, Qt::Key_V, Qt::ControlModifier);
    press(1, Qt::Key_F2);
    QLineEdit* editor = line();
    ASSERT_NE(editor, nullptr);
    spread.setFocus(Qt::MenuBarFocusReason);
    settle();
    ASSERT_EQ(line(), editor) << "the menu leaves it open";
    editor->setSelection(0, 2);
    spread.requestCopy();
    EXPECT_EQ(clipboard.text(), u"12");
    clipboard.setText("77");
    spread.requestPaste();
    EXPECT_EQ(editor->text(), u"77.5");
    spread.requestUndo();
    EXPECT_EQ(editor->text(), u"12.5");
    spread.requestRedo();
    EXPECT_EQ(editor->text(), u"77.5");
    EXPECT_EQ(copied.count() + pasted.count() + undone.count(), 0) << "nothing to paste, or the editor's";
}

} // namespace
