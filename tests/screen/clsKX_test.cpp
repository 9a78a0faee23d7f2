#include "DefinitionFault.h"
#include "ScreenFixture.h"

#include <QSignalSpy>

using platform::CellType;

namespace {

class Model : public ScreenFixture
{
protected:
    QString text(int row, int col) { return grid.cell(row, col).text; }
};

TEST_F(Model, BuildsGrid)
{
    QSignalSpy events(&kx, &clsKX::LoadEvent);
    // One block with a button, two labels, five items in two read sections.
    load(screenOf({"Tag=SV\nBlockNo=1\nKXAddress=8002\nDataLen=2\nCellData=2,2,vbWhite,vbBlack\n"
                   "CommRaedSection=Main\nDataInfo=1,0,1,<=,<=,0,10\nDefaultData=10",
                   "Tag=SWQCF\nBlockNo=1\nCellType=Bit\nKXAddress=8004\nDataLen=1\nBitMask=4\n"
                   "CellData=3,2,vbWhite,vbBlack\nCommRaedSection=Main\nDefaultData=0",
                   "Tag=GAIN\nKXAddress=8006\nDataLen=4\nCellData=4,2,vbWhite,vbBlack\n"
                   "CommRaedSection=Main\nDataInfo=2,0,1,<=,<=,0,10\nDefaultData=0",
                   "Tag=PV\nDataLen=2\nCellData=5,2,vbWhite,vbBlack\nCommRaedSection=Reg\nDefaultData=0",
                   "Tag=HID\nVisible=False\nOption=1=0\nKXAddress=8000\nDataLen=1\nCommRaedSection=Main\nDefaultData=3",
                   "Tag=NEVER\nOption=1=Z\nCellData=6,2,vbWhite,vbBlack"},
                  {}, "BlockMaxCount=1\nStringMaxCount=2\nMaxRow=8\n") +
             "[BlockInfo1]\nCellData=1,1,4,3,True,vbBlue\nButtonCaption=Go\nButtonData=1,3,vbRed,vbWhite\n"
             "[Strings1]\nCellData=1,1,vbYellow,vbRed,2\nCaption=Set values\nFontBold=True\n"
             "[Strings2]\nCellData=8,1,vbYellow,vbRed\n",
         "[Main]\nReadCmd1=Direct,8000,12\n[Reg]\nReadCmd1=GetAnalogInput,30001,1,PV\n");
    EXPECT_EQ(grid.maxRows(), 8);
    const std::tuple<int, int, CellType, const char*> cells[] = {
        {1, 1, CellType::StaticText, "Set values"},
        {1, 3, CellType::Button, "Go"},
        {2, 2, CellType::Edit, "10.0"}, // the default is shown unscaled until a read
        {3, 2, CellType::Button, "Off"},
        {6, 2, CellType::StaticText, ""}}; // option not fitted
    for (const auto& [row, col, type, shown] : cells)
        EXPECT_TRUE(grid.cell(row, col).type == type && text(row, col) == shown) << row << ',' << col;
    EXPECT_TRUE(grid.cell(1, 1).font.bold);
    EXPECT_EQ(grid.cell(1, 1).backColor, 0x00FFFFU);
    EXPECT_EQ(grid.cell(1, 1).align, platform::HAlign::Center);
    EXPECT_EQ(grid.cell(8, 1).foreColor, 0x0000FFU);
    ASSERT_EQ(grid.frames().size(), 1);
    EXPECT_EQ(grid.frames()[0].color, 0xFF0000U);
    EXPECT_TRUE(grid.frames()[0].range.row2 == 4 && grid.frames()[0].range.col2 == 3);
    EXPECT_EQ(kx.getTag(6), QString());
    EXPECT_EQ(kx.getTag(0), QString());
    EXPECT_EQ(kx.getTag(1), u"SV");
    EXPECT_EQ(kx.getBlockByRC(1, 3), kx.getBlockByNo(1));
    EXPECT_EQ(kx.getBlockByNo(1)->Count(), 2);
    ASSERT_EQ(kx.ColAdr().count(), 2);
    EXPECT_TRUE(kx.ColAdr().at(1).m_bModbus);
    QStringList modes;
    for (const auto& event : events)
        modes << event[0].toString();
    EXPECT_EQ(modes.join(QString()), u"0120112011111122");
    EXPECT_EQ(events.first().value(2).toString(), u"loading Block Info.");
    EXPECT_EQ(events.last(), (QList<QVariant>{2, 6, QString()}));
    EXPECT_TRUE(grid.isShown());
    kx.setSpread(nullptr);
    EXPECT_EQ(kx.load(1, &library, "KX41000000-10A"), 1);
}

TEST_F(Model, LooksUpByTag)
{
    load(screenOf({"Tag=VQSV1\nCellData=1,1,vbWhite,vbBlack\nDefaultData=5", "Tag=ABC10\nCellData=2,1,vbWhite,vbBlack",
                   "Tag=VQSV1\nCellData=1,1,vbWhite,vbBlack", "Tag=B"}));
    EXPECT_EQ(kx.getDataByTag("VQSV"), kx.getDataByTag("VQSV1"));
    EXPECT_EQ(kx.getDataByTag("ABC"), nullptr);
    EXPECT_EQ(kx.getDataByRC(1, 1), kx.getDataByTag("VQSV1")) << "the first item keeps cell and tag";
    EXPECT_EQ(kx.getDataByTag("VQSV1")->number(), 1);
    EXPECT_EQ(kx.checkTag("tagVQSV1"), u"5");
    EXPECT_EQ(kx.checkTag("TAGNONE"), QString());
    EXPECT_EQ(kx.checkTag("TAG"), u"TAG");
    EXPECT_EQ(kx.checkTag("12"), u"12");
    const auto found = kx.definitionFindings();
    kx.load(1, &library, "KX41000000-10A");
    EXPECT_EQ(kx.definitionFindings(), found) << "of this load only";
}

TEST_F(Model, DamagedFilesLoadWhatIsThere)
{
    const std::tuple<const char*, const char*, int, size_t> damaged[] = {
        {"Empty", "", 10, 0},
        {"Binary", "\x01\xFF\xFE[\x81=\x9F\n]]\n[Setting", 10, 0},
        {"NegativeCounts", "[Setting]\nBlockMaxCount=-1\nStringMaxCount=-5\nDataMaxCount=-1\nMaxRow=-1\n", 0, 0},
        {"TextCounts", "[Setting]\nBlockMaxCount=x\nDataMaxCount=many\nMaxRow=1e\n", 0, 0},
        {"HugeCount",
         "[Setting]\nDataMaxCount=2147483647\nBlockMaxCount=2147483647\nMaxRow=3\n[Datas1]\nTag=A\n"
         "[Datas2]\nTag=B\n[Datas4]\nTag=D\n",
         3, 2},
        {"CountOfMissingSections", "[Setting]\nDataMaxCount=99999\nMaxRow=3\n[Datas1]\nTag=A\n", 3, 1},
        {"CountOfNothing", "[Setting]\nBlockMaxCount=1\nDataMaxCount=2\nMaxRow=3\n", 3, 0},
        {"CutInTheMiddle", "[Setting]\nDataMaxCount=2\nMaxRow=3\n[Datas1]\nTag=A\nCellDa", 3, 2},
    };
    for (const auto& [name, screen, rows, items] : damaged) {
        SCOPED_TRACE(name);
        put(definition("M.ini"), screen);
        for (int time = 0; time < 2; ++time) { // the file fills itself in, and stays the same model
            EXPECT_EQ(kx.load(1, &library, "KX41000000-10A"), 0);
            EXPECT_EQ(grid.maxRows(), rows);
            EXPECT_EQ(kx.items().size(), items);
        }
    }
}

// Nothing is read or written in the place of a file that is refused, nor into one of the other kind.
TEST_F(Model, DefinitionFilesThatCannotBeMeantStayUntouched)
{
    const QByteArray screen = "[Setting]\nDataMaxCount=1\n[Datas1]\nTag=A\nCommRaedSection=S\n";
    const QByteArray comm = "[S]\nReadCmdMax=1\nReadCmd1=Direct,1000,2\n";
    put(definition("M.ini"), screen);
    put(definition("C.ini"), comm);
    put(definition("Vorlant.ini"), screen); // the name that a refused one would leave in place
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"../M.ini", "C.ini", "../M.ini is refused"},
        {"M.ini", "a:C.ini", "a:C.ini is refused"},
        {"C.ini", "C.ini", "C.ini is a comm file"},
        {"M.ini", "M.ini", "M.ini is a screen file"},
    };
    for (const auto& [screenFile, commFile, fault] : rows) {
        SCOPED_TRACE(fault);
        catalogue(QByteArray("KXMaxCount=1\nKXModel1=KX410\nKXName1=KX410\nKXScreenFile1=") + screenFile +
                  "\nKXCommFile1=" + commFile + '\n');
        kx.setMaxRC(1);
        kx.load(1, &library, "KX41000000-10A");
        EXPECT_TRUE(kx.items().empty());
        EXPECT_TRUE(definitionFault(library, kx.entry()).contains(fault));
        EXPECT_EQ(QDir(box.path(definition({}))).entryList(QDir::Files),
                  QStringList({"C.ini", "M.ini", "Vorlant.ini"}));
        EXPECT_EQ(content(definition("M.ini")), screen);
        EXPECT_EQ(content(definition("C.ini")), comm);
        EXPECT_EQ(content(definition("Vorlant.ini")), screen);
    }
}

TEST_F(Model, FontSizesAreBounded)
{
    load("[Setting]\nStringMaxCount=5\nMaxRow=5\nDefaultFontSize=12\n"
         "[Strings1]\nCaption=x\nCellData=1,1\nFontSize=1E9\n[Strings2]\nCellData=2,1\nFontSize=0.1\n"
         "[Strings3]\nCellData=3,1\nFontSize=-3\n[Strings4]\nCellData=4,1\nFontSize=nan\n[Strings5]\nCellData=5,1\n");
    const double expected[] = {96, 4, 12, 12, 12};
    for (int row = 1; row <= 5; ++row)
        EXPECT_EQ(grid.cell(row, 1).font.pointSize, expected[row - 1]) << row;
    EXPECT_GT(grid.rowHeight(1), grid.rowHeight(2));
    load("[Setting]\nStringMaxCount=1\nMaxRow=5\nDefaultFontSize=1E300\n[Strings1]\nCellData=1,1\n");
    EXPECT_EQ(grid.cell(1, 1).font.pointSize, 96);
}

TEST_F(Model, DecimalTableWithoutANumberOfRowsHasOne)
{
    load(screenOf({"Tag=PQKAL1\nDefaultData=0\nCellData=1,1,vbWindowBackGround,vbBlack", "Tag=SVDOT\nDefaultData=2"}) +
         "[EVDOT]\nLastIndex=x\n0=0,1,2,3\n1=3,3,3,3\n");
    EXPECT_EQ(kx.getEVDot(1), 2);
    kx.setData("PQKAL1", "1", false);
    EXPECT_EQ(kx.getEVDot(1), 0);
}

TEST_F(Model, CatalogueIsWrittenOnce)
{
    ModelCatalogue models(library);
    catalogue("KXMaxCount=0\n");
    EXPECT_EQ(models.all().size(), 7U) << "as where it cannot be written";
    EXPECT_EQ(models.entry(7).commFile, u"KX910Comm.ini");
    models.ensureBuiltIn();
    EXPECT_EQ(models.all().size(), 7U);
    EXPECT_EQ(models.entry(3).screenFile, u"KX620Screen.ini");
    EXPECT_EQ(models.numberOf("KX910"), 7);
    catalogue("KXMaxCount=00\n");
    models.ensureBuiltIn();
    EXPECT_EQ(models.all().size(), 0U) << "only an exact 0 asks for the built-in models";
}

} // namespace
