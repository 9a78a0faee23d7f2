#include "EditorFixture.h"
#include "Table.h"

namespace {

class Interlock : public EditorFixture, public ::testing::WithParamInterface<const char*>
{};

TEST_P(Interlock, CarriesAnEntryOn)
{
    for (const QStringList& row : tableRows("edit/interlocks.tsv")) {
        if (!row[1].contains(GetParam()))
            continue;
        SCOPED_TRACE(qPrintable(row[0]));
        record.texts.clear();
        shipped(GetParam());
        start(row[2]);
        const Everything before = everything();
        enter(row[3]);
        EXPECT_EQ(shown(QString(row[4]).remove(QRegularExpression("=[^ ]*"))), row[4].toStdString());
        EXPECT_EQ(marked(), row[5].toStdString());
        EXPECT_EQ(record.texts.join(u'\n').left(row[6].size()), row[6]);
        EXPECT_EQ(record.texts.size(), row[6].isEmpty() ? 0 : 1);
        editor.undo();
        EXPECT_TRUE(everything() == before) << "undo";
        EXPECT_FALSE(editor.canUndo()) << "one entry is one step";
    }
}

// From every input range to every other one and back: what the entry sets is set, whatever was there before.
TEST_P(Interlock, EveryRangeIsTakenWhole)
{
    shipped(GetParam());
    const auto take = [this](const ChoiceTable::Entry& entry) {
        if (kx.hasVoltageRange()) // scaled downwards, from where others begin
            start("VQLIL=1000 VQLIH=0");
        const auto taken = entry.settingsFor("PQRNO");
        editor.setEntry(taken);
        return std::all_of(taken.begin(), taken.end(), [this](const EntrySetting& one) {
            return (one.isDisplayValue ? item(one.tag).VData() : item(one.tag).Data()) == one.value;
        });
    };
    for (const bool kelvin : {false, true}) {
        const ChoiceTable& table = kelvin ? item("PQRNO").inputKTable() : item("PQRNO").inputCTable();
        start(QString("SWQCF=%1").arg(kelvin ? 1 : 0));
        for (auto from = table.entries().begin(); from != table.entries().end(); ++from) {
            for (auto to = from; to != table.entries().end(); ++to) {
                EXPECT_TRUE(take(*from)) << qPrintable(to->names[0] + " > " + from->names[0]);
                EXPECT_TRUE(take(*to)) << qPrintable(from->names[0] + " > " + to->names[0]);
            }
        }
    }
    EXPECT_TRUE(record.texts.isEmpty()) << qPrintable(record.texts.join(u'\n'));
    EXPECT_EQ(shell.calls, QStringList(2 * 18 * 19, "one PQRNO")) << "one write for each entry";
}

INSTANTIATE_TEST_SUITE_P(Shipped, Interlock, ::testing::ValuesIn(kShippedModels),
                         [](const auto& row) { return std::string(row.param); });

// Control action and decimal point as numbers; what the limits of others become.
using NumericSettings = EditorFixture;

// Two parameters in one cell: the check of what the interlock sets comes back to the entry itself.
TEST_F(NumericSettings, CircleEndsAndIsLogged)
{
    screen({"VQLIL|Data|0|0,-100,100,<=,<=", "VQLIH|Data|50|0,-100,100,<=,<=", "VQSVH|Data|50|0,-100,100,<=,<=",
            "VQSVL|Data|0|0,-100,100,<=,<=|CellData=1,1,vbWhite,vbBlack"});
    grid.setLocked(1, 1, false);
    enter("VQLIL=7");
    EXPECT_EQ(item("VQLIL").Data(), u"7");
    EXPECT_EQ(item("VQSVL").Data(), u"7");
    EXPECT_EQ(errorLog.lines.filter("an entry of VQLIL leads back to it").size(), 1);
}

TEST_F(NumericSettings, DecimalPointRedrawsAll)
{
    screen({"SVDOT|Data|0|0,0,3,<=,<=", "PQRNO|Input|9|0,0,0,<=,<=", "A|Data|1234|DOTSVDOT,0,9999,<=,<=",
            "B|Data|1234|DOTPLACES,0,9999,<=,<=", "PLACES|Data|0|0,0,3,<=,<="});
    grid.setLocked(1, 1, false); // locked without a voltage input
    EXPECT_TRUE(enter("SVDOT=2"));
    EXPECT_EQ(shown("A B"), "A=12.34 B=1234");
    EXPECT_EQ(marked(), "SVDOT");
    EXPECT_TRUE(enter("PLACES=1"));
    EXPECT_EQ(shown("A B"), "A=12.34 B=123.4");
}

TEST_F(NumericSettings, SwitchTheBandAndTheGap)
{
    screen({"PIDONOF|Data|0|0,0,1,<=,<=", "VQP1|Data|30|1,0.1,999.9,<=,<=", "VQODB|Data|0|1,0,9.9,<=,<="});
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"PIDONOF=1", "VQP1=0.0 VQODB=0.5", "0 0 0.1 9.9"}, {"PIDONOF=0", "VQP1=0.5 VQODB=0.5", "0.1 999.9 0 9.9"}};
    for (const auto& [entry, after, limits] : rows) {
        EXPECT_TRUE(enter(entry));
        EXPECT_EQ(shown("VQP1 VQODB"), after) << entry;
        const LimitTexts& band = item("VQP1").limitTexts();
        const LimitTexts& gap = item("VQODB").limitTexts();
        EXPECT_EQ(QStringList({band.currentLower, band.currentUpper, gap.currentLower, gap.currentUpper}).join(u' '),
                  limits);
    }
    EXPECT_TRUE(record.texts.isEmpty());
}

} // namespace
