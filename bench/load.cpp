// Building the grid of a screen file, over what an INI parser and a table widget need for the same file and texts.

#include "ModelCatalogue.h"
#include "ProgramContext.h"
#include "clsKX.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTableWidget>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ini.h>
#include <vector>

namespace {

constexpr int kColumns = 10;
constexpr int kRounds = 5;
const QString kModelString = QStringLiteral("KX41000000-10A");

QByteArray screenFile(int items)
{
    QByteArray text = "[Setting]\r\nExtName=k\r\nDataPath=\r\nBlockMaxCount=0\r\nStringMaxCount=0\r\nDataMaxCount=" +
                      QByteArray::number(items) + "\r\nDialogFilter=k|*.k\r\nDefaultFontName=System\r\n" +
                      "DefaultFontSize=11\r\nDefaultBackColor=vbWhite\r\nDefaultForeColor=vbBlack\r\nMaxRow=" +
                      QByteArray::number(items / 5 + 1) + "\r\nMaxCol=10\r\n";
    for (int col = 1; col <= kColumns; ++col)
        text += "ColWidth" + QByteArray::number(col) + "=10\r\n";
    for (int n = 1; n <= items; ++n) {
        const QByteArray cell = QByteArray::number((n - 1) / 5 + 1) + ',' + QByteArray::number((n - 1) % 5 * 2 + 1);
        text += "[Datas" + QByteArray::number(n) + "]\r\nTag=TAG" + QByteArray::number(n) +
                "\r\nBlockNo=0\r\nName=Parameter\r\nOption=\r\nVisible=True\r\nEnabled=True\r\nKXAddress=8000\r\n"
                "DataLen=2\r\nBitMask=0\r\nCellData=" +
                cell +
                ",vbWhite,vbBlack\r\nCommRaedSection=Main\r\nCommWriteSection=Main\r\nCellType=Data\r\n"
                "BitCaptionOn=On\r\nBitCaptionOff=Off\r\nBitData=1,0\r\nDataInfo=1,-1999,9999,<=,<=,0,10\r\n"
                "ComboStrings=\r\nComboDatas=\r\nMultiSelectSection=\r\nInputCSelectSection=\r\n"
                "InputKSelectSection=\r\nDefaultData=" +
                QByteArray::number(n) + "\r\n";
    }
    return text;
}

int countValue(void* counter, const char*, const char*, const char*)
{
    ++*static_cast<long*>(counter);
    return 1;
}

double reference(const QString& file, const platform::GridModel& grid)
{
    QElapsedTimer timer;
    timer.start();
    long values = 0;
    ini_parse(QFile::encodeName(file).constData(), countValue, &values);
    QTableWidget table(grid.maxRows(), grid.maxCols());
    for (int row = 1; row <= grid.maxRows(); ++row) {
        for (int col = 1; col <= grid.maxCols(); ++col)
            table.setItem(row - 1, col - 1, new QTableWidgetItem(grid.cell(row, col).text));
    }
    return static_cast<double>(timer.nsecsElapsed()) * 1e-6;
}

struct Times
{
    double load = 1e9;      // milliseconds
    double reference = 1e9; // milliseconds
    size_t items = 0;
};

Times measure(int items)
{
    const QTemporaryDir dir;
    QDir().mkpath(dir.filePath(QStringLiteral("program/ini")));
    QDir().mkpath(dir.filePath(QStringLiteral("config")));
    const QString file = dir.filePath(QStringLiteral("program/ini/KX410Screen.ini"));
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly))
        return {};
    out.write(screenFile(items));
    out.close();
    Times best;
    for (int round = 0; round < kRounds; ++round) {
        const platform::SystemColors colors;
        const platform::Folders folders(platform::PathMap(), dir.filePath(QStringLiteral("program")),
                                        dir.filePath(QStringLiteral("config")));
        ProgramContext program(platform::PathMap(), folders, QProcessEnvironment(), colors);
        ModelCatalogue(program.library()).ensureBuiltIn();
        platform::GridModel grid;
        clsKX kx(program.library());
        kx.setSpread(&grid);
        QElapsedTimer timer;
        timer.start();
        kx.load(1, &program.library(), kModelString);
        best.load = std::min(best.load, static_cast<double>(timer.nsecsElapsed()) * 1e-6);
        best.reference = std::min(best.reference, reference(file, grid));
        best.items = kx.items().size();
    }
    return best;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    const int items = smoke ? 50 : 1000;
    const Times small = measure(items);
    const Times large = measure(4 * items);
    std::printf("load: %d items %.1f ms over %.1f ms: %.2f (limit 5)\n", items, small.load, small.reference,
                small.load / small.reference);
    std::printf("load: growth to %d items over linear: %.2f (limit 1.2)\n", 4 * items, large.load / (4 * small.load));
    return small.items == static_cast<size_t>(items) && large.items == static_cast<size_t>(4 * items) ? 0 : 1;
}
