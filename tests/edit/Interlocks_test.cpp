#include "EditorFixture.h"
#include "Table.h"
#include "clsINI.h"

namespace {

class Interlock : public EditorFixture, public ::testing::WithParamInterface<const char*>
{};

TEST_P(Interlock, CarriesAnEntryOn)
{
    const QString model = QLatin1String(GetParam());
    for (const QStringList& row : tableRows("edit/interlocks.tsv")) {
        if (!row[1].contains(model))
            continue;
        SCOPED_TRACE(qPrintable(row[0]));
        QStringList tags;
        for (const QString& one : row[4].split(u' '))
            tags << one.section(u'=', 0, 0);
        record.texts.clear();
        shipped(model);
        start(row[2]);
        const Everything before = everything();
        enter(row[3]);
        EXPECT_EQ(shown(tags.join(u' ')), row[4].toStdString());
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
    shipped(QLatin1String(GetParam()));
    clsINI ini(box.context);
    ini.setIniPath(library.getIniFilePath(QString()));
    ini.setIniFileName(QStringLiteral("MultiSelect.ini"));
    const auto take = [this](const ChoiceTable::Entry& entry) {
        if (kx.hasVoltageRange()) // scaled downwards, from where others begin
            start(QStringLiteral("VQLIL=1000 VQLIH=0"));
        const auto taken = entry.settingsFor(QStringLiteral("PQRNO"));
        editor.setEntry(taken);
        return std::all_of(taken.begin(), taken.end(), [this](const EntrySetting& one) {
            return (one.isDisplayValue ? item(one.tag).VData() : item(one.tag).Data()) == one.value;
        });
    };
    for (const bool kelvin : {false, true}) {
        ChoiceTable table;
        table.load(ini, kelvin ? QStringLiteral("InputRangeK") : QStringLiteral("InputRangeC"), library);
        start(QStringLiteral("SWQCF=%1").arg(kelvin ? 1 : 0));
        for (auto from = table.entries().begin(); from != table.entries().end(); ++from) {
            for (auto to = from; to != table.entries().end(); ++to) {
                EXPECT_TRUE(take(*from)) << qPrintable(QStringLiteral("%1 > %2").arg(to->names[0], from->names[0]));
                EXPECT_TRUE(take(*to)) << qPrintable(QStringLiteral("%1 > %2").arg(from->names[0], to->names[0]));
            }
        }
    }
    EXPECT_TRUE(record.texts.isEmpty()) << qPrintable(record.texts.join(u'\n'));
    EXPECT_EQ(shell.calls.count(QStringLiteral("one PQRNO")), 2 * 18 * 19) << "one write for each entry";
    EXPECT_EQ(shell.calls.size(), 2 * 18 * 19);
}

INSTANTIATE_TEST_SUITE_P(Shipped, Interlock,
                         ::testing::Values("KX410", "KX413", "KX620", "KX623", "KX640", "KX643", "KX910"),
                         [](const auto& row) { return std::string(row.param); });

// Control action and decimal point as numbers; what the limits of others become.
class NumericSettings : public EditorFixture
{};

// Two parameters in one cell: the check of what the interlock sets comes back to the entry itself.
TEST_F(NumericSettings, CircleEndsAndIsLogged)
{
    screen({QStringLiteral("VQLIL|Data|0|0,-100,100,<=,<="), QStringLiteral("VQLIH|Data|50|0,-100,100,<=,<="),
            QStringLiteral("VQSVH|Data|50|0,-100,100,<=,<="),
            QStringLiteral("VQSVL|Data|0|0,-100,100,<=,<=|CellData=1,1,vbWhite,vbBlack")});
    grid.setLocked(1, 1, false);
    enter(QStringLiteral("VQLIL=7"));
    EXPECT_EQ(item(QStringLiteral("VQLIL")).Data(), u"7");
    EXPECT_EQ(item(QStringLiteral("VQSVL")).Data(), u"7");
    EXPECT_EQ(logged("Error.log").filter(QStringLiteral("an entry of VQLIL leads back to it")).size(), 1);
}

TEST_F(NumericSettings, DecimalPointRedrawsAll)
{
    screen({QStringLiteral("SVDOT|Data|0|0,0,3,<=,<="), QStringLiteral("PQRNO|Input|9|0,0,0,<=,<="),
            QStringLiteral("A|Data|1234|DOTSVDOT,0,9999,<=,<=")});
    grid.setLocked(1, 1, false); // locked without a voltage input
    EXPECT_TRUE(enter(QStringLiteral("SVDOT=2")));
    EXPECT_EQ(shown(QStringLiteral("A")), "A=12.34");
    EXPECT_EQ(marked(), "SVDOT");
}

TEST_F(NumericSettings, SwitchTheBandAndTheGap)
{
    screen({QStringLiteral("PIDONOF|Data|0|0,0,1,<=,<="), QStringLiteral("VQP1|Data|30|1,0.1,999.9,<=,<="),
            QStringLiteral("VQODB|Data|0|1,0,9.9,<=,<=")});
    struct
    {
        const char* entry;
        const char* shown;
        const char* limits; // of band and gap
    } const rows[] = {{"PIDONOF=1", "VQP1=0.0 VQODB=0.5", "0 0 0.1 9.9"},
                      {"PIDONOF=0", "VQP1=0.5 VQODB=0.5", "0.1 999.9 0 9.9"}};
    for (const auto& row : rows) {
        EXPECT_TRUE(enter(QLatin1String(row.entry)));
        EXPECT_EQ(shown(QStringLiteral("VQP1 VQODB")), row.shown) << row.entry;
        const LimitTexts& band = item(QStringLiteral("VQP1")).limitTexts();
        const LimitTexts& gap = item(QStringLiteral("VQODB")).limitTexts();
        EXPECT_EQ(QStringList({band.currentLower, band.currentUpper, gap.currentLower, gap.currentUpper}).join(u' '),
                  QLatin1String(row.limits));
    }
    EXPECT_TRUE(record.texts.isEmpty());
}

} // namespace
