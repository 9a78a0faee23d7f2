#include "BackupComparison.h"

#include "BackupReader.h"
#include "BackupStore.h"
#include "ScreenFixture.h"

namespace {

// SV and I are written, PV is measured, HOLD has no write command.
class Comparison : public ScreenFixture
{
protected:
    Comparison()
    {
        box.context.settings = settings;
        load(screenOf({"Tag=SV\nKXAddress=8000\nDefaultData=1\nCommWriteSection=Set",
                       "Tag=I\nKXAddress=8002\nDefaultData=1\nCommWriteSection=Set",
                       "Tag=HOLD\nKXAddress=8006\nDefaultData=1\nCommWriteSection=Set",
                       "Tag=PV\nKXAddress=8004\nDefaultData=1\nReadOnly=True\nCommWriteSection=Set"},
                      "DataLen=2\nDataInfo=0,-100,100,<=,<=,0,10\nCommRaedSection=Set"),
             "[Set]\nReadCmd1=Direct,8000,8\nWriteCmd1=Direct,8000,6\n");
        kx.setValues({{"SV", "10"}, {"I", ""}, {"HOLD", "30"}, {"PV", "40"}});
    }
};

TEST_F(Comparison, CountsWhatIsWritten)
{
    const BackupComparison shown(kx.data());
    const std::tuple<const char*, QVector<QPair<QString, QString>>, int> rows[] = {
        {"the same number", {{"SV", "10.0"}}, 0},
        {"no value in the grid", {{"I", "20"}}, 1},
        {"no value in the backup", {{"SV", ""}}, 0},
        {"not written", {{"HOLD", "1"}, {"PV", "2"}, {"OTHER", "3"}}, 0},
        {"all", {{"SV", "11"}, {"I", "5"}, {"PV", "2"}}, 2}};
    for (const auto& [name, values, count] : rows) {
        EXPECT_EQ(shown.differencesTo({kx.modelString(), values}), count) << name;
        EXPECT_LE(count, shown.writtenPart({kx.modelString(), values}).values.size()) << name;
    }
    EXPECT_EQ(shown.differencesTo({"KX41000000-20A", {{"SV", "11"}}}), std::nullopt);
}

TEST_F(Comparison, ReadsABackupAnewWhenItHasChanged)
{
    BackupReader reader(library);
    const QString file = definition("a.par");
    const QByteArray head = "[Info]\nMODEL=KX41000000-10A\n[Data]\nSV=";
    const auto read = [&] {
        const auto set = reader.read(kx.data(), file);
        return set.ok() ? set.value().values.at(0).second : set.error();
    };
    EXPECT_TRUE(read().endsWith(u"a.par does not exist or is not a file: choose another one."));
    for (const char* value : {"5", "66"}) {
        put(file, head + value + '\n');
        EXPECT_EQ(read(), QLatin1String(value));
    }
    put(file, head + "five\n");
    EXPECT_TRUE(read().contains(u"is not a valid value for SV")) << qPrintable(read());
    kx.setModel("KX41000000-20A");
    EXPECT_TRUE(read().startsWith(u"Model number is different.\nExpected: KX41000000-20A, found: "));
}

} // namespace
