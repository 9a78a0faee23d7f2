#include "ScreenFixture.h"

#include <QDir>

namespace {

const QString kFile = "C:\\sets\\a b.k41";
const QByteArray kModel = "KX41000000-10A";

class Parameters : public ScreenFixture
{
protected:
    Parameters()
    {
        QDir().mkpath(box.path("C:\\sets"));
        box.clock.setNow(QDateTime(QDate(2007, 3, 5), QTime(9, 4, 7)));
        box.context.languageFile = "EN.txt";
        load(screenOf({"Tag=VQSV1\nDataInfo=1,0,400,<=,<=,0,10\nDefaultData=1234",
                       "Tag=NAME\nCellType=String\nDefaultData=A",
                       "Tag=HIDE\nOption=0=KX41\nVisible=False\nDefaultData=7",
                       "Tag=MODE\nCellType=Combo\nComboStrings=OffvbTabOn\nComboDatas=0vbTab1\nDefaultData=1"}));
    }

    QStringList all() const
    {
        QStringList values;
        for (const auto& one : kx.items())
            values << one->Data() + u'/' + QString::number(one->Edit);
        return values;
    }
};

TEST_F(Parameters, FileHoldsEveryItemInOrder)
{
    put(kFile, "; kept\r\n[Data]\r\nOLD=5\r\nVQSV1=1\r\n");
    EXPECT_EQ(kx.saveData(kFile).error(), QString());
    EXPECT_EQ(content(kFile), "; kept\r\n[Data]\r\nOLD=5\r\nVQSV1=1234\r\nNAME=A\r\nHIDE=7\r\nMODE=1\r\n"
                              "[Info]\r\nMODEL=KX41000000-10A\r\nOffLine=False\r\nSaveDate=2007/03/05 09:04:07\r\n"
                              "SoftwareVersion=0.2.0\r\nLangugeFile=EN.txt\r\n");
    EXPECT_FALSE(kx.loadData(kFile));
    EXPECT_TRUE(kx.lastLoad().changed.isEmpty()) << "what was saved is what is there";
}

TEST_F(Parameters, LoadingMarksWhatDiffers)
{
    put(kFile, "[Info]\nMODEL=" + kModel + "\n[Data]\nVQSV1=50\nNAME=A\nMODE=0\nUNKNOWN=1\n");
    EXPECT_FALSE(kx.loadData(kFile));
    EXPECT_EQ(all().join(u' '), u"50/2 A/0 /2 0/2") << "a tag that the file lacks has no value";
    EXPECT_EQ(grid.cell(1, 1).text, u"5.0");
    EXPECT_TRUE(grid.cell(1, 1).font.bold);
    EXPECT_EQ(kx.lastLoad().missing, QStringList{"HIDE"});
    EXPECT_TRUE(kx.lastLoad().outsideLimits.isEmpty());
    put(kFile, "[Info]\nMODEL=" + kModel + "\n[Data]\nVQSV1=99999\nMODE=7\n");
    EXPECT_FALSE(kx.loadData(kFile));
    EXPECT_EQ(kx.lastLoad().outsideLimits, (QStringList{"VQSV1", "MODE"})) << "a choice that does not exist, too";
}

TEST_F(Parameters, UnitComesBeforeTheRange)
{
    put(definition("MultiSelect.ini"), "[C]\nData1=0,5\nName1=Celsius\nName2=Test\n"
                                       "[K]\nData1=0,5,77\nSetTags1=,,tagDRANGEL\nName1=Kelvin\nName2=Test\n");
    load(screenOf({"Tag=PQRNO\nCellType=Input\nInputCSelectSection=C\nInputKSelectSection=K",
                   "Tag=SWQCF\nCellType=Combo\nComboStrings=CvbTabK\nComboDatas=0vbTab1",
                   "Tag=RANGEL\nOption=0=KX41\nVisible=False"}));
    put(kFile, "[Info]\nMODEL=" + kModel + "\n[Data]\nRANGEL=8\nPQRNO=5\nSWQCF=1\n");
    EXPECT_FALSE(kx.loadData(kFile));
    EXPECT_EQ(grid.cell(1, 1).text, u"K");
    EXPECT_EQ(item("RANGEL").Data(), u"8") << "the file's own value holds over the one of the table";
}

TEST_F(Parameters, NameThatIsRefusedLeadsToNoOtherFile)
{
    const QString refused = definition("a?b.kx");
    for (const QString& file : {refused, definition("Vorlant.ini")})
        put(file, "[Info]\nMODEL=" + kModel + "\n[Data]\n");
    EXPECT_TRUE(kx.loadData(refused));
    EXPECT_TRUE(kx.lastLoad().detail.contains(u"a?b.kx is refused")) << qPrintable(kx.lastLoad().detail);
}

// What was never read, and odd values and tags of a definition.
TEST_F(Parameters, SavedFileHoldsNoInventedValueAndLoads)
{
    load(screenOf({"Tag=A\nDataLen=2\nKXAddress=8000\nCommRaedSection=Main\nDefaultData=5", "Tag=B\nDefaultData=auto",
                   "Tag=C\nCellType=Odd\nDefaultData=x y",
                   "Tag=SWQCF\nCellType=Combo\nComboDatas=0vbTab1\nDataLen=1\nKXAddress=8002\n"
                   "CommRaedSection=Main\nDefaultData=0"}),
         "[Main]\nReadCmd1=Direct,8000,4\n");
    EXPECT_EQ(grid.cell(2, 1).text, u"auto");
    EXPECT_EQ(kx.saveData(kFile).error(), QString());
    EXPECT_TRUE(content(kFile).contains("[Data]\r\nA=\r\nB=auto\r\nC=x y\r\nSWQCF=\r\n"))
        << content(kFile).toStdString();
    kx.setData("SWQCF", "1", false);
    kx.setUnitSwitch(1);
    EXPECT_FALSE(kx.loadData(kFile));
    EXPECT_EQ(kx.lastLoad().missing, QStringList{"A"});
    EXPECT_EQ(kx.unitSwitch(), 1) << "a file without a unit leaves it";
    EXPECT_EQ(item("SWQCF").Data(), u"1");
}

TEST_F(Parameters, TagThatNoFileCanHoldSavesNothing)
{
    put(kFile, "[Data]\nA=1\n");
    load(screenOf({"Tag=A\nDefaultData=2", "Tag=B=C"}));
    EXPECT_TRUE(kx.saveData(kFile).error().contains(u"B=C"));
    EXPECT_EQ(content(kFile), "[Data]\nA=1\n");
    load(screenOf({"Tag=Ab", "Tag=aB"}));
    EXPECT_EQ(kx.items().size(), 1U) << "one key in a file";
}

TEST_F(Parameters, BadFilesChangeNothing)
{
    using Outcome = ParameterLoad::Outcome;
    const std::tuple<const char*, QByteArray, Outcome> rows[] = {
        {"Binary", QByteArray("\x7F\x00\xFF[Info]\x00MODEL", 15), Outcome::OtherModel},
        {"Other", "[Info]\nMODEL=KX62000000-10A\n[Data]\nVQSV1=1\n", Outcome::OtherModel},
        {"OtherCase", "[Info]\nMODEL=kx41000000-10A\n[Data]\nVQSV1=1\n", Outcome::OtherModel},
        {"LastIsText", "[Info]\nMODEL=" + kModel + "\n[Data]\nVQSV1=1\nMODE=on\n", Outcome::BadValue},
        {"TooLargeANumber", "[Info]\nMODEL=" + kModel + "\n[Data]\nVQSV1=1e99\n", Outcome::BadValue},
    };
    const QStringList before = all();
    for (const auto& [name, bytes, outcome] : rows) {
        SCOPED_TRACE(name);
        put(kFile, bytes);
        EXPECT_TRUE(kx.loadData(kFile));
        EXPECT_EQ(kx.lastLoad().outcome, outcome);
        EXPECT_FALSE(kx.lastLoad().detail.isEmpty());
        EXPECT_EQ(all(), before);
        EXPECT_EQ(content(kFile), bytes) << "loading only reads";
    }
}

TEST_F(Parameters, WhatIsNoFileCannotBeLoaded)
{
    EXPECT_TRUE(kx.loadData("C:\\sets"));
    EXPECT_EQ(kx.lastLoad().outcome, ParameterLoad::Outcome::Unreadable);
    EXPECT_TRUE(kx.loadData("C:\\sets\\missing.k41"));
    EXPECT_EQ(kx.lastLoad().outcome, ParameterLoad::Outcome::Unreadable);
    EXPECT_TRUE(kx.loadData("Z:\\proc\\self\\mem")); // the first read of it fails
    EXPECT_TRUE(kx.lastLoad().detail.startsWith(u"The file was not loaded: "));
    EXPECT_FALSE(QFile::exists(box.path("C:\\sets\\missing.k41")));
    EXPECT_FALSE(kx.saveData("C:\\sets").ok());
    EXPECT_FALSE(kx.saveData("C:\\nowhere\\a.k41").ok());
}

TEST_F(Parameters, NewNameInAnotherCaseIsAnotherFile)
{
    put(kFile, "old");
    EXPECT_EQ(kx.saveData(kFile.toUpper()).error(), QString());
    EXPECT_EQ(content(kFile), "old");
    EXPECT_FALSE(kx.loadData(kFile.toUpper())) << "what was saved is what is loaded";
}

} // namespace
