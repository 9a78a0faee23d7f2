#include "EditorFixture.h"

#include <cstring>

namespace {

const char* const kAll = "KX410 KX413 KX620 KX623 KX640 KX643 KX910";
const char* const kKX4And6 = "KX410 KX413 KX620 KX623 KX640 KX643";
// A voltage input scaled 0.0 to 100.0, set values 50.0 and 90.0.
const char* const kVolts = "PQRNO=20 SVDOT=1 VQLIL=0 VQLIH=1000 VQSVL=0 VQSVH=1000 VQSV1=500 VQSV2=900";
// A thermocouple, -200 to 1370, set values 800 and 600 between 0 and 1200.
const char* const kKelvinless = "PQRNO=1 SVDOT=0 SWQCF=0 VQLIL=-200 VQLIH=1370 VQLIZL=-200 VQLIZS=1370 VQSVL=0 "
                                "VQSVH=1200 VQSV1=800 VQSV2=600";

struct InterlockCase
{
    const char* name;
    const char* models;
    const char* start;
    const char* entry;
    const char* shown;
    const char* marked;
    const char* message = ""; // its beginning; the only one
};

class Interlock : public EditorFixture, public ::testing::WithParamInterface<InterlockCase>
{};

TEST_P(Interlock, CarriesAnEntryOn)
{
    const InterlockCase& row = GetParam();
    const QString expected = QString::fromLatin1(row.shown);
    QStringList tags;
    for (const QString& one : expected.split(u' '))
        tags << one.section(u'=', 0, 0);
    for (const QString& model : QString::fromLatin1(row.models).split(u' ')) {
        record.texts.clear();
        shipped(model);
        start(QString::fromLatin1(row.start));
        const Everything before = everything();
        enter(QString::fromLatin1(row.entry));
        EXPECT_EQ(shown(tags.join(u' ')), row.shown) << qPrintable(model);
        EXPECT_EQ(marked(), row.marked) << qPrintable(model);
        const std::string told = record.texts.join(u'\n').toStdString();
        EXPECT_EQ(told.substr(0, std::strlen(row.message)), row.message);
        EXPECT_EQ(record.texts.size(), *row.message == '\0' ? 0 : 1) << told;
        editor.undo();
        EXPECT_TRUE(everything() == before) << "undo, " << qPrintable(model);
        EXPECT_FALSE(editor.canUndo()) << "one entry is one step";
    }
}

constexpr const char* kOutside = "It is outside the setting range.[ ";

const InterlockCase kInputLimits[] = {
    {"LowerInputRaised", kAll, kVolts, "VQLIL=60", "VQLIL=60.0 VQSVL=60.0 VQSVH=100.0 VQSV1=60.0 VQSV2=90.0",
     "VQLIL VQSV1 VQSVH VQSVL"},
    {"LowerInputAboveUpper", kAll, kVolts, "VQLIL=200", "VQSVL=100.0 VQSVH=200.0 VQSV1=100.0 VQSV2=100.0",
     "VQLIL VQSV1 VQSV2 VQSVH VQSVL"},
    {"UpperInputLowered", kAll, kVolts, "VQLIH=40", "VQSVL=0.0 VQSVH=40.0 VQSV1=40.0 VQSV2=40.0",
     "VQLIH VQSV1 VQSV2 VQSVH VQSVL"},
    {"UpperInputBelowLower", kAll, kVolts, "VQLIH=-50", "VQSVL=-50.0 VQSVH=0.0 VQSV1=0.0 VQSV2=0.0",
     "VQLIH VQSV1 VQSV2 VQSVH VQSVL"},
    {"BackFromReversed", kAll, "PQRNO=20 SVDOT=1 VQLIL=1000 VQLIH=0 VQSVL=0 VQSVH=1000 VQSV1=500 VQSV2=900",
     "VQLIH=150", "VQSVL=100.0 VQSVH=150.0 VQSV1=100.0 VQSV2=100.0", "VQLIH VQSV1 VQSV2 VQSVH VQSVL"},
    {"EqualToLower", kAll, kVolts, "VQLIH=0", "VQLIH=100.0 VQSVH=100.0", "", "It cannot set equivalent."},
    {"EqualToUpper", kAll, kVolts, "VQLIL=100.00", "VQLIL=0.0 VQSVL=0.0", "", "It cannot set equivalent."},
    {"UpperEntry", kAll, kVolts, "VQLIZS=80", "VQLIZS=80.000 VQLIH=80.0 VQSVH=80.0 VQSVL=0.0 VQSV1=50.0 VQSV2=80.0",
     "VQLIH VQLIZS VQSV2 VQSVH VQSVL"},
    {"LowerEntry", kAll, kVolts, "VQLIZL=95", "VQLIL=95.0 VQSVL=95.0 VQSVH=100.0 VQSV1=95.0 VQSV2=95.0",
     "VQLIL VQLIZL VQSV1 VQSV2 VQSVH VQSVL"},
    {"UpperEntryEqualToLower", kAll, kVolts, "VQLIZS=0", "VQLIZS=0.000 VQLIH=100.0 VQSVH=100.0", "VQLIZS",
     "It cannot set equivalent."},
    {"UpperEntryOfThermocouple", kAll, kKelvinless, "VQLIZS=700", "VQLIH=700 VQSVL=-200 VQSVH=700 VQSV1=700 VQSV2=600",
     "VQLIH VQLIZS VQSV1 VQSVH VQSVL"},
    {"UpperEntryBeyondTheThermocouple", kAll, kKelvinless, "VQLIZS=1371", "VQLIZS=1371 VQLIH=1370 VQSVH=1200", "VQLIZS",
     kOutside},
    {"LowerEntryBeyondTheThermocouple", kAll, kKelvinless, "VQLIZL=-201", "VQLIZL=-201 VQLIL=-200 VQSVL=0", "VQLIZL",
     kOutside},
    {"ReversedThermocouple", kAll, "PQRNO=1 SVDOT=0 VQLIL=500 VQLIH=1370 VQSVL=500 VQSVH=1200 VQSV1=800 VQSV2=600",
     "VQLIZS=100", "VQLIH=100 VQSVL=100 VQSVH=500 VQSV1=500 VQSV2=500", "VQLIH VQLIZS VQSV1 VQSV2 VQSVH VQSVL"},
};

const InterlockCase kSetValues[] = {
    {"LowerLimitRaises", kAll, kVolts, "VQSVL=95", "VQSVL=95.0 VQSV1=95.0 VQSV2=95.0", "VQSV1 VQSV2 VQSVL"},
    {"LowerLimitLowered", kAll, kVolts, "VQSVL=0", "VQSV1=50.0 VQSV2=90.0", "VQSVL"},
    {"UpperLimitLowers", kAll, kVolts, "VQSVH=70", "VQSVH=70.0 VQSV1=50.0 VQSV2=70.0", "VQSV2 VQSVH"},
    {"UpperLimitRaised", kAll, kVolts, "VQSVH=100", "VQSV1=50.0 VQSV2=90.0", "VQSVH"},
    {"ValueAboveBothLimitsEndsAtUpper", kAll,
     "PQRNO=20 SVDOT=1 VQLIL=0 VQLIH=1000 VQSVL=0 VQSVH=600 VQSV1=900 VQSV2=100", "VQSVL=50", "VQSV1=60.0 VQSV2=50.0",
     "VQSV1 VQSV2 VQSVL"},
    {"ValueBelowBothLimitsEndsAtLower", kAll,
     "PQRNO=20 SVDOT=1 VQLIL=0 VQLIH=1000 VQSVL=400 VQSVH=1000 VQSV1=900 VQSV2=100", "VQSVH=50",
     "VQSV1=50.0 VQSV2=40.0", "VQSV1 VQSV2 VQSVH"},
    {"LowerAboveUpperLimit", kAll, kVolts, "VQSVL=100.1", "VQSVL=0.0 VQSV1=50.0", "", kOutside},
    {"SetValueOutside", kAll, kVolts, "VQSV1=100.1", "VQSV1=50.0", "", kOutside},
    {"SetValueAtLimit", kAll, kVolts, "VQSV1=100", "VQSV1=100.0", "VQSV1"},
};

const InterlockCase kAction[] = {
    {"OnOff", kKX4And6, "PIDONOF=0 VQP1=30 VQODB=5", "PIDONOF#1", "VQP1=0.0 VQODB=0.5", "PIDONOF VQP1"},
    {"OnOffWithoutGap", kKX4And6, "PIDONOF=0 VQP1=30 VQODB=0", "PIDONOF#1", "VQP1=0.0 VQODB=0.5", "PIDONOF VQODB VQP1"},
    {"Pid", kKX4And6, "PIDONOF=1 VQP1=0 VQODB=5 VQI1=7 VQD1=8", "PIDONOF#0", "VQP1=0.5 VQODB=0.5 VQI1=7 VQD1=8",
     "PIDONOF VQP1"},
    {"OnOffOfKX9", "KX910", "PIDONOF=0 VQP1=30 VQODB=21 VQI1=7 VQD1=8", "PIDONOF#1", "VQP1=0.0 VQODB=0.5 VQI1=7 VQD1=8",
     "PIDONOF VQODB VQP1"},
    {"PidOfKX9", "KX910", "PIDONOF=1 VQP1=0 VQODB=5 VQI1=7 VQD1=8", "PIDONOF#0", "VQP1=3.0 VQODB=0.1 VQI1=120 VQD1=20",
     "PIDONOF VQD1 VQI1 VQODB VQP1"},
    {"BandOfPidMayNotBeZero", kAll, "PIDONOF=0 VQP1=30", "VQP1=0", "VQP1=3.0", "", kOutside},
    {"BandOfOnOffIsZero", kAll, "PIDONOF=1 VQP1=0", "VQP1=0.1", "VQP1=0.0", "", kOutside},
    {"GapOfOnOffMayNotBeZero", kAll, "PIDONOF=1 VQP1=0 VQODB=5", "VQODB=0", "VQODB=0.5", "", kOutside},
    {"GapOfPidMayBeZero", kAll, "PIDONOF=0 VQP1=30 VQODB=5", "VQODB=0", "VQODB=0.0", "VQODB"},
};

const InterlockCase kDisplays[] = {
    {"DecimalPoint", kAll, kVolts, "SVDOT#2", "VQSV1=5.00 VQSVH=10.00 VQLIH=10.00", "SVDOT"},
    {"LockedDecimalPoint", kAll, kKelvinless, "SVDOT#2", "VQSV1=800 VQSVH=1200", ""},
    {"LockedInputLimit", kAll, kKelvinless, "VQLIL=5", "VQLIL=-200 VQSVL=0", ""},
    {"NotANumber", kAll, kVolts, "VQSV1=abc", "VQSV1=50.0", "", kOutside},
    {"Nothing", kAll, kVolts, "VQSV1=", "VQSV1=50.0", "", kOutside},
    {"MoreDecimalsThanShown", kAll, kVolts, "VQSV1=12.34", "VQSV1=12.3", "VQSV1"},
};

std::string nameOf(const ::testing::TestParamInfo<InterlockCase>& row)
{
    return row.param.name;
}

INSTANTIATE_TEST_SUITE_P(InputLimits, Interlock, ::testing::ValuesIn(kInputLimits), nameOf);
INSTANTIATE_TEST_SUITE_P(SetValues, Interlock, ::testing::ValuesIn(kSetValues), nameOf);
INSTANTIATE_TEST_SUITE_P(Action, Interlock, ::testing::ValuesIn(kAction), nameOf);
INSTANTIATE_TEST_SUITE_P(Displays, Interlock, ::testing::ValuesIn(kDisplays), nameOf);

// Control action and decimal point as numbers; what the limits of others become.
class NumericSettings : public EditorFixture
{};

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

TEST_F(NumericSettings, DecimalPointRedrawsAll)
{
    screen({QStringLiteral("SVDOT|Data|0|0,0,3,<=,<="), QStringLiteral("PQRNO|Input|9|0,0,0,<=,<="),
            QStringLiteral("A|Data|1234|DOTSVDOT,0,9999,<=,<=")});
    grid.setLocked(1, 1, false); // locked without a voltage input
    EXPECT_TRUE(enter(QStringLiteral("SVDOT=2")));
    EXPECT_EQ(shown(QStringLiteral("A")), "A=12.34");
    EXPECT_EQ(marked(), "SVDOT");
}

TEST_F(NumericSettings, ReversedInputMakesItsOwnLimits)
{
    shipped(QStringLiteral("KX410"));
    start(QString::fromLatin1(kVolts));
    enter(QStringLiteral("VQLIH=-50"));
    const auto limits = [this](const char* tag) {
        const LimitTexts& texts = item(QLatin1String(tag)).limitTexts();
        return texts.currentLower + u' ' + texts.currentUpper;
    };
    EXPECT_EQ(limits("VQSVL"), u"TagVQLIH TagVQSVH");
    EXPECT_EQ(limits("VQSVH"), u"TagVQSVL TagVQLIL");
    enter(QStringLiteral("VQLIH=50"));
    EXPECT_EQ(limits("VQSVL"), u"TagVQLIL TagVQSVH");
    EXPECT_EQ(limits("VQSVH"), u"TagVQSVL TagVQLIH");
}

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

} // namespace
