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
    shippedTables();
    const QByteArray before = contentOf("ini/MultiSelect.ini");
    const std::tuple<QString, QString, QString, QString> rows[] = {
        {"EN.txt", "Input range", "Input range|Low end|High end", "K: -199.9 to 500.0 °C|-199.9|500.0"},
        {"JP.txt", "入力種類", "入力種類|下限|上限", "K: -199.9 ～ 500.0 ℃|-199.9|500.0"},
    };
    for (const auto& [language, title, headers, second] : rows) {
        box.context.languageFile = language;
        const QByteArray words = contentOf("Lang/" + language);
        ASSERT_TRUE(table.load("InputRangeC"));
        EXPECT_EQ(table.rowCount(), 18);
        EXPECT_EQ(table.title(), title);
        GridModel grid;
        table.fill(grid);
        QStringList shown;
        for (int i = 0; i < grid.maxCols(); ++i)
            shown << grid.headerData(i, Qt::Horizontal, Qt::DisplayRole).toString();
        EXPECT_EQ(shown.join('|'), headers);
        EXPECT_EQ(row(grid, 2), second);
        EXPECT_EQ(grid.cell(2, 1).type, CellType::StaticText);
        EXPECT_EQ(grid.cell(2, 1).align, HAlign::Left);
        EXPECT_EQ(grid.cell(2, 2).align, HAlign::Right) << "numbers";
        EXPECT_EQ(contentOf("Lang/" + language), words) << "every word is in the file, and no number is added";
    }
    EXPECT_EQ(contentOf("ini/MultiSelect.ini"), before);
}

TEST_F(Selection, LookFollowsTheTable)
{
    constexpr platform::ColorRef kWindow = 0xFFFFFF;
    // the keys, the columns, and of column 1 its alignment, width and background
    const std::tuple<const char*, const char*, int, HAlign, double, platform::ColorRef> rows[] = {
        {"numbers", "ColMax=3\nColAlign1=1\nColWidth1=40.5\nBackColor=&hFF\n", 3, HAlign::Right, 40.5, 0xFF},
        {"absurd", "ColMax=2000000000\nColWidth1=1E300\n", SelectionTable::kMaxColumns, HAlign::Left, 6, kWindow},
    };
    for (const auto& [name, keys, columns, align, width, back] : rows) {
        tables(QByteArray("[T]\nData1=0,5\nName1=FivevbTabb\nName2=Test\n") + keys);
        ASSERT_TRUE(table.load("T")) << name;
        GridModel grid;
        table.fill(grid);
        EXPECT_EQ(grid.maxCols(), columns) << name;
        EXPECT_EQ(grid.cell(1, 1).align, align) << name;
        EXPECT_EQ(grid.colWidth(1), width) << name;
        EXPECT_EQ(grid.cell(1, 1).backColor, back) << name;
    }
}

TEST_F(Selection, TablesThatCannotBeUsedSayWhy)
{
    constexpr const char* kEmpty = "The selection table A is missing from MultiSelect.ini or has no entries.";
    const std::tuple<const char*, QByteArray, QString, const char*> rows[] = {
        {"no file", {}, "A", "Not Found MultiSelect.ini"},
        {"no section", "[B]\nName1=x\n", "A", kEmpty},
        {"no values", "[A]\nData1=7\nName1=x\nData2=,,\nName2=y\nName3=Test\n", "A",
         "No entry of the selection table A has a value."},
    };
    for (const auto& [name, file, section, problem] : rows) {
        QFile::remove(tablesPath());
        if (!file.isEmpty())
            tables(file);
        EXPECT_FALSE(table.load(section)) << name;
        EXPECT_EQ(table.problem().toStdString(), problem) << name;
        EXPECT_EQ(table.rowOf("1"), 0) << name;
        EXPECT_FALSE(table.isSelectable(1) || table.isSelectable(0) || table.isSelectable(-1)) << name;
        EXPECT_TRUE(table.settingsOf(1, "X").empty()) << name;
        EXPECT_EQ(QFile::exists(tablesPath()), !file.isEmpty()) << name << ": none is invented";
    }
}

TEST_F(Selection, TakingAnEntrySetsTheItemAndThenItsList)
{
    const std::tuple<QByteArray, QByteArray, QString> rows[] = {
        {",,tagDA,tagVB", "1,5,10,2.5", "ITEM=5 / A=10 / B shows 2.5"},
        {"tagDX,tagDA", "1,5", "ITEM=5 / A=5"}, // from index 1
        {",,Tag3,,tagDA,tag5,unknown", "1,5,2,3,4,5,6", "ITEM=5 / A=4"},
        {",,tagDA", "1", ""}, // no value
    };
    for (const auto& [tags, data, expected] : rows) {
        tables("[T]\nData1=0,9\nName1=other\nSetTags2=" + tags + "\nData2=" + data + "\nName2=taken\nName3=Test\n");
        set.clear();
        ASSERT_TRUE(table.load("T"));
        setEntry(table.settingsOf(2, "ITEM"));
        EXPECT_EQ(set.join(" / "), expected);
    }
}

TEST_F(Selection, FindsRows)
{
    tables("[T]\nData1=0,1\nName1=Pt100 Low\nData2=0,2.0\nName2=JPt100\nData3=0,2\nName3=K rangevbTab-200\n"
           "Data4=0,x\nName4=\xCA\xDF\xC1\nName5=Test\n");
    ASSERT_TRUE(table.load("T"));
    const std::pair<QString, int> searches[] = {{"pt1", 1}, {"j", 2},    {"PT100 L", 1}, {"t100", 1},
                                                {"Ｋ", 3},  {"-200", 3}, {"range", 3},   {"パ", 4},
                                                {"ﾊﾟ", 4},  {"zz", 0},   {"", 0},        {"  ", 0}};
    for (const auto& [text, found] : searches)
        EXPECT_EQ(table.find(text), found) << qPrintable(text);
    const std::pair<QString, int> values[] = {{"1", 1}, {"2", 2}, {"2.00", 2}, {"3", 0}, {"", 0}, {"x", 0}, {"0", 0}};
    for (const auto& [stored, found] : values)
        EXPECT_EQ(table.rowOf(stored), found) << qPrintable(stored);
}

} // namespace
