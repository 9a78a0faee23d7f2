#pragma once

#include "GridModel.h"
#include "TestMachine.h"
#include "clsCfg.h"
#include "clsKX.h"
#include "clsLibrary.h"

#include <gtest/gtest.h>

// A model whose definition files are written by the test: catalogue entry 1, "M.ini" and "MComm.ini".
class ScreenFixture : public ::testing::Test
{
protected:
    ScreenFixture() : library(box.context), kx(library)
    {
        settings.init(&library);
        box.context.settings = settings;
        kx.setSpread(&grid);
        library.getIniFilePath(QStringLiteral("Main"));
        put(library.getIniFilePath(QStringLiteral("Main")) + QStringLiteral("\\Vorlant.ini"),
            "[KXInfos]\nKXMaxCount=1\nKXModel1=KX410\nKXName1=KX410\nKXScreenFile1=M.ini\nKXCommFile1=MComm.ini\n");
    }

    void put(const QString& desktopPath, const QByteArray& bytes)
    {
        ASSERT_TRUE(box.put(desktopPath, bytes)) << qPrintable(desktopPath);
    }

    QByteArray content(const QString& desktopPath) { return box.content(desktopPath); }

    QString definition(const QString& name) { return library.getIniFilePath(QString()) + u'\\' + name; }

    void load(const QByteArray& screen, const QByteArray& comm = {},
              const QString& model = QStringLiteral("KX41000000-10A"))
    {
        put(definition(QStringLiteral("M.ini")), screen);
        put(definition(QStringLiteral("MComm.ini")), comm);
        kx.load(1, &library, model);
    }

    TestMachine box;
    clsLibrary library;
    clsCfg settings;
    platform::GridModel grid;
    clsKX kx;
};

// One "Datas" section with the keys that matter to the test.
inline QByteArray dataSection(int n, const char* keys)
{
    return "[Datas" + QByteArray::number(n) + "]\n" + keys + "\n";
}
