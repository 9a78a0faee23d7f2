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

// A model of so many items, read and shown, whose refresh can be timed.
class Screen
{
public:
    explicit Screen(int items)
    {
        QDir().mkpath(m_dir.filePath(QStringLiteral("program/ini")));
        QDir().mkpath(m_dir.filePath(QStringLiteral("config")));
        put(m_dir.filePath(QStringLiteral("program/ini/KX910Screen.ini")), screenFile(items));
        put(m_dir.filePath(QStringLiteral("program/ini/KX910Comm.ini")), commFile(items));
        ModelCatalogue catalogue(m_program.library());
        catalogue.ensureBuiltIn();
        m_kx.setSpread(&m_grid);
        m_kx.load(catalogue.numberOf(QStringLiteral("KX910")), &m_program.library(), QStringLiteral("KX91000000-10A"));
        for (int image = 0; image < m_kx.ColAdr().count(); ++image)
            m_kx.ColAdr().at(image).markFilled();
    }

    void time()
    {
        QElapsedTimer timer;
        timer.start();
        m_kx.refreshSpread(true, nullptr);
        m_milliseconds = std::min(m_milliseconds, static_cast<double>(timer.nsecsElapsed()) * 1e-6);
    }

    double milliseconds() const { return m_milliseconds; }

    bool isFilled() const
    {
        return std::all_of(m_kx.items().begin(), m_kx.items().end(),
                           [this](const auto& item) { return !m_grid.cell(item->Row(), item->Col()).text.isEmpty(); });
    }

private:
    const QTemporaryDir m_dir;
    const platform::SystemColors m_colors;
    ProgramContext m_program{platform::PathMap(),
                             platform::Folders(platform::PathMap(), m_dir.filePath(QStringLiteral("program")),
                                               m_dir.filePath(QStringLiteral("config"))),
                             QProcessEnvironment(), m_colors};
    platform::GridModel m_grid;
    clsKX m_kx{m_program.library()};
    double m_milliseconds = 1e9;
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    const int items = smoke ? 100 : 1000;
    Screen small(items);
    Screen large(4 * items);
    for (int round = 0; round < kRounds; ++round) { // in turn: what else the machine does meets both alike
        small.time();
        large.time();
    }
    std::printf("refresh: %d items %.2f ms (limit 20 for 1000)\n", items, small.milliseconds());
    std::printf("refresh: growth to %d items over linear: %.2f (limit 1.2)\n", 4 * items,
                large.milliseconds() / (4 * small.milliseconds()));
    return small.isFilled() && large.isFilled() ? 0 : 1;
}
