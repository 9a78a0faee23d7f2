#pragma once

#include "CellEditor.h"
#include "ModelCatalogue.h"
#include "RecordingMessages.h"
#include "ScreenFixture.h"
#include "clsLog.h"

#include <QDir>
#include <QStringList>

#include <functional>

// What the editor asks of the window, recorded; blocks by number.
class RecordingShell : public CellEditorShell
{
public:
    MainState stateNow = MainState::UpToDate;
    bool busy = false;
    bool sends = true;
    QStringList calls;
    std::function<void()> inDialog;
    std::function<void()> inWrite;

    MainState state() const override { return stateNow; }
    bool isBusy() const override { return busy; }
    bool writeOne(const QString& tag) override
    {
        calls << QStringLiteral("one ") + tag;
        if (inWrite)
            inWrite();
        return sends;
    }
    bool writeBlock(clsBlock& block, bool readBack) override
    {
        calls << QStringLiteral("block %1%2").arg(block.m_lNo).arg(readBack ? u" and back" : u"");
        return sends;
    }
    bool writeBlockThenOne(clsBlock* block, const QString& tag) override
    {
        calls << QStringLiteral("block %1 then %2").arg(block->m_lNo).arg(tag);
        return sends;
    }
    void openMultiSelect(clsData& item, const QString& section) override
    {
        calls << QStringLiteral("select %1 %2").arg(item.Key(), section);
        if (inDialog)
            inDialog();
    }
};

// An editor on a model that is shipped, or on one that the test describes.
class EditorFixture : public ScreenFixture
{
protected:
    EditorFixture() : eventLog(box.machine), errorLog(box.machine)
    {
        eventLog.setLogPath(QStringLiteral("C:\\Vorlant\\Log"));
        eventLog.setLogFileName(QStringLiteral("Event.log"));
        errorLog.setLogPath(QStringLiteral("C:\\Vorlant\\Log"));
        errorLog.setLogFileName(QStringLiteral("Error.log"));
        box.context.eventLog = eventLog;
        kx.Logs(errorLog, noLog());
        settings.m_bAdjustDesign = true;
    }

    // Every item "TAG|type|stored|decimals,lower,upper,sign,sign|keys that come first": column 1, one row each,
    // writable.
    void screen(const QStringList& items, const QByteArray& blocks = {}, const char* model = "KX41000000-10A")
    {
        QByteArray text =
            "[Setting]\nMaxRow=30\nBlockMaxCount=2\nDataMaxCount=" + QByteArray::number(items.size()) + "\n" + blocks;
        int n = 0;
        for (const QString& item : items) {
            ++n;
            const QStringList fields = item.split(u'|');
            const QString info = fields.value(3).isEmpty() ? QStringLiteral("0,-100,100,<=,<=") : fields[3];
            text +=
                dataSection(n, QStringLiteral("%6\nTag=%1\nCellType=%2\nDefaultData=%3\nDataInfo=%4,0,10\nDataLen=2\n"
                                              "CellData=%5,1,vbWhite,vbBlack\nCommRaedSection=Main\nKXAddress=8000\n"
                                              "CommWriteSection=Main\n")
                                   .arg(fields[0], fields[1], fields[2], info, QString::number(n), fields.value(4))
                                   .toUtf8()
                                   .constData());
        }
        load(text, "[Main]\nReadCmdMax=1\nReadCmd1=Direct,8000,99\nWriteCmdMax=1\nWriteCmd1=Direct,8000,99\n",
             QString::fromLatin1(model));
        kx.refreshSpread(false, nullptr);
    }

    void shipped(const QString& code, const QString& options = QStringLiteral("11110-10A"))
    {
        const platform::ProfileStore::Batch once(box.machine.profiles);
        const QDir from(QStringLiteral(VORLANT_DATA_DIR "/ini"));
        for (const QString& name : from.entryList(QDir::Files))
            QFile::copy(from.filePath(name), box.path(QStringLiteral("C:\\Vorlant\\ini")) + u'/' + name);
        put(library.getIniFilePath(QStringLiteral("Main")) + QStringLiteral("\\Vorlant.ini"),
            "[KXInfos]\nKXMaxCount=0\n");
        ModelCatalogue catalogue(library);
        catalogue.ensureBuiltIn();
        kx.load(catalogue.numberOf(code), &library, code + options);
        kx.refreshSpread(false, nullptr);
    }

    // "TAG=stored", as if it had been read.
    void start(const QString& values)
    {
        for (const QString& value : values.split(u' ', Qt::SkipEmptyParts))
            item(value.section(u'=', 0, 0)).setData(value.section(u'=', 1));
        if (const clsData* unit = kx.getDataByTag(QStringLiteral("SWQCF")))
            kx.setUnitSwitch(unit->Data().toInt());
        for (const auto& one : kx.items())
            one->Edit = EditState::kRead;
        kx.refreshSpread(false, nullptr);
    }

    clsData& item(const QString& tag)
    {
        clsData* found = kx.getDataByTag(tag);
        if (found == nullptr)
            throw std::runtime_error("no item " + tag.toStdString());
        return *found;
    }

    const platform::Cell& cell(const QString& tag) { return grid.cell(item(tag).Row(), item(tag).Col()); }

    // "TAG=text" is typed, "TAG#choice" chosen from a combo box.
    bool enter(const QString& entry)
    {
        const bool isChoice = entry.contains(u'#');
        const clsData& target = item(entry.section(isChoice ? u'#' : u'=', 0, 0));
        const QString value = entry.section(isChoice ? u'#' : u'=', 1);
        return isChoice ? editor.changeCombo(target.Col(), target.Row(), value.toInt())
                        : editor.checkCell(target.Col(), target.Row(), true, value);
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
            const auto expected = one->isAllowed() ? 0xFF0000U : 0x0000FFU; // blue; red is not sent
            const bool isBlue = its.font.bold && its.foreColor == expected;
            if (isMarked || (one->Visible() && isBlue))
                list << (!one->Visible() || isBlue == isMarked ? QString() : QStringLiteral("!")) + one->Key();
        }
        list.sort();
        return list.join(u' ').toStdString();
    }

    // All that an undo must bring back.
    struct Everything
    {
        std::vector<ItemState> items;
        std::vector<platform::Cell> cells;
        int unit = 0;
        bool operator==(const Everything&) const = default;
    };
    Everything everything()
    {
        Everything all;
        for (const auto& one : kx.items())
            all.items.push_back(one->state());
        for (int row = 1; row <= grid.maxRows(); ++row) {
            for (int col = 1; col <= grid.maxCols(); ++col)
                all.cells.push_back(grid.cell(row, col));
        }
        all.unit = kx.unitSwitch();
        return all;
    }

    // The messages of a log, without stamps.
    QStringList logged(const char* file)
    {
        QStringList lines;
        const QByteArray bytes = content(QStringLiteral("C:\\Vorlant\\Log\\") + QLatin1String(file));
        for (qsizetype at = clsLog::kHeaderBytes; at + 256 <= bytes.size(); at += 256)
            lines << QString::fromUtf8(bytes.mid(at + clsLog::kStampBytes, 256 - clsLog::kFrameBytes)).trimmed();
        return lines;
    }

    clsLog eventLog;
    clsLog errorLog;
    RecordingMessages::Record record;
    RecordingMessages messages{record};
    RecordingShell shell;
    CellEditor editor{kx, messages, shell};
};
