#include "ParameterSearch.h"

#include "ScreenFixture.h"

namespace {

using platform::CellPlace;

// Set value 1 and 2 and a state in one column, a timer in the next one, with their units beside them.
class Search : public ScreenFixture
{
protected:
    void SetUp() override
    {
        put("C:\\Vorlant\\Lang\\EN.txt", "[Info]\nName=English\n[Language]\nTimerKey=Timer\n");
        put("C:\\Vorlant\\Lang\\JP.txt",
            QByteArray("\xEF\xBB\xBF[Info]\nName=Japanese\n[Language]\nSet value 1=設定値1\nHeating=加熱ブロック\n"
                       "Running=運転\nminutes=分\nTimerKey=タイマ\n"));
        box.context.languageFile = "JP.txt";
        load(
            "[Setting]\nMaxRow=9\nMaxCol=4\nDataMaxCount=4\nBlockMaxCount=1\nStringMaxCount=1\n"
            "[BlockInfo1]\nName=Heating\n[Strings1]\nCellData=1,4,vbWhite,vbBlack\nCaption=minutes\n" +
            dataSection(1, "Tag=TIMER\nName=TimerKey\nDefaultData=77\nCellData=1,3,vbWhite,vbBlack") +
            dataSection(2, "Tag=VQSV1\nName=Set value 1\nBlockNo=1\nDefaultData=120\nCellData=2,1,vbWhite,vbBlack") +
            dataSection(3, "Tag=VQSV2\nName=Set value 2\nDefaultData=5\nCellData=3,1,vbWhite,vbBlack") +
            dataSection(4, "Tag=RUN\nCellType=Bit\nBitCaptionOn=Running\nDefaultData=1\nCellData=4,1,vbWhite,vbBlack"));
        kx.refreshSpread(false, nullptr);
        search.reload(Wordings(box.context));
    }

    QString hits() const
    {
        QStringList found;
        for (const CellPlace& place : search.hits())
            found << kx.getDataByRC(place.row, place.col)->Key();
        return found.join(u' ');
    }
    QString tagAt(const std::optional<CellPlace>& place) const
    {
        return place ? kx.getDataByRC(place->row, place->col)->Key() : QString();
    }

    ParameterSearch search{kx};
};

TEST_F(Search, FindsEveryTextInEveryLanguageAndWidth)
{
    const std::pair<const char*, const char*> rows[] = {{"SET  value", "VQSV1 VQSV2"},
                                                        {"設定値１", "VQSV1"},
                                                        {"ｖｑｓｖ2", "VQSV2"},
                                                        {"ﾌﾞﾛｯｸ", "VQSV1"},
                                                        {"heat", "VQSV1"},
                                                        {"timer", "TIMER"},
                                                        {"ﾀｲﾏ", "TIMER"},
                                                        {"分", "TIMER"},
                                                        {"minutes", "TIMER"},
                                                        {"１２０", "VQSV1"},
                                                        {"running", "RUN"},
                                                        {"運転", "RUN"},
                                                        {"1 heat", ""},
                                                        {"nothing", ""},
                                                        {" ", ""},
                                                        {"", ""}};
    for (const auto& [text, tags] : rows) {
        search.setText(text);
        EXPECT_EQ(hits(), tags) << text;
    }
}

TEST_F(Search, FollowsTheCellsAndTheirState)
{
    item("VQSV2").setVData("55");
    kx.refreshCell(item("VQSV2"));
    item("RUN").sendMark = SendMark::Failed;
    item("TIMER").setKnown(false);
    const std::tuple<SearchScope, const char*, const char*> rows[] = {
        {SearchScope::Changed, "", "VQSV2"}, {SearchScope::Changed, "timer", ""}, {SearchScope::Failed, "", "RUN"},
        {SearchScope::NotRead, "", "TIMER"}, {SearchScope::All, "55", "VQSV2"},   {SearchScope::All, "", ""}};
    for (const auto& [scope, text, tags] : rows) {
        search.setScope(scope);
        search.setText(text);
        EXPECT_EQ(hits(), tags) << text;
    }
}

TEST_F(Search, GoesAroundFromAnyCell)
{
    search.setText("value");
    const std::tuple<CellPlace, const char*, const char*, const char*, int> rows[] = {
        {{1, 1}, "VQSV1", "VQSV1", "VQSV2", 0},
        {{2, 1}, "VQSV1", "VQSV2", "VQSV2", 1},
        {{3, 1}, "VQSV2", "VQSV1", "VQSV1", 2},
        {{1, 3}, "VQSV1", "VQSV1", "VQSV2", 0}};
    for (const auto& [place, at, after, before, number] : rows) {
        EXPECT_EQ(tagAt(search.at(place)), at);
        EXPECT_EQ(tagAt(search.after(place)), after);
        EXPECT_EQ(tagAt(search.before(place)), before);
        EXPECT_EQ(search.numberOf(place), number);
    }
}

} // namespace
