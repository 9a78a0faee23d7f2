// One edit of a large screen, from the entry to the last interlock and the step of undo; the repaint is not counted.

#include "CellEditor.h"
#include "MessagePresenter.h"
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

constexpr int kRounds = 50;

void put(const QString& file, const QByteArray& text)
{
    QFile out(file);
    if (out.open(QIODevice::WriteOnly))
        out.write(text);
}

// Nobody is asked, nothing goes out.
class Silent : public CellEditorShell, public MessagePresenter
{
public:
    MainState state() const override { return MainState::UpToDate; }
    bool isBusy() const override { return false; }
    bool writeOne(const QString& /*tag*/) override { return false; }
    bool writeBlock(clsBlock& /*block*/, bool /*readBack*/) override { return false; }
    bool writeBlockThenOne(clsBlock* /*block*/, const QString& /*tag*/) override { return false; }
    void openMultiSelect(clsData& /*item*/, const QString& /*section*/) override {}
    int present(const Message& /*message*/) override { return MessageResult::kOk; }
};

// A voltage input, its limits, the set values and what the control action ties, then plain parameters.
QByteArray screenFile(int items)
{
    const char* const special[] = {"PQRNO|Input|1|0,0,1",
                                   "SVDOT|Combo|1|0,0,3",
                                   "VQLIL|Data|0|DOTSVDOT,TAGRANGEL,TAGRANGEH",
                                   "VQLIH|Data|1000|DOTSVDOT,TAGRANGEL,TAGRANGEH",
                                   "VQSVL|Data|0|DOTSVDOT,TAGVQLIL,TAGVQSVH",
                                   "VQSVH|Data|1000|DOTSVDOT,TAGVQSVL,TAGVQLIH",
                                   "VQSV1|Data|500|DOTSVDOT,TAGVQSVL,TAGVQSVH",
                                   "VQSV2|Data|900|DOTSVDOT,TAGVQSVL,TAGVQSVH",
                                   "VQLIZS|Data|1000|1,-1999,9999"};
    QByteArray text = "[Setting]\r\nDataMaxCount=" + QByteArray::number(items) +
                      "\r\nMaxCol=10\r\nMaxRow=" + QByteArray::number(items / 5 + 1) + "\r\n";
    for (int n = 1; n <= items; ++n) {
        const bool isSpecial = n <= static_cast<int>(std::size(special));
        const QByteArray number = QByteArray::number(n);
        const QList<QByteArray> fields = isSpecial
                                             ? QByteArray(special[n - 1]).split('|')
                                             : QList<QByteArray>{"P" + number, "Data", number, "DOTSVDOT,-1999,9999"};
        text +=
            "[Datas" + number + "]\r\nTag=" + fields[0] + "\r\nCellType=" + fields[1] + "\r\nDefaultData=" + fields[2] +
            "\r\nDataInfo=" + fields[3] +
            ",<=,<=,0,10\r\nDataLen=2\r\nKXAddress=8000\r\nCommRaedSection=Main\r\nCommWriteSection=Main\r\nCellData=" +
            QByteArray::number((n - 1) / 5 + 1) + ',' + QByteArray::number((n - 1) % 5 * 2 + 1) +
            ",vbWhite,vbBlack\r\nInputCSelectSection=IC\r\nInputKSelectSection=IC\r\n"
            "ComboStrings=0vbTab1vbTab2vbTab3\r\nComboDatas=0vbTab1vbTab2vbTab3\r\n";
    }
    return text;
}

struct Result
{
    double cascade = 1e9; // milliseconds: an input limit, which moves both set-value limits and both set values
    double plain = 1e9;   // a parameter without interlocks
    double undo = 1e9;
    double redraw = 1e9; // the decimal point, which redraws the whole screen
    int taken = 0;
    int undone = 0;
};

class Run
{
public:
    explicit Run(clsKX& kx) : m_kx(kx), m_editor(kx, m_silent, m_silent) {}

    void round(Result& result, bool up)
    {
        const QString before = stored("VQSVH");
        result.cascade = std::min(result.cascade, time([&] { enter(result, "VQLIZS", up ? u"40.0" : u"30.0"); }));
        const QString moved = stored("VQSVH");
        result.undo = std::min(result.undo, time([&] { m_editor.undo(); }));
        const bool isBack = moved != before && stored("VQSVH") == before;
        result.undone += isBack && m_editor.canRedo() ? 1 : 0;
        m_editor.redo();
        result.plain = std::min(result.plain, time([&] { enter(result, "P20", up ? u"7" : u"8"); }));
        const clsData* point = m_kx.getDataByTag(QStringLiteral("SVDOT"));
        result.redraw = std::min(
            result.redraw, time([&] { result.taken += m_editor.changeCombo(point->Col(), point->Row(), 2) ? 1 : 0; }));
        m_editor.undo();
    }

private:
    template <typename Step> static double time(Step step)
    {
        QElapsedTimer timer;
        timer.start();
        step();
        return static_cast<double>(timer.nsecsElapsed()) * 1e-6;
    }

    QString stored(const char* tag) const { return m_kx.getDataByTag(QLatin1String(tag))->Data(); }

    void enter(Result& result, const char* tag, QStringView text)
    {
        const clsData* item = m_kx.getDataByTag(QLatin1String(tag));
        const bool taken = m_editor.checkCell(item->Col(), item->Row(), true, text.toString());
        const bool followed = m_kx.getDataByTag(QStringLiteral("VQSVH"))->Edit == EditState::kChanged;
        result.taken += taken && followed ? 1 : 0;
    }

    clsKX& m_kx;
    Silent m_silent;
    CellEditor m_editor;
};

Result measure(int items)
{
    const QTemporaryDir dir;
    QDir().mkpath(dir.filePath(QStringLiteral("program/ini")));
    QDir().mkpath(dir.filePath(QStringLiteral("config")));
    put(dir.filePath(QStringLiteral("program/ini/KX910Screen.ini")), screenFile(items));
    put(dir.filePath(QStringLiteral("program/ini/KX910Comm.ini")),
        "[Main]\r\nReadCmdMax=1\r\nReadCmd1=Direct,8000,120\r\nWriteCmdMax=1\r\nWriteCmd1=Direct,8000,120\r\n");
    put(dir.filePath(QStringLiteral("program/ini/MultiSelect.ini")),
        "[IC]\r\nData1=1,1\r\nName1=0-5V DC\r\nName2=Test\r\n");
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
    kx.refreshSpread(false, nullptr);
    Result result;
    Run run(kx);
    for (int i = 0; i < kRounds; ++i)
        run.round(result, i % 2 == 0);
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
    std::printf("edit: longest cascade on %d items %.2f ms (limit 2 for 1000), undo %.1f us\n", items, small.cascade,
                small.undo * 1000);
    std::printf("edit: cascade over an edit without interlocks: %.2f\n", small.cascade / small.plain);
    std::printf("edit: growth to %d items over linear: %.2f (limit 1.2)\n", 4 * items,
                large.cascade / (4 * small.cascade));
    std::printf("edit: decimal point, which redraws all cells: %.2f ms\n", small.redraw);
    const bool worked = small.taken == 3 * kRounds && large.taken == 3 * kRounds && small.undone == kRounds;
    return worked ? 0 : 1;
}
