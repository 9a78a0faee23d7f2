#include "DefinitionCheck.h"
#include "ModelCatalogue.h"
#include "ScreenFixture.h"

namespace {

// The shipped files in a scratch program folder.
class Shipped : public ScreenFixture
{
protected:
    Shipped()
    {
        copy(QStringLiteral("ini"));
        copy(QStringLiteral("Lang"));
        box.context.languageFile = QStringLiteral("EN.txt");
        put(library.getIniFilePath(QStringLiteral("Main")) + QStringLiteral("\\Vorlant.ini"),
            "[KXInfos]\nKXMaxCount=0\n");
        const platform::ProfileStore::Batch once(box.machine.profiles);
        ModelCatalogue(library).ensureBuiltIn();
    }

    void copy(const QString& folder)
    {
        const QDir from(QStringLiteral(VORLANT_DATA_DIR "/") + folder);
        const QString to = box.path(QStringLiteral("C:\\Vorlant\\") + folder);
        for (const QString& name : from.entryList(QDir::Files))
            ASSERT_TRUE(QFile::copy(from.filePath(name), to + u'/' + name)) << qPrintable(name);
    }

    // The bytes of all files, by name.
    QHash<QString, QByteArray> files()
    {
        QHash<QString, QByteArray> contents;
        for (const char* folder : {"ini", "Lang"}) {
            const QString desktop = QStringLiteral("C:\\Vorlant\\") + QLatin1String(folder);
            for (const QString& name : QDir(box.path(desktop)).entryList(QDir::Files))
                contents.insert(name, content(desktop + u'\\' + name));
        }
        return contents;
    }

    // Names of the files that are no longer as they were; new ones too.
    QStringList changedSince(const QHash<QString, QByteArray>& before)
    {
        QStringList changed;
        const auto now = files();
        for (auto file = now.cbegin(); file != now.cend(); ++file) {
            if (before.value(file.key()) != file.value())
                changed << file.key();
        }
        return changed;
    }

    QStringList check(const QString& code, const QString& options)
    {
        return DefinitionCheck(box.context, library, kx).run(ModelCatalogue(library).numberOf(code), code + options);
    }

    const clsData* item(const char* tag) { return kx.getDataByTag(QLatin1String(tag)); }
};

constexpr const char* kModels[] = {"KX410", "KX413", "KX620", "KX623", "KX640", "KX643", "KX910"};
constexpr const char* kPlain = "00000-10A";
constexpr const char* kAllOptions = "11110-10A";
constexpr const char* kOptions[] = {kPlain, kAllOptions, "22020-21B", "00000-0NA", "01000-00A", "10110-2NZ"};

using Variant = std::tuple<const char*, const char*>;

class Definitions : public Shipped, public ::testing::WithParamInterface<Variant>
{};

TEST_P(Definitions, AreSoundAndComplete)
{
    const auto before = files();
    for (const char* language : {"EN.txt", "JP.txt"}) {
        box.context.languageFile = QLatin1String(language);
        const QStringList findings =
            check(QLatin1String(std::get<0>(GetParam())), QLatin1String(std::get<1>(GetParam())));
        EXPECT_TRUE(findings.isEmpty()) << qPrintable(findings.join(u'\n'));
        EXPECT_GT(kx.items().size(), 70U);
        kx.refreshSpread(false, nullptr);
        EXPECT_EQ(changedSince(before), QStringList()) << "had to be completed";
    }
}

INSTANTIATE_TEST_SUITE_P(Shipped, Definitions,
                         ::testing::Combine(::testing::ValuesIn(kModels), ::testing::ValuesIn(kOptions)),
                         [](const auto& row) {
                             return QString::fromLatin1("%1%2")
                                 .arg(QLatin1String(std::get<0>(row.param)), QLatin1String(std::get<1>(row.param)))
                                 .remove(u'-')
                                 .toStdString();
                         });

struct Fitted
{
    const char* name;
    const char* code;
    const char* options;
    const char* tag;
    bool isThere;
};

class Options : public Shipped, public ::testing::WithParamInterface<Fitted>
{};

TEST_P(Options, DecideWhatIsFitted)
{
    const Fitted& row = GetParam();
    const QString code = QLatin1String(row.code);
    kx.load(ModelCatalogue(library).numberOf(code), &library, code + QLatin1String(row.options));
    EXPECT_EQ(item(row.tag) != nullptr, row.isThere);
}

INSTANTIATE_TEST_SUITE_P(Models, Options,
                         ::testing::Values(Fitted{"OneOutput", "KX410", kPlain, "VQOUT2", false},
                                           Fitted{"SecondOutput", "KX410", "02000-10A", "VQOUT2", true},
                                           Fitted{"HeatCool", "KX413", kPlain, "VQOUT2", true},
                                           Fitted{"NoRemote", "KX410", kPlain, "VQRBIA", false},
                                           Fitted{"RemoteAdded", "KX410", "00100-10A", "VQRBIA", true},
                                           Fitted{"Remote", "KX620", kPlain, "VQRBIA", true},
                                           Fitted{"NoHeater", "KX620", kPlain, "VQHBA", false},
                                           Fitted{"HeaterAdded", "KX620", "00010-10A", "VQHBA", true},
                                           Fitted{"Heater", "KX623", kPlain, "VQHBA", true},
                                           Fitted{"Program", "KX640", kPlain, "PGSV6", true},
                                           Fitted{"ProgramHeatCool", "KX643", kPlain, "VQOUT2", true},
                                           Fitted{"FourSetValues", "KX640", kPlain, "VQSV4", true},
                                           Fitted{"Linearizer", "KX910", kPlain, "LINX5", true},
                                           Fitted{"NoTransmission", "KX620", kPlain, "TRSEL", false},
                                           Fitted{"Transmission", "KX620", "10000-10A", "TRSEL", true},
                                           Fitted{"NoLine", "KX410", "00000-00A", "COMADR", false},
                                           Fitted{"NoContact", "KX910", "00000-1NA", "FQDI", false}),
                         [](const auto& row) { return std::string(row.param.name); });

class Rules : public Shipped, public ::testing::WithParamInterface<const char*>
{};

// A rule of the program that names a tag which no item bears would never act.
TEST_P(Rules, FindTheirItems)
{
    const QString code = QLatin1String(GetParam());
    kx.load(ModelCatalogue(library).numberOf(code), &library, code + QLatin1String(kAllOptions));
    for (const char* tag :
         {"VQLIL",   "VQLIH",  "VQLIZS", "VQLIZL",  "RANGEL", "RANGEH", "VQSVL",   "VQSVH",   "VQSV1",   "VQSV2",
          "VQP1",    "VQI1",   "VQD1",   "VQODB",   "SVDOT",  "SWQCF",  "PQRNO",   "MQCODE",  "VQOH1",   "VQOL1",
          "PIDONOF", "VQBIA",  "VQSVUP", "VQSVDWN", "VQAL1",  "VQAL2",  "VQAL3",   "VQ1DB",   "VQ2DB",   "VQ3DB",
          "PQKAL1",  "PQKAL2", "PQKAL3", "EV1MOD",  "EV2MOD", "EV3MOD", "EV1WAIT", "EV2WAIT", "EV3WAIT", "FQDI"}) {
        const clsData* found = item(tag);
        EXPECT_TRUE(found != nullptr && found->Key() == QLatin1String(tag)) << tag;
    }
    const clsData* code14 = item("MQCODE");
    EXPECT_EQ(code14->Address(), u"FBC0");
    EXPECT_EQ(code14->DataLen(), 14);
    EXPECT_EQ(item("SWQCF")->MType() == ItemType::Combo, code == u"KX640" || code == u"KX643" || code == u"KX910");
}

INSTANTIATE_TEST_SUITE_P(Models, Rules, ::testing::ValuesIn(kModels),
                         [](const auto& row) { return std::string(row.param); });

struct RangeRow
{
    const char* name;
    const char* stored;
    int unit; // 0 Celsius, 1 kelvin
    const char* shown;
    const char* barLow;
    const char* barHigh;
    const char* limitLow; // of VQLIL, with one decimal place
    const char* limitHigh;
};

class Ranges : public Shipped, public ::testing::WithParamInterface<RangeRow>
{};

TEST_P(Ranges, SetTheItemsBehindThem)
{
    const RangeRow& row = GetParam();
    kx.load(1, &library, QStringLiteral("KX41000000-10A"));
    kx.setUnitSwitch(row.unit);
    kx.getDataByTag(QStringLiteral("PQRNO"))->setData(QLatin1String(row.stored));
    EXPECT_EQ(item("PQRNO")->VData(), QLatin1String(row.shown));
    EXPECT_EQ(item("BARL")->VData(), QLatin1String(row.barLow));
    EXPECT_EQ(item("BARH")->VData(), QLatin1String(row.barHigh));
    EXPECT_EQ(item("VQLIL")->LimitL(), QLatin1String(row.limitLow));
    EXPECT_EQ(item("VQLIL")->LimitH(), QLatin1String(row.limitHigh));
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, Ranges,
    ::testing::Values(RangeRow{"Thermocouple", "2", 0, "K -199.9 to 500.0", "-199.9", "500.0", "-199.9", "500.0"},
                      RangeRow{"Kelvin", "2", 1, "K 73.2 to 773.1 K", "73.2", "773.1", "73.2", "773.1"},
                      RangeRow{"TwoPlaces", "13", 0, "Pt100 -20.00 to 50.00", "-20.00", "50.00", "-200.0", "500.0"},
                      RangeRow{"Voltage", "21", 0, "1-5V DC", "1.000", "5.000", "-199.9", "999.9"},
                      RangeRow{"Current", "22", 1, "4-20mA (1-5V)", "1.000", "5.000", "-199.9", "999.9"}),
    [](const auto& row) { return std::string(row.param.name); });

struct Broken
{
    const char* name;
    const char* file;
    const char* from;
    const char* to;
    const char* finding;
};

class BrokenCopy : public Shipped, public ::testing::WithParamInterface<Broken>
{};

TEST_P(BrokenCopy, IsFound)
{
    const Broken& row = GetParam();
    const QString file = QStringLiteral("C:\\Vorlant\\") + QLatin1String(row.file);
    QByteArray bytes = content(file);
    const auto at = bytes.indexOf(row.from);
    ASSERT_GE(at, 0);
    put(file, bytes.replace(at, qstrlen(row.from), row.to));
    if (file.endsWith(u"EN.txt"))
        box.context.languageFile = QStringLiteral("JP.txt"); // the language in use completes itself
    const QStringList findings = check(QStringLiteral("KX410"), QLatin1String(kAllOptions));
    EXPECT_TRUE(findings.join(u'\n').contains(QLatin1String(row.finding))) << row.finding << "\nfound instead:\n"
                                                                           << qPrintable(findings.join(u'\n'));
}

constexpr const char* kScreen = "ini\\KX410Screen.ini";
constexpr const char* kComm = "ini\\KX410Comm.ini";
constexpr const char* kSelections = "ini\\MultiSelect.ini";

INSTANTIATE_TEST_SUITE_P(
    Faults, BrokenCopy,
    ::testing::Values(
        Broken{"Tag", kScreen, "Tag=VQSV2", "Tag=VQSV1", "Tag: VQSV1 exists already"},
        Broken{"Cell", kScreen, "CellData=15,3,vbWindow", "CellData=16,3,vbWindow", "is taken by"},
        Broken{"Outside", kScreen, "MaxRow=48", "MaxRow=46", "outside the grid"},
        Broken{"Overlap", kScreen, "CellData=2,2,6,4,", "CellData=2,2,8,4,", "overlaps block 1"},
        Broken{"LabelOption", kScreen, "Option=4=1\r\nCellData=43,2", "Option=4=2\r\nCellData=43,2",
               "not labelled with its name"},
        Broken{"Colour", kScreen, "vbWindowText\r\nCommRaed", "vbWindowTxt\r\nCommRaed",
               "\"vbWindowTxt\" is not a colour"},
        Broken{"LabelColour", kScreen, "RGB.255.243.200", "RGB.255.243", "\"RGB.255.243\" is not a colour"},
        Broken{"Section", kScreen, "CommRaedSection=Timer", "CommRaedSection=Timers",
               "no section Timers in the comm file"},
        Broken{"WriteSection", kScreen, "CommWriteSection=Pid", "CommWriteSection=Pids", "no image \"Pids\" to write"},
        Broken{"Bytes", kComm, "ReadCmd1=Direct,8100,20", "ReadCmd1=Direct,8100,18",
               "outside the memory of its section"},
        Broken{"Gap", kComm, "ReadCmd1=Direct,8100,20", "ReadCmd1=Direct,8100,21", "has bytes of no item"},
        Broken{"WriteStart", kComm, "WriteCmd1=Direct,8100", "WriteCmd1=Direct,8102", "writes other memory"},
        Broken{"TooLong", kComm, "Direct,8100,20", "Direct,8100,121", "121 bytes in one read"},
        Broken{"SharedByte", kScreen, "KXAddress=8002", "KXAddress=8001", "shares memory with another item"},
        Broken{"SharedBit", kScreen, "BitMask=2", "BitMask=1", "shares memory with another item"},
        Broken{"Block", kScreen, "BlockNo=3", "BlockNo=33", "no block 33"},
        Broken{"Relay", kScreen, "RelayBlockNo=3", "RelayBlockNo=3,77", "no block 77"},
        Broken{"Decimals", kScreen, "DataInfo=DOTSVDOT", "DataInfo=DOTSVDAT", "no item SVDAT"},
        Broken{"Limit", kScreen, "TAGVQSVH", "TAGVQSVX", "no item VQSVX"},
        Broken{"CommTag", kComm, "40001,VQSV1", "40001,VQSV9", "no item VQSV9"},
        Broken{"Table", kScreen, "MultiSelectSection=AlarmType", "MultiSelectSection=AlarmTypes",
               "table AlarmTypes does not end"},
        Broken{"SetTag", kSelections, "tagDRANGEL", "tagDRANGEX", "no item RANGEX"},
        Broken{"EndOfTable", kSelections, "=TestvbTab", "=RestvbTab", "table InputRangeC does not end"},
        Broken{"Range", kSelections, "-199.9,500.0,1,1,", "-199.8,500.0,1,1,", "PQRNO sets -1998"},
        Broken{"Default", kScreen, "DefaultData=1200", "DefaultData=4001", "default outside its limits"},
        Broken{"Choice", kScreen, "Normal\r\nBitData=1,0", "Normal\r\nBitData=2,3", "is no choice"},
        Broken{"Combo", kScreen, "ComboDatas=0vbTab1\r", "ComboDatas=0\r", "2 choices for 1 values"},
        Broken{"NoJapanese", "Lang\\JP.txt", "Loop gain=", "Loop=", "no text for \"Loop gain\" in JP.txt"},
        Broken{"NoEnglish", "Lang\\EN.txt", "Loop gain=", "Loop=", "no text for \"Loop gain\" in EN.txt"},
        Broken{"Choices", "Lang\\JP.txt", "=PIDvbTabON/OFF", "=PID", "another number of choices"},
        Broken{"Voltage", "Lang\\JP.txt", "=1-5V DC", "=1-5 V", "the voltage mark is lost"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Shipped, MissingKeysAreNoticed)
{
    const QString file = definition(QStringLiteral("KX410Screen.ini"));
    put(file, content(file).replace("Enabled=False\r\n", ""));
    const auto before = files();
    check(QStringLiteral("KX410"), QLatin1String(kPlain));
    EXPECT_EQ(changedSince(before), QStringList{QStringLiteral("KX410Screen.ini")});
}

} // namespace
