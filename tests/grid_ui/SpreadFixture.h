#pragma once

#include "vaSpread.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

// A shown grid: row 1 an edit cell, row 2 a combo box, row 3 a button, row 4 static text, all in column 2.
class Spread : public ::testing::Test
{
protected:
    Spread()
    {
        grid.setMaxRows(6);
        grid.setMaxCols(3);
        put(1, platform::CellType::Edit, QStringLiteral("12.5"));
        put(2, platform::CellType::ComboBox, QStringLiteral("K"));
        put(3, platform::CellType::Button, QStringLiteral("Go"));
        put(4, platform::CellType::StaticText, QStringLiteral("label"));
        spread.setGrid(&grid);
        spread.resize(600, 400);
        spread.show();
    }

    void put(int row, platform::CellType type, const QString& text)
    {
        platform::Cell cell;
        cell.type = type;
        cell.text = text;
        if (type == platform::CellType::ComboBox)
            cell.comboList = QStringList{QStringLiteral("J"), QStringLiteral("K"), QStringLiteral("T")};
        grid.setCell(row, 2, cell);
    }

    QPoint middle(int row) { return spread.visualRect(grid.index(row - 1, 1)).center(); }
    void click(int row) { QTest::mouseClick(spread.viewport(), Qt::LeftButton, {}, middle(row)); }
    void select(int row) { spread.setCurrentIndex(grid.index(row - 1, 1)); }
    void key(Qt::Key key) { QTest::keyClick(&spread, key); }

    // The view commits and removes its editors from the event loop.
    void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void leave(QWidget* editor, Qt::Key key)
    {
        QTest::keyClick(editor, key);
        settle();
    }
    void doubleClick(int row)
    {
        click(row);
        QTest::mouseDClick(spread.viewport(), Qt::LeftButton, {}, middle(row));
        QTest::mouseRelease(spread.viewport(), Qt::LeftButton, {}, middle(row));
    }

    // Opens the editor of a row with the keyboard; null when the cell refuses.
    template <typename Editor> Editor* edit(int row)
    {
        select(row);
        key(Qt::Key_F2);
        return spread.viewport()->findChild<Editor*>();
    }

    platform::GridModel grid;
    platform::vaSpread spread;
    QSignalSpy edited{&spread, &platform::vaSpread::editChanged};
    QSignalSpy chosen{&spread, &platform::vaSpread::comboSelChange};
    QSignalSpy pressed{&spread, &platform::vaSpread::buttonClicked};
    QSignalSpy doubleClicked{&spread, &platform::vaSpread::dblClick};
    QSignalSpy entered{&spread, &platform::vaSpread::enterPressed};
};
