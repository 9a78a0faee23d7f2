// Refreshing the visible items of a screen from their memory images, lock rules included.

#include "ModelCatalogue.h"
#include "ProgramContext.h"
#include "clsKX.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr int kRounds = 25;
constexpr int kBytes = 120; // of one memory image

void put(const QString& file, const QByteArray& text)
{
    QFile out(file);
    if (out.open(QIODevice::WriteOnly))
        out.write(text);
}

// Items of every kind that a refresh treats in a way of its own; 60 items share an image.
QByteArray screenFile(int items)
{
    QByteArray text = "[Setting]\r\nDataMaxCount=" + QByteArray::number(items) +
                      "\r\nMaxCol=10\r\nMaxRow=" + QByteArray::number(items / 5 + 1) + "\r\n";
    const QByteArray special[] = {"PQRNO", "SVDOT", "PQKAL1", "VQAL1", "VQ1DB", "EV1MOD", "VQLIL", "SWQCF"};
    for (int n = 1; n <= items; ++n) {
        const QByteArray number = QByteArray::number(n);
        const QByteArray tag = n <= 8 ? special[n - 1] : "P" + number;
        const QByteArray type = tag == "SWQCF" ? "Bit" : n % 7 == 0 ? "Combo" : "Data";
        const QByteArray address = QByteArray::number(0x8000 + n % (kBytes / 2) * 2, 16);
        text += "[Datas" + number + "]\r\nTag=" + tag + "\r\nCellType=" + type +
                "\r\nDataLen=" + (type == "Bit" ? "1" : "2") + "\r\nKXAddress=" + address + "\r\nCommRaedSection=Read" +
                QByteArray::number(n / (kBytes / 2)) + "\r\nCellData=" + QByteArray::number((n - 1) / 5 + 1) + ',' +
                QByteArray::number((n - 1) % 5 * 2 + 1) +
                ",vbWhite,vbBlack\r\nDataInfo=DOTSVDOT,-1999,9999,<=,<=,0,10\r\n"
                "ComboStrings=OffvbTabOn\r\nComboDatas=0vbTab1\r\n";
    }
    return text;
}

QByteArray commFile(int items)
{
    QByteArray text;
    for (int image = 0; image <= items / (kBytes / 2); ++image)
        text +=
            "[Read" + QByteArray::number(image) + "]\r\nReadCmd1=Direct,8000," + QByteArray::number(kBytes) + "\r\n";
    return text;
}

struct Result
{
    double milliseconds = 1e9;
    int filled = 0; // cells that show a value
};

Result measure(int items)
{
    const QTemporaryDir dir;
    QDir().mkpath(dir.filePath(QStringLiteral("program/ini")));
    QDir().mkpath(dir.filePath(QStringLiteral("config")));
    put(dir.filePath(QStringLiteral("program/ini/KX910Screen.ini")), screenFile(items));
    put(dir.filePath(QStringLiteral("program/ini/KX910Comm.ini")), commFile(items));
    const platform::SystemColors colors;
    const platform::Folders folders(platform::PathMap(), dir.filePath(QStringLiteral("program")),
                                    dir.filePath(QStringLiteral("config")));
    ProgramContext program(platform::PathMap(), folders, QProcessEnvironment(), colors);
    ModelCatalogue catalogue(program.library());
    catalogue.ensureBuiltIn();
    platform::GridModel grid;
    clsKX kx(program.library());
    kx.setSpread(&grid);
    kx.load(catalogue.numberOf(QStringLiteral("KX910")), &program.library(), QStringLiteral("KX91000000-10A"));
    for (int image = 0; image < kx.ColAdr().count(); ++image)
        kx.ColAdr().at(image).markFilled();
    Result result;
    for (int round = 0; round < kRounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        kx.refreshSpread(true, nullptr);
        result.milliseconds = std::min(result.milliseconds, static_cast<double>(timer.nsecsElapsed()) * 1e-6);
    }
    for (const auto& item : kx.items())
        result.filled += grid.cell(item->Row(), item->Col()).text.isEmpty() ? 0 : 1;
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    const int items = smoke ? 100 : 1000;
    const Result small = measure(items);
    const Result large = measure(4 * items);
    std::printf("refresh: %d items %.2f ms (limit 20 for 1000)\n", items, small.milliseconds);
    std::printf("refresh: growth to %d items over linear: %.2f (limit 1.2)\n", 4 * items,
                large.milliseconds / (4 * small.milliseconds));
    return small.filled == items && large.filled == 4 * items ? 0 : 1;
}
