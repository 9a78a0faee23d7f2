// A key stroke in the search over a screen: the hits among all parameters, with every value looked at.

#include "ModelCatalogue.h"
#include "ParameterSearch.h"
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

constexpr int kRounds = 15;
constexpr int kItems = 1000;
constexpr double kLimitMs = 5;
// What one types, of which each stroke is measured: many hits, then few, then none.
constexpr const char16_t* kStrokes[] = {u"p", u"pa", u"parameter 99", u"パラメータ", u"12", u"nothing"};

bool put(const QString& file, const QByteArray& text)
{
    QFile out(file);
    return out.open(QIODevice::WriteOnly) && out.write(text) == text.size();
}

void writeModel(const QString& folder, int items)
{
    QByteArray screen = "[Setting]\r\nDataMaxCount=" + QByteArray::number(items) +
                        "\r\nMaxCol=10\r\nMaxRow=" + QByteArray::number(items / 5 + 1) + "\r\n";
    QByteArray texts = "[Info]\r\nName=Japanese\r\n[Language]\r\n";
    for (int n = 1; n <= items; ++n) {
        const QByteArray number = QByteArray::number(n);
        screen += "[Datas" + number + "]\r\nTag=P" + number + "\r\nName=Parameter " + number +
                  "\r\nDefaultData=" + number + "\r\nCellData=" + QByteArray::number((n - 1) / 5 + 1) + ',' +
                  QByteArray::number((n - 1) % 5 * 2 + 1) + ",vbWhite,vbBlack\r\nDataInfo=1,-9999,9999,<=,<=,0,10\r\n";
        texts += "Parameter " + number + "=パラメータ" + number + "\r\n";
    }
    QDir().mkpath(folder + QStringLiteral("/program/ini"));
    QDir().mkpath(folder + QStringLiteral("/program/Lang"));
    QDir().mkpath(folder + QStringLiteral("/config"));
    put(folder + QStringLiteral("/program/ini/KX910Screen.ini"), screen);
    put(folder + QStringLiteral("/program/ini/KX910Comm.ini"), "[Setting]\r\n");
    put(folder + QStringLiteral("/program/Lang/JP.txt"), "\xEF\xBB\xBF" + texts);
}

class SearchedModel
{
public:
    explicit SearchedModel(int items)
    {
        writeModel(m_dir.path(), items);
        ModelCatalogue catalogue(m_program.library());
        catalogue.ensureBuiltIn();
        m_kx.setSpread(&m_grid);
        m_kx.load(catalogue.numberOf(QStringLiteral("KX910")), &m_program.library(), QStringLiteral("KX91000000-10A"));
    }

    // The slowest stroke of one round; every value is new, as after a read.
    double strokeMs()
    {
        m_search.reload(Wordings(m_program.context()));
        double slowest = 0;
        m_hits = 0;
        for (const char16_t* typed : kStrokes) {
            QElapsedTimer timer;
            timer.start();
            m_search.setText(QString::fromUtf16(typed));
            slowest = std::max(slowest, static_cast<double>(timer.nsecsElapsed()) * 1e-6);
            m_hits += static_cast<int>(m_search.hits().size());
        }
        return slowest;
    }
    int hits() const { return m_hits; }

private:
    QTemporaryDir m_dir;
    platform::SystemColors m_colors;
    ProgramContext m_program{platform::PathMap(),
                             platform::Folders(platform::PathMap(), m_dir.filePath(QStringLiteral("program")),
                                               m_dir.filePath(QStringLiteral("config"))),
                             QProcessEnvironment(), m_colors};
    platform::GridModel m_grid;
    clsKX m_kx{m_program.library()};
    ParameterSearch m_search{m_kx};
    int m_hits = 0;
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const bool isSmoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    SearchedModel small(kItems);
    SearchedModel large(4 * kItems);
    double smallMs = 1e9;
    double largeMs = 1e9;
    for (int round = 0; round < (isSmoke ? 1 : kRounds); ++round) { // in turn, so that both meet what else runs
        smallMs = std::min(smallMs, small.strokeMs());
        largeMs = std::min(largeMs, large.strokeMs());
    }
    std::printf("search: a key stroke over %d items %.2f ms (limit %.0f), over %d %.2f ms (limit %.0f)\n", kItems,
                smallMs, kLimitMs, 4 * kItems, largeMs, 4 * kLimitMs);
    return small.hits() > 2 * kItems ? 0 : 1;
}
