#include "FaultMatrixFixture.h"

#include <QFile>

#include <vector>

namespace {

struct Cell
{
    QString transfer;
    int mode = 0;
    QString fault;
    QString message;
    int state = 0;
    QString lines; // of the trace log, "S/OK/ERR"
    QString images;
    QString controller; // kept, written or restarted
};

void PrintTo(const Cell& cell, std::ostream* out)
{
    *out << qPrintable(cell.transfer + u' ' + (cell.mode == 0 ? QStringLiteral("rtu ") : QStringLiteral("ascii ")) +
                       cell.fault);
}

// The cells of the table; a row for both modes is two cells.
std::vector<Cell> readTable()
{
    std::vector<Cell> cells;
    QFile file(QStringLiteral(VORLANT_TEST_DATA "/transfer/fault_matrix.tsv"));
    if (!file.open(QIODevice::ReadOnly))
        return cells;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString& text : lines) {
        const QStringList fields = text.split(u'\t', Qt::SkipEmptyParts);
        if (text.startsWith(u'#') || fields.size() != 8)
            continue;
        for (const auto& [mode, name] : {std::pair(0, u"rtu"), std::pair(1, u"ascii")}) {
            if (fields[1] == QStringView(name) || fields[1] == u"both")
                cells.push_back(
                    {fields[0], mode, fields[2], fields[3], fields[4].toInt(), fields[5], fields[6], fields[7]});
        }
    }
    return cells;
}

class FaultMatrix : public FaultMatrixFixture, public ::testing::WithParamInterface<Cell>
{
protected:
    void run(const QString& transfer)
    {
        window.messages.clear();
        if (transfer == u"detect")
            detect();
        else
            engine->getDataFromKX(nullptr);
    }

    void detect()
    {
        ComSetSession session({window, ports, library, QString()});
        session.Logs(nullptr, &trace);
        ComSetFields fields = session.open();
        session.confirm(fields);
    }

    // Of the controller, compared with what it held before the transfer.
    QString change(const QHash<QString, QString>& before) const
    {
        if (values() == before)
            return QStringLiteral("kept");
        return values() == atStart ? QStringLiteral("restarted") : QStringLiteral("written");
    }

    QString lines()
    {
        return QStringLiteral("%1/%2/%3")
            .arg(traceLines(")S:"))
            .arg(traceLines("(Scces)R:"))
            .arg(traceLines("(Error)R:"));
    }
};

TEST_P(FaultMatrix, EndsAsTheTableSays)
{
    const Cell& cell = GetParam();
    start(cell.mode);
    turnTheKnobs();
    const QHash<QString, QString> before = values();
    ASSERT_NE(before, atStart);
    setFault(cell.fault == u"none" ? QString() : cell.fault);
    run(cell.transfer);
    EXPECT_EQ(window.messages.isEmpty() ? QStringLiteral("-") : window.messages.join(u'|'), cell.message);
    EXPECT_EQ(static_cast<int>(window.current), cell.state);
    EXPECT_EQ(lines(), cell.lines);
    EXPECT_EQ(images(), cell.images);
    EXPECT_EQ(change(before), cell.controller);
    EXPECT_FALSE(window.progressShown);
    EXPECT_FALSE(engine->isBusy());

    // Late replies may still be on their way.
    setFault(QString());
    run(cell.transfer);
    EXPECT_EQ(window.messages, QStringList());
    EXPECT_EQ(static_cast<int>(window.current), cell.transfer == u"detect" ? 1 : 2);
    EXPECT_EQ(images(), cell.transfer == u"detect" ? u"none" : u"all");
}

INSTANTIATE_TEST_SUITE_P(Cells, FaultMatrix, ::testing::ValuesIn(readTable()));

} // namespace
