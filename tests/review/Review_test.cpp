#include "ReviewModel.h"

#include "ScreenFixture.h"

#include <QSignalSpy>

namespace {

// A and B are settings, CAL belongs to the instrument, CMD starts something. All were read; the user has changed them.
class ChangeReview : public ScreenFixture
{
protected:
    ChangeReview()
    {
        load("[Setting]\nDataMaxCount=4\nBlockMaxCount=1\nMaxRow=9\n[BlockInfo1]\nBlockNo=1\nName=Set\n" +
                 section(1, "A", "setting") + section(2, "B", "setting") + section(3, "CAL", "calibration") +
                 section(4, "CMD", "command"),
             "[Main]\nReadCmd1=Direct,8000,8\nWriteCmd1=Direct,8000,8\n");
        clsKXAdr& image = *kx.ColAdr().find("Main");
        image.setData({1, QByteArray::fromHex("0064000500070001")});
        image.markFilled();
        kx.refreshSpread(true, nullptr);
        for (const auto& [tag, value] : {std::pair("A", "90"), {"B", "6"}, {"CAL", "8"}, {"CMD", "0"}})
            change(tag, value);
        review.refresh();
    }

    static QByteArray section(int number, const QByteArray& tag, const QByteArray& kind)
    {
        const QByteArray n = QByteArray::number(number);
        return "[Datas" + n + "]\nTag=" + tag + "\nName=name of " + tag + "\nClass=" + kind +
               "\nBlockNo=1\nDataLen=2\nKXAddress=800" + QByteArray::number(2 * number - 2) +
               "\nCommRaedSection=Main\nCommWriteSection=Main\nDataInfo=1,-1000,1000,<=,<=,0,10\nCellData=" + n +
               ",1,vbWhite,vbBlack\n";
    }
    void change(const char* tag, const char* value)
    {
        item(tag).setData(value);
        item(tag).Edit = EditState::kChanged;
    }
    void report(std::initializer_list<std::pair<const char*, SendOutcome>> outcomes)
    {
        WriteReport write;
        for (const auto& [tag, outcome] : outcomes)
            write.parameters.append({tag, outcome, true, "why", "77", item(tag).Data(), "70"});
        review.noteWrite(write);
        model.reload();
    }
    // "A* CAL": the tags of the list, those with a star ticked.
    QString list() const
    {
        QStringList tags;
        for (const ReviewRow& row : review.rows())
            tags << row.change.tag + (row.ticked ? "*" : "");
        return tags.join(u' ');
    }
    QString cell(int row, int column) const { return model.index(row, column).data().toString(); }

    Review review{kx};
    ReviewModel model{review, [](const QString& text) { return text; }};
};

TEST_F(ChangeReview, SettingsAloneAreTickedByThemselves)
{
    EXPECT_EQ(list(), u"A* B* CAL CMD");
    EXPECT_EQ(review.changes(), 4);
    review.setTicked("CAL", true);
    review.setTicked("A", false);
    change("B", "20000"); // outside its limits
    review.refresh();
    EXPECT_EQ(list(), u"A B CAL* CMD");
    EXPECT_EQ(review.ticked(), QStringList{"CAL"});
    change("CAL", "7"); // what the controller holds
    review.refresh();
    EXPECT_EQ(list(), u"A B CMD");
    change("CAL", "9");
    review.refresh();
    EXPECT_EQ(list(), u"A B CAL CMD") << "another change is ticked anew";
}

TEST_F(ChangeReview, AWriteLeavesWhatBecameOfEach)
{
    report({{"A", SendOutcome::Conflict},
            {"B", SendOutcome::Failed},
            {"CAL", SendOutcome::NotAccepted},
            {"CMD", SendOutcome::Failed}});
    EXPECT_EQ(list(), u"A B* CAL CMD");
    EXPECT_EQ(review.failed(), (QStringList{"B", "CAL"})) << "a command is not sent again unasked";
    review.setTicked("CMD", true);
    review.setTicked("A", true); // the user has decided
    EXPECT_EQ(review.failed(), (QStringList{"B", "CAL", "CMD"}));
    EXPECT_EQ(review.ticked(), (QStringList{"A", "B", "CMD"}));
    WriteReport unchanged;
    unchanged.parameters.append({"CMD", SendOutcome::Accepted, false, {}, "1", "1", "1"});
    Review other{kx};
    other.noteWrite(unchanged);
    EXPECT_EQ(other.rows().back().state, ReviewState::Changed) << "no news";
    report({{"B", SendOutcome::Accepted}});
    EXPECT_EQ(list(), u"A* B CAL CMD*") << "seen until the next read";
    EXPECT_EQ(review.changes(), 3);
    change("B", "12");
    review.refresh();
    EXPECT_EQ(list(), u"A* B* CAL CMD*") << "a new change";
    review.forget();
    EXPECT_EQ(list(), u"A* B* CAL CMD");
}

TEST_F(ChangeReview, TheTableTellsItAll)
{
    item("B").cause = {ChangeCause::Kind::Followed, "A"};
    report({{"A", SendOutcome::Conflict}, {"CAL", SendOutcome::NotAccepted}});
    const QStringList a{"name of A", "Set",     "10.0", "9.0", "conflict: the controller held 7.7 before",
                        "",          "setting", "A"};
    for (int column = 0; column < ReviewModel::kColumns; ++column) {
        EXPECT_EQ(cell(0, column), a[column]);
        const bool isNumber = column == ReviewModel::kHeld || column == ReviewModel::kValue;
        EXPECT_EQ((model.index(0, column).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight) != 0, isNumber);
    }
    EXPECT_EQ(cell(1, ReviewModel::kCause), u"followed from name of A");
    EXPECT_EQ(cell(2, ReviewModel::kState), u"not accepted: the controller keeps 0.7");
    EXPECT_TRUE(cell(3, ReviewModel::kState).startsWith(u"tick it by hand: it starts"));
    EXPECT_EQ(model.copyText(1), u"x\tname of B\tSet\t0.5\t0.6\tchanged\tfollowed from name of A\tsetting\tB");
    const QSignalSpy ticked(&model, &ReviewModel::ticked);
    EXPECT_TRUE(model.setData(model.index(0, 0), Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(ticked.size(), 1);
    EXPECT_EQ(review.ticked(), (QStringList{"A", "B"}));
}

TEST_F(ChangeReview, FiltersAndSorts)
{
    report({{"A", SendOutcome::Conflict}, {"B", SendOutcome::Accepted}, {"CAL", SendOutcome::Failed}});
    ReviewFilter filter;
    filter.setSourceModel(&model);
    const auto shown = [&] {
        QStringList tags;
        for (int row = 0; row < filter.rowCount(); ++row)
            tags << filter.index(row, ReviewModel::kTag).data().toString();
        return tags.join(u' ');
    };
    filter.sort(ReviewModel::kValue);
    EXPECT_EQ(shown(), u"CMD B CAL A") << "by size: 0.0, 0.6, 0.8, 9.0";
    using Show = ReviewFilter::Show;
    for (const auto& [show, tags] :
         {std::pair(Show::Conflicts, "A"), {Show::Failed, "CAL"}, {Show::Accepted, "B"}, {Show::All, "CMD B CAL A"}}) {
        filter.setShow(show);
        EXPECT_EQ(shown(), QLatin1String(tags));
    }
    filter.setSearch(" of ca ");
    EXPECT_EQ(shown(), u"CAL");
    filter.setShow(Show::Conflicts);
    EXPECT_EQ(shown(), QString()) << "both hold";
}

} // namespace
