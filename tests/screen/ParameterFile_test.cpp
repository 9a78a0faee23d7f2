#include "ScreenFixture.h"

#include <QDir>

namespace {

const QString kFile = QStringLiteral("C:\\sets\\a b.k41");
const QByteArray kModel = "KX41000000-10A";

class Parameters : public ScreenFixture
{
protected:
    Parameters()
    {
        QDir().mkpath(box.path(QStringLiteral("C:\\sets")));
        box.clock.setNow(QDateTime(QDate(2007, 3, 5), QTime(9, 4, 7)));
        box.context.languageFile = QStringLiteral("EN.txt");
        load("[Setting]\nDataMaxCount=4\nMaxRow=9\nMaxCol=2\n" +
             dataSection(1, "Tag=VQSV1\nDataInfo=1,0,400,<=,<=,0,10\nDefaultData=1234") +
             dataSection(2, "Tag=NAME\nCellType=String\nDefaultData=A") +
             dataSection(3, "Tag=HIDE\nOption=0=KX41\nVisible=False\nDefaultData=7") +
             dataSection(4, "Tag=MODE\nCellType=Combo\nComboStrings=OffvbTabOn\nComboDatas=0vbTab1\nDefaultData=1"));
    }

    QString data(const char* tag) const { return kx.getDataByTag(QLatin1String(tag))->Data(); }
    QStringList all() const
    {
        QStringList values;
        for (const auto& item : kx.items())
            values << item->Data() + u'/' + QString::number(item->Edit);
        return values;
    }
};

TEST_F(Parameters, FileHoldsEveryItemInOrder)
{
    put(kFile, "; kept\r\n[Data]\r\nOLD=5\r\nVQSV1=1\r\n");
    EXPECT_EQ(kx.saveData(kFile), QString());
    EXPECT_EQ(content(kFile), "; kept\r\n[Data]\r\nOLD=5\r\nVQSV1=1234\r\nNAME=A\r\nHIDE=7\r\nMODE=1\r\n"
                              "[Info]\r\nMODEL=KX41000000-10A\r\nOffLine=False\r\nSaveDate=2007/03/05 09:04:07\r\n"
                              "SoftwareVersion=0.1.0\r\nLangugeFile=EN.txt\r\n");
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
    EXPECT_EQ(kx.lastLoad().missing, QStringList{QStringLiteral("HIDE")});
    EXPECT_TRUE(kx.lastLoad().outsideLimits.isEmpty());
    put(kFile, "[Info]\nMODEL=" + kModel + "\n[Data]\nVQSV1=99999\nMODE=7\n");
    EXPECT_FALSE(kx.loadData(kFile));
    EXPECT_EQ(kx.lastLoad().outsideLimits, (QStringList{"VQSV1", "MODE"})) << "a choice that does not exist, too";
}

TEST_F(Parameters, UnitComesBeforeTheRange)
{
    put(definition(QStringLiteral("MultiSelect.ini")),
        "[C]\nData1=0,5\nName1=Celsius\nName2=Test\n"
        "[K]\nData1=0,5,77\nSetTags1=,,tagDRANGEL\nName1=Kelvin\nName2=Test\n");
    load("[Setting]\nDataMaxCount=3\nMaxRow=9\nMaxCol=2\n" +
         dataSection(1, "Tag=PQRNO\nCellType=Input\nInputCSelectSection=C\nInputKSelectSection=K") +
         dataSection(2, "Tag=SWQCF\nCellType=Combo\nComboStrings=CvbTabK\nComboDatas=0vbTab1") +
         dataSection(3, "Tag=RANGEL\nOption=0=KX41\nVisible=False"));
    put(kFile, "[Info]\nMODEL=" + kModel + "\n[Data]\nRANGEL=8\nPQRNO=5\nSWQCF=1\n");
    EXPECT_FALSE(kx.loadData(kFile));
    EXPECT_EQ(grid.cell(1, 1).text, u"Kelvin");
    EXPECT_EQ(data("RANGEL"), u"8") << "the file's own value holds over the one of the table";
}

TEST_F(Parameters, NameThatIsRefusedLeadsToNoOtherFile)
{
    const QString refused = definition(QStringLiteral("a?b.kx"));
    for (const QString& file : {refused, definition(QStringLiteral("Vorlant.ini"))})
        put(file, "[Info]\nMODEL=" + kModel + "\n[Data]\n");
    EXPECT_TRUE(kx.loadData(refused));
    EXPECT_TRUE(kx.lastLoad().detail.contains(u"a?b.kx is refused")) << qPrintable(kx.lastLoad().detail);
}

// What was never read, and odd values and tags of a definition.
TEST_F(Parameters, SavedFileHoldsNoInventedValueAndLoads)
{
    load("[Setting]\nDataMaxCount=4\nMaxRow=9\nMaxCol=2\n" +
             dataSection(1, "Tag=A\nDataLen=2\nKXAddress=8000\nCommRaedSection=Main\nDefaultData=5") +
             dataSection(2, "Tag=B\nDefaultData=auto") + dataSection(3, "Tag=C\nCellType=Odd\nDefaultData=x y") +
             dataSection(4, "Tag=SWQCF\nCellType=Combo\nComboDatas=0vbTab1\nDataLen=1\nKXAddress=8002\n"
                            "CommRaedSection=Main\nDefaultData=0"),
         "[Main]\nReadCmd1=Direct,8000,4\n");
    EXPECT_EQ(grid.cell(2, 1).text, u"auto");
    EXPECT_EQ(kx.saveData(kFile), QString());
    EXPECT_TRUE(content(kFile).contains("[Data]\r\nA=\r\nB=auto\r\nC=x y\r\nSWQCF=\r\n"))
        << content(kFile).toStdString();
    kx.setData(QStringLiteral("SWQCF"), QStringLiteral("1"), false);
    kx.setUnitSwitch(1);
    EXPECT_FALSE(kx.loadData(kFile));
    EXPECT_EQ(kx.lastLoad().missing, QStringList{QStringLiteral("A")});
    EXPECT_EQ(kx.unitSwitch(), 1) << "a file without a unit leaves it";
    EXPECT_EQ(data("SWQCF"), u"1");
}

TEST_F(Parameters, TagThatNoFileCanHoldSavesNothing)
{
    put(kFile, "[Data]\nA=1\n");
    load("[Setting]\nDataMaxCount=2\nMaxRow=9\nMaxCol=2\n" + dataSection(1, "Tag=A\nDefaultData=2") +
         dataSection(2, "Tag=B=C"));
    EXPECT_TRUE(kx.saveData(kFile).contains(u"B=C"));
    EXPECT_EQ(content(kFile), "[Data]\nA=1\n");
    load("[Setting]\nDataMaxCount=2\nMaxRow=9\nMaxCol=2\n" + dataSection(1, "Tag=Ab") + dataSection(2, "Tag=aB"));
    EXPECT_EQ(kx.items().size(), 1U) << "one key in a file";
}

struct BadFile
{
    const char* name;
    QByteArray bytes;
    ParameterLoad::Outcome outcome;
};

TEST_F(Parameters, BadFilesChangeNothing)
{
    for (const BadFile& row :
         {BadFile{"Binary", QByteArray("\x7F\x00\xFF[Info]\x00MODEL", 15), ParameterLoad::Outcome::OtherModel},
          BadFile{"Other", "[Info]\nMODEL=KX62000000-10A\n[Data]\nVQSV1=1\n", ParameterLoad::Outcome::OtherModel},
          BadFile{"OtherCase", "[Info]\nMODEL=kx41000000-10A\n[Data]\nVQSV1=1\n", ParameterLoad::Outcome::OtherModel},
          BadFile{"LastIsText", "[Info]\nMODEL=" + kModel + "\n[Data]\nVQSV1=1\nMODE=on\n",
                  ParameterLoad::Outcome::BadValue},
          BadFile{"TooLargeANumber", "[Info]\nMODEL=" + kModel + "\n[Data]\nVQSV1=1e99\n",
                  ParameterLoad::Outcome::BadValue}}) {
        SCOPED_TRACE(row.name);
        const QStringList before = all();
        put(kFile, row.bytes);
        EXPECT_TRUE(kx.loadData(kFile));
        EXPECT_EQ(kx.lastLoad().outcome, row.outcome);
        EXPECT_FALSE(kx.lastLoad().detail.isEmpty());
        EXPECT_EQ(all(), before);
        EXPECT_EQ(content(kFile), row.bytes) << "loading only reads";
    }
}

TEST_F(Parameters, WhatIsNoFileCannotBeLoaded)
{
    EXPECT_TRUE(kx.loadData(QStringLiteral("C:\\sets")));
    EXPECT_EQ(kx.lastLoad().outcome, ParameterLoad::Outcome::Unreadable);
    EXPECT_TRUE(kx.loadData(QStringLiteral("C:\\sets\\missing.k41")));
    EXPECT_EQ(kx.lastLoad().outcome, ParameterLoad::Outcome::Unreadable);
    EXPECT_TRUE(kx.loadData(QStringLiteral("Z:\\proc\\self\\mem"))); // the first read of it fails
    EXPECT_TRUE(kx.lastLoad().detail.startsWith(u"The file was not loaded: "));
    EXPECT_FALSE(QFile::exists(box.path(QStringLiteral("C:\\sets\\missing.k41"))));
    EXPECT_FALSE(kx.saveData(QStringLiteral("C:\\sets")).isEmpty());
    EXPECT_FALSE(kx.saveData(QStringLiteral("C:\\nowhere\\a.k41")).isEmpty());
}

TEST_F(Parameters, NewNameInAnotherCaseIsAnotherFile)
{
    put(kFile, "old");
    EXPECT_EQ(kx.saveData(kFile.toUpper()), QString());
    EXPECT_EQ(content(kFile), "old");
    EXPECT_FALSE(kx.loadData(kFile.toUpper())) << "what was saved is what is loaded";
}

} // namespace
