#pragma once

#include "GridModel.h"
#include "TestMachine.h"
#include "clsCfg.h"
#include "clsKX.h"
#include "clsLibrary.h"

#include <gtest/gtest.h>
#include <stdexcept>

// Codes of the models whose definition files are shipped.
constexpr const char* kShippedModels[] = {"KX410", "KX413", "KX620", "KX623", "KX640", "KX643", "KX910"};

// A model whose definition files are written by the test: catalogue entry 1, "M.ini" and "MComm.ini".
class ScreenFixture : public ::testing::Test
{
protected:
    ScreenFixture() : library(box.context), kx(library)
    {
        settings.init(&library);
        box.context.settings = settings;
        kx.setSpread(&grid);
        catalogue("KXMaxCount=1\nKXModel1=KX410\nKXName1=KX410\nKXScreenFile1=M.ini\nKXCommFile1=MComm.ini\n");
    }

    void put(const QString& desktopPath, const QByteArray& bytes)
    {
        ASSERT_TRUE(box.put(desktopPath, bytes)) << qPrintable(desktopPath);
    }

    QByteArray content(const QString& desktopPath) { return box.content(desktopPath); }

    QString definition(const QString& name) { return library.getIniFilePath({}) + u'\\' + name; }

    void catalogue(const QByteArray& keys)
    {
        put(library.getIniFilePath("Main") + "\\Vorlant.ini", "[KXInfos]\n" + keys);
    }

    // The shipped files of a program folder, "ini" or "Lang".
    void copyShipped(const QString& folder)
    {
        const QDir from(QStringLiteral(VORLANT_DATA_DIR "/") + folder);
        for (const QString& name : from.entryList(QDir::Files)) {
            const QString to = box.path("C:\\Vorlant\\" + folder) + u'/' + name;
            ASSERT_TRUE(QFile::exists(to) || QFile::copy(from.filePath(name), to)) << qPrintable(name);
        }
    }

    void load(const QByteArray& screen, const QByteArray& comm = {}, const QString& model = "KX41000000-10A")
    {
        put(definition("M.ini"), screen);
        put(definition("MComm.ini"), comm);
        kx.load(1, &library, model);
    }

    clsData& item(const QString& tag)
    {
        clsData* found = kx.getDataByTag(tag);
        if (found == nullptr)
            throw std::runtime_error("no item " + tag.toStdString());
        return *found;
    }

    TestMachine box;
    clsLibrary library;
    clsCfg settings;
    platform::GridModel grid;
    clsKX kx;
};

// One "Datas" section with the keys that matter to the test.
inline QByteArray dataSection(int n, const QByteArray& keys)
{
    return "[Datas" + QByteArray::number(n) + "]\n" + keys + "\n";
}

// A screen of 30 rows and 3 columns with an item for each group of keys, moreKeys behind them; of a key that is there
// twice the first one counts.
inline QByteArray screenOf(const QByteArrayList& items, const QByteArray& moreKeys = {},
                           const QByteArray& settings = {})
{
    QByteArray text =
        "[Setting]\n" + settings + "MaxRow=30\nMaxCol=3\nDataMaxCount=" + QByteArray::number(items.size());
    for (int n = 1; n <= items.size(); ++n)
        text += '\n' + dataSection(n, items[n - 1] + '\n' + moreKeys);
    return text;
}

// Every item "TAG|type|stored|decimals,lower,upper,sign,sign|keys that come first": column 1, one row each.
inline QByteArrayList itemKeys(const QStringList& items)
{
    QByteArrayList keys;
    for (const QString& item : items) {
        const QStringList fields = item.split(u'|');
        const QString info = fields.value(3).isEmpty() ? "0,-100,100,<=,<=" : fields[3];
        keys << QString("%1\nTag=%2\nCellType=%3\nDefaultData=%4\nDataInfo=%5,0,10\nDataLen=2\n"
                        "CellData=%6,1,vbWhite,vbBlack")
                    .arg(fields.value(4), fields[0], fields[1], fields[2], info, QString::number(keys.size() + 1))
                    .toUtf8();
    }
    return keys;
}
