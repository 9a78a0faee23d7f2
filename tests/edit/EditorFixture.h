#pragma once

#include "CellEditor.h"
#include "ModelCatalogue.h"
#include "RecordingMessages.h"
#include "ScreenFixture.h"

#include <QRegularExpression>
#include <functional>
#include <tuple>

// What the editor asks of the window, recorded; blocks by number.
class RecordingShell : public CellEditorShell
{
public:
    MainState stateNow = MainState::UpToDate;
    bool busy = false;
    bool sends = true;
    QStringList calls;
    std::function<void()> inDialog = [] {};
    std::function<void()> inWrite = [] {};

    MainState state() const override { return stateNow; }
    bool isBusy() const override { return busy; }
    bool writeOne(const QString& tag) override { return write("one " + tag); }
    bool writeBlock(clsBlock& block, bool readBack) override
    {
        return write(QString("block %1%2").arg(block.m_lNo).arg(readBack ? u" and back" : u""));
    }
    bool writeBlockThenOne(clsBlock* block, const QString& tag) override
    {
        return write(QString("block %1 then %2").arg(block->m_lNo).arg(tag));
    }
    void openMultiSelect(clsData& item, const QString& section) override
    {
        calls << "select " + item.Key() + ' ' + section;
        inDialog();
    }

private:
    bool write(const QString& call)
    {
        calls << call;
        inWrite();
        return sends;
    }
};

class RecordingLog : public Log
{
public:
    QStringList lines;
    void LogWrite(const QString& message) override { lines << message; }
};

// An editor on a model that is shipped, or on one that the test describes.
class EditorFixture : public ScreenFixture
{
protected:
    EditorFixture()
    {
        box.context.eventLog = eventLog;
        kx.Logs(errorLog, noLog());
        settings.m_bAdjustDesign = true;
    }

    // Items as in itemKeys, writable.
    void screen(const QStringList& items, const QByteArray& blocks = {})
    {
        load(screenOf(itemKeys(items), "CommRaedSection=Main\nKXAddress=8000\nCommWriteSection=Main",
                      "BlockMaxCount=2\n") +
                 blocks,
             "[Main]\nReadCmdMax=1\nReadCmd1=Direct,8000,99\nWriteCmdMax=1\nWriteCmd1=Direct,8000,99\n");
        kx.refreshSpread(false, nullptr);
    }

    void shipped(const QString& code)
    {
        const platform::ProfileStore::Batch once(box.machine.profiles);
        copyShipped("ini");
        catalogue("KXMaxCount=0\n");
        ModelCatalogue models(library);
        models.ensureBuiltIn();
        kx.load(models.numberOf(code), &library, code + "11110-10A");
        kx.refreshSpread(false, nullptr);
    }

    // "TAG=stored", as if it had been read.
    void start(const QString& values)
    {
        for (const QString& value : values.split(u' ', Qt::SkipEmptyParts))
            item(value.section(u'=', 0, 0)).setData(value.section(u'=', 1));
        kx.followUnit(item("SWQCF"));
        for (const auto& one : kx.items())
            one->Edit = EditState::kRead;
        kx.refreshSpread(false, nullptr);
    }

    const platform::Cell& cell(const QString& tag) { return grid.cell(item(tag).Row(), item(tag).Col()); }

    // "TAG=text" is typed, "TAG#choice" chosen from a combo box.
    bool enter(const QString& entry)
    {
        const QStringList parts = entry.split(QRegularExpression("[=#]"));
        const clsData& target = item(parts[0]);
        return entry.contains(u'#') ? editor.changeCombo(target.Col(), target.Row(), parts[1].toInt())
                                    : editor.checkCell(target.Col(), target.Row(), true, parts[1]);
    }

    // Of the items named, "TAG=shown", as the cells have them; the item's display value where it has no cell.
    std::string shown(const QString& tags)
    {
        QStringList list;
        for (const QString& tag : tags.split(u' ', Qt::SkipEmptyParts))
            list << tag + u'=' + (item(tag).Visible() ? cell(tag).text : item(tag).VData());
        return list.join(u' ').toStdString();
    }

    // Tags of the changed items, in alphabetical order; an item whose mark and cell disagree is marked with "!".
    std::string marked()
    {
        QStringList list;
        for (const auto& one : kx.items()) {
            const bool isMarked = one->Edit == EditState::kChanged;
            const platform::Cell& its = grid.cell(one->Row(), one->Col());
            // Blue; red is not sent.
            const bool isBlue = its.font.bold && its.foreColor == (one->isAllowed() ? 0xFF0000U : 0x0000FFU);
            if (isMarked || (one->Visible() && isBlue))
                list << (!one->Visible() || isBlue == isMarked ? QString() : "!") + one->Key();
        }
        list.sort();
        return list.join(u' ').toStdString();
    }

    // All that an undo must bring back: items, cells and the unit.
    using Everything = std::tuple<std::vector<ItemState>, std::vector<platform::Cell>, int>;
    Everything everything()
    {
        Everything all{{}, {}, kx.unitSwitch()};
        for (const auto& one : kx.items())
            std::get<0>(all).push_back(one->state());
        for (int row = 1; row <= grid.maxRows(); ++row) {
            for (int col = 1; col <= grid.maxCols(); ++col)
                std::get<1>(all).push_back(grid.cell(row, col));
        }
        return all;
    }

    RecordingLog eventLog;
    RecordingLog errorLog;
    RecordingMessages::Record record;
    RecordingMessages messages{record};
    RecordingShell shell;
    CellEditor editor{kx, messages, shell};
};
