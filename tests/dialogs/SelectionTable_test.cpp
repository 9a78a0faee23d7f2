#include "SelectionTable.h"

#include "SelectionFixture.h"

namespace {

using platform::CellType;
using platform::GridModel;
using platform::HAlign;

class Selection : public SelectionFixture
{
protected:
    QString row(const GridModel& grid, int number) const
    {
        QStringList texts;
        for (int col = 1; col <= grid.maxCols(); ++col)
            texts << grid.cell(number, col).text;
        return texts.join(u'|');
    }

    SelectionTable table{library};
};

TEST_F(Selection, ShippedTablesAreShown)
{
    struct Row
    {
        const char* section;
        const char* language;
        int rows;
        const char* title;
        const char* header;
        const char* second;
    };
    const Row rows[] = {
        {"InputRangeC", "EN.txt", 18, "Input range", "Input range|Low end|High end", "K -199.9 to 500.0|-199.9|500.0"},
        {"InputRangeC", "JP.txt", 18, "入力種類", "入力種類|下限|上限", "K -199.9 ～ 500.0|-199.9|500.0"},
    };
    shippedTables();
    const QByteArray before = tablesFile();
    for (const Row& shown : rows) {
        box.context.languageFile = QLatin1String(shown.language);
        const QString languagePath = box.path(QStringLiteral("C:\\Vorlant\\Lang\\") + box.context.languageFile);
        const QByteArray language = contentOf(languagePath);
        ASSERT_TRUE(table.load(QLatin1String(shown.section))) << shown.section;
        EXPECT_EQ(table.rowCount(), shown.rows);
        EXPECT_EQ(table.title(), QString::fromUtf8(shown.title));
        GridModel grid;
        table.fill(grid);
        QStringList headers;
        for (int i = 0; i < grid.maxCols(); ++i)
            headers << grid.headerData(i, Qt::Horizontal, Qt::DisplayRole).toString();
        EXPECT_EQ(headers.join(u'|'), QString::fromUtf8(shown.header));
        EXPECT_EQ(row(grid, 2), QString::fromUtf8(shown.second));
        EXPECT_EQ(grid.cell(2, 1).type, CellType::StaticText);
        EXPECT_EQ(grid.cell(2, 1).align, HAlign::Left);
        EXPECT_EQ(grid.cell(2, 2).align, grid.maxCols() == 3 ? HAlign::Right : HAlign::Left) << "numbers to the right";
        EXPECT_EQ(contentOf(languagePath), language) << "every word is in the language file, and no number is added";
    }
    EXPECT_EQ(tablesFile(), before);
}

TEST_F(Selection, LookFollowsTheTable)
{
    struct Row
    {
        const char* name;
        const char* keys;
        int columns;
        HAlign align;
        double width; // of column 1
        platform::ColorRef back;
    };
    constexpr platform::ColorRef kWindow = 0xFFFFFF;
    const Row rows[] = {
        {"numbers", "ColMax=3\nColAlign1=1\nColWidth1=40.5\nBackColor=&hFF\n", 3, HAlign::Right, 40.5, 0xFF},
        {"absurd", "ColMax=2000000000\nColWidth1=1E300\n", SelectionTable::kMaxColumns, HAlign::Left, 6, kWindow},
    };
    for (const Row& look : rows) {
        tables(QByteArray("[T]\nData1=0,5\nName1=FivevbTabb\nName2=Test\n") + look.keys);
        ASSERT_TRUE(table.load(QStringLiteral("T"))) << look.name;
        GridModel grid;
        table.fill(grid);
        EXPECT_EQ(grid.maxCols(), look.columns) << look.name;
        EXPECT_EQ(grid.cell(1, 1).align, look.align) << look.name;
        EXPECT_EQ(grid.colWidth(1), look.width) << look.name;
        EXPECT_EQ(grid.cell(1, 1).backColor, look.back) << look.name;
    }
}

TEST_F(Selection, TablesThatCannotBeUsedSayWhy)
{
    struct Row
    {
        const char* name;
        const char* file; // null: none
        const char* section;
        const char* problem;
    };
    constexpr const char* kEmpty = "The selection table A is missing from MultiSelect.ini or has no entries.";
    const Row rows[] = {
        {"no file", nullptr, "A", "Not Found MultiSelect.ini"},
        {"no section", "[B]\nName1=x\n", "A", kEmpty},
        {"no values", "[A]\nData1=7\nName1=x\nData2=,,\nName2=y\nName3=Test\n", "A",
         "No entry of the selection table A has a value."},
    };
    for (const Row& bad : rows) {
        QFile::remove(tablesPath());
        if (bad.file != nullptr)
            tables(bad.file);
        EXPECT_FALSE(table.load(QLatin1String(bad.section))) << bad.name;
        EXPECT_EQ(table.problem().toStdString(), bad.problem) << bad.name;
        EXPECT_EQ(table.rowOf(QStringLiteral("1")), 0) << bad.name;
        EXPECT_FALSE(table.isTakable(1) || table.isTakable(0) || table.isTakable(-1)) << bad.name;
        EXPECT_TRUE(table.settingsOf(1, QStringLiteral("X")).empty()) << bad.name;
        EXPECT_EQ(QFile::exists(tablesPath()), bad.file != nullptr) << bad.name << ": none is invented";
    }
}

TEST_F(Selection, TakingAnEntrySetsTheItemAndThenItsList)
{
    struct Row
    {
        const char* name;
        const char* tags;
        const char* data;
        const char* set;
    };
    const Row rows[] = {
        {"stored and shown values", ",,tagDA,tagVB", "1,5,10,2.5", "ITEM=5 / A=10 / B shows 2.5"},
        {"from index 1", "tagDX,tagDA", "1,5", "ITEM=5 / A=5"},
        {"placeholders and empty ones", ",,Tag3,,tagDA,tag5,unknown", "1,5,2,3,4,5,6", "ITEM=5 / A=4"},
        {"no value", ",,tagDA", "1", ""},
    };
    for (const Row& taken : rows) {
        tables(QByteArray("[T]\nData1=0,9\nName1=other\nSetTags2=") + taken.tags + "\nData2=" + taken.data +
               "\nName2=taken\nName3=Test\n");
        set.clear();
        ASSERT_TRUE(table.load(QStringLiteral("T"))) << taken.name;
        takeEntry(table.settingsOf(2, QStringLiteral("ITEM")));
        EXPECT_EQ(set.join(QStringLiteral(" / ")).toStdString(), taken.set) << taken.name;
    }
}

TEST_F(Selection, FindsRows)
{
    tables("[T]\nData1=0,1\nName1=Pt100 Low\nData2=0,2.0\nName2=JPt100\nData3=0,2\nName3=K rangevbTab-200\n"
           "Data4=0,x\nName4=\xCA\xDF\xC1\nName5=Test\n");
    ASSERT_TRUE(table.load(QStringLiteral("T")));
    struct Row
    {
        const char* text;
        int found;
    };
    for (const Row& search :
         {Row{"pt1", 1}, Row{"j", 2}, Row{"PT100 L", 1}, Row{"t100", 1}, Row{"Ｋ", 3}, Row{"-200", 3}, Row{"range", 3},
          Row{"パ", 4}, Row{"ﾊﾟ", 4}, Row{"zz", 0}, Row{"", 0}, Row{"  ", 0}})
        EXPECT_EQ(table.find(QString::fromUtf8(search.text)), search.found) << search.text;
    struct Value
    {
        const char* stored;
        int row;
    };
    for (const Value& value :
         {Value{"1", 1}, Value{"2", 2}, Value{"2.00", 2}, Value{"3", 0}, Value{"", 0}, Value{"x", 0}, Value{"0", 0}})
        EXPECT_EQ(table.rowOf(QLatin1String(value.stored)), value.row) << value.stored;
}

} // namespace
