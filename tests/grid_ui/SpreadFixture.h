#pragma once

#include "vaSpread.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

// A shown grid on a sheet of empty labels: in column 2 of rows 1 to 5 an edit cell, a combo box, a button, static text
// and an edit cell; another edit cell right of the first.
class Spread : public ::testing::Test
{
protected:
    Spread()
    {
        using platform::CellType;
        grid.setMaxRows(6);
        grid.setMaxCols(3);
        platform::Cell cell;
        cell.type = CellType::StaticText;
        grid.resetCells(cell);
        cell.comboList = QStringList{"J", "K", "T"};
        const std::tuple<int, int, CellType, const char*> cells[] = {
            {1, 2, CellType::Edit, "12.5"}, {2, 2, CellType::ComboBox, "K"},       {3, 2, CellType::Button, "Go"},
            {5, 2, CellType::Edit, "3"},    {4, 2, CellType::StaticText, "label"}, {1, 3, CellType::Edit, "7"}};
        for (const auto& [row, col, type, text] : cells) {
            cell.type = type;
            cell.text = text;
            grid.setCell(row, col, cell);
        }
        spread.setGrid(&grid);
        spread.resize(600, 400);
        spread.show();
        spread.activateWindow();
        spread.setFocus();
        settle();
    }

    // What was reported since the last look: arguments between commas, signals between blanks.
    static QString reported(QSignalSpy& spy)
    {
        QStringList all;
        while (!spy.isEmpty())
            all << QVariant(spy.takeFirst()).toStringList().join(',');
        return all.join(' ');
    }
    QString current() const
    {
        const QModelIndex at = spread.currentIndex();
        return QString("%1,%2").arg(at.row() + 1).arg(at.column() + 1);
    }
    QLineEdit* line() { return spread.viewport()->findChild<QLineEdit*>(); }
    QComboBox* combo() { return spread.viewport()->findChild<QComboBox*>(); }
    bool isListOpen() { return combo() != nullptr && combo()->view()->isVisible(); }

    QPoint middle(int row) { return spread.visualRect(grid.index(row - 1, 1)).center(); }
    QPoint arrow() { return spread.visualRect(grid.index(1, 1)).bottomRight() - QPoint(8, 8); }
    void click(const QPoint& at) { QTest::mouseClick(spread.viewport(), Qt::LeftButton, {}, at); }
    void doubleClick(int row)
    {
        click(middle(row));
        QTest::mouseDClick(spread.viewport(), Qt::LeftButton, {}, middle(row));
        QTest::mouseRelease(spread.viewport(), Qt::LeftButton, {}, middle(row));
    }
    void press(int row, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        spread.setCurrentCell(2, row);
        QTest::keyClick(&spread, key, modifiers);
    }
    void type(int row, const char* text)
    {
        spread.setCurrentCell(2, row);
        QTest::keyClicks(&spread, text);
    }
    // The view commits and removes its editors from the event loop.
    void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void leave(QWidget* editor, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(editor, key, modifiers);
        settle();
    }

    platform::GridModel grid;
    platform::vaSpread spread;
    QSignalSpy edited{&spread, &platform::vaSpread::editChanged};
    QSignalSpy chosen{&spread, &platform::vaSpread::comboSelChange};
    QSignalSpy pressed{&spread, &platform::vaSpread::buttonClicked};
    QSignalSpy entered{&spread, &platform::vaSpread::enterPressed};
};
