// The review: building the list of changed parameters, linear in their number; and sending one changed parameter of the
// simulated KX410 at the pace of a real wire, wall time over the time of its bytes on the wire and of the pauses.

#include "Review.h"
#include "PacedController.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr int kRounds = 15;
constexpr int kBytes = 120; // of one memory image
constexpr double kLimitMs = 20;
constexpr int kSmall = 1000;
constexpr int kLarge = 4000;

bool put(const QString& file, const QByteArray& text)
{
    QFile out(file);
    return out.open(QIODevice::WriteOnly) && out.write(text) == text.size();
}

// 60 parameters share an image.
void writeModel(const QString& folder, int items)
{
    QByteArray screen = "[Setting]\r\nDataMaxCount=" + QByteArray::number(items) +
                        "\r\nBlockMaxCount=1\r\nMaxCol=10\r\nMaxRow=" + QByteArray::number(items / 5 + 1) +
                        "\r\n[BlockInfo1]\r\nBlockNo=1\r\nName=Block\r\n";
    QByteArray comm;
    for (int n = 1; n <= items; ++n) {
        const QByteArray number = QByteArray::number(n);
        const QByteArray section = "Image" + QByteArray::number(n / (kBytes / 2));
        screen += "[Datas" + number + "]\r\nTag=P" + number + "\r\nName=Parameter " + number +
                  "\r\nBlockNo=1\r\nDataLen=2\r\nKXAddress=" + QByteArray::number(0x8000 + n % (kBytes / 2) * 2, 16) +
                  "\r\nCommRaedSection=" + section + "\r\nCommWriteSection=" + section +
                  "\r\nCellData=" + QByteArray::number((n - 1) / 5 + 1) + ',' +
                  QByteArray::number((n - 1) % 5 * 2 + 1) + ",vbWhite,vbBlack\r\nDataInfo=1,-9999,9999,<=,<=,0,10\r\n";
    }
    for (int image = 0; image <= items / (kBytes / 2); ++image)
        comm += "[Image" + QByteArray::number(image) + "]\r\nReadCmd1=Direct,8000," + QByteArray::number(kBytes) +
                "\r\nWriteCmd1=Direct,8000," + QByteArray::number(kBytes) + "\r\n";
    put(folder + QStringLiteral("/program/ini/KX910Screen.ini"), screen);
    put(folder + QStringLiteral("/program/ini/KX910Comm.ini"), comm);
}

// A model of so many parameters, all of them changed.
class ChangedModel
{
public:
    explicit ChangedModel(int items) : m_items(items), m_folders(paced::scratchFolders(m_dir.path()))
    {
        writeModel(m_dir.path(), items);
        ModelCatalogue catalogue(m_program.library());
        catalogue.ensureBuiltIn();
        m_kx.setSpread(&m_grid);
        m_kx.load(catalogue.numberOf(QStringLiteral("KX910")), &m_program.library(), QStringLiteral("KX91000000-10A"));
        for (int image = 0; image < m_kx.ColAdr().count(); ++image)
            m_kx.ColAdr().at(image).markFilled();
        for (const auto& item : m_kx.items()) {
            item->hold(QStringLiteral("77"));
            item->Edit = EditState::kChanged;
        }
    }

    bool time()
    {
        QElapsedTimer timer;
        timer.start();
        m_review.refresh();
        m_best = std::min(m_best, static_cast<double>(timer.nsecsElapsed()) * 1e-6);
        return m_review.changes() == m_items;
    }
    double bestMs() const { return m_best; }

private:
    int m_items;
    QTemporaryDir m_dir;
    platform::Folders m_folders;
    platform::SystemColors m_colors;
    ProgramContext m_program{platform::PathMap(), m_folders, QProcessEnvironment(), m_colors};
    platform::GridModel m_grid;
    clsKX m_kx{m_program.library()};
    Review m_review{m_kx};
    double m_best = 1e9;
};

// In turn, so that both meet what else runs.
bool measureList(int rounds)
{
    ChangedModel small(kSmall);
    ChangedModel large(kLarge);
    bool isComplete = true;
    for (int i = 0; i < rounds; ++i)
        isComplete = small.time() && large.time() && isComplete;
    std::printf("review: list of %d changes %.2f ms (limit %.0f), of %d %.2f ms: growth %.2f (limit 1.2)\n", kSmall,
                small.bestMs(), kLimitMs, kLarge, large.bestMs(), large.bestMs() / small.bestMs() * kSmall / kLarge);
    return isComplete;
}

bool measureSend(int pace)
{
    paced::Connection connection(0, pace);
    TransferEngine& engine = *connection.engine;
    engine.getDataFromKX(nullptr);
    clsData* setValue = connection.kx.getDataByTag(QStringLiteral("VQSV1"));
    double wall = 0;
    for (const char* value : {"1111", "1357"}) { // the first one makes the folders of backups and history
        setValue->setData(QString::fromLatin1(value));
        setValue->Edit = EditState::kChanged;
        QElapsedTimer timer;
        timer.start();
        engine.writeChosen({QStringLiteral("VQSV1")});
        wall = static_cast<double>(timer.nsecsElapsed()) * 1e-9;
    }
    const WriteReport& report = engine.lastWrite();
    const double wire = static_cast<double>(report.wireBytes) * paced::kBitsPerByte / pace;
    const double pauses = report.pausesMs * 1e-3;
    std::printf("review: one parameter sent at %d: %.3f s over %.3f s on the wire and %.3f s of pauses: %.3f (limit "
                "1.10)\n",
                pace, wall, wire, pauses, wall / (wire + pauses));
    return report.written == 1 && setValue->Data() == u"1357";
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const bool isSmoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    const bool isListed = measureList(isSmoke ? 1 : kRounds);
    const bool isSent = measureSend(isSmoke ? 115200 : 19200);
    return isListed && isSent ? 0 : 1;
}
