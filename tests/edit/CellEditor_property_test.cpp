#include "EditorFixture.h"

// Needs the test framework before it.
#include <rapidcheck/gtest.h>

namespace {

class RandomEdits : public EditorFixture, public ::testing::WithParamInterface<const char*>
{
protected:
    // Texts of all kinds that a person types, most of them near the limits.
    static QString typed(const clsData& item)
    {
        const QString limit = *rc::gen::arbitrary<bool>() ? item.LimitL() : item.LimitH();
        const QString close = QString::number(limit.toDouble() + *rc::gen::inRange(-3, 4) * 0.1, 'f', 1);
        const QString anywhere = QString::number(*rc::gen::inRange(-20000, 20000) * 0.01, 'f', 2);
        const QString whole = QString::number(*rc::gen::inRange(-200, 1500));
        const QString odd = *rc::gen::element<QString>("", "-", "x1", "1e9", "-0", "&h10");
        return *rc::gen::element(limit, close, anywhere, whole, whole, odd);
    }

    // Visible items, those with interlocks more often than the others.
    clsData& someItem()
    {
        static const std::vector<QString> tied{"VQLIL", "VQLIH", "VQLIZL", "VQLIZS", "VQSVL",   "VQSVH",
                                               "VQSV1", "VQSV2", "VQP1",   "VQODB",  "PIDONOF", "SVDOT",
                                               "SWQCF", "PQRNO", "PQKAL1", "VQAL1",  "VQOL1",   "VQOH1"};
        clsData& any = *kx.items()[*rc::gen::inRange<size_t>(0, kx.items().size())];
        return any.Visible() && *rc::gen::inRange(0, 3) == 0 ? any : item(*rc::gen::elementOf(tied));
    }

    void editSomething()
    {
        clsData& one = someItem();
        if (one.MType() == ItemType::Combo) {
            editor.changeCombo(one.Col(), one.Row(), *rc::gen::inRange(-1, 5));
        } else if (one.MType() == ItemType::Bit) {
            editor.clickCell(one.Col(), one.Row());
        } else if (one.MType() != ItemType::Data) {
            editor.setData(one.Key(), QString::number(*rc::gen::inRange(0, 26)), true);
        } else {
            const QString text = typed(one);
            const LimitRange limits = one.limits();
            const QString before = one.Data();
            const qsizetype told = record.texts.size();
            if (editor.checkCell(one.Col(), one.Row(), true, text))
                RC_ASSERT(limits.allows(text));
            else
                RC_ASSERT(one.Data() == before && record.texts.size() - told <= 1);
        }
    }

    // Every cell shows its item, is marked when the item is, and holds a number that the controller can hold.
    void cellsAgree()
    {
        for (const auto& one : kx.items()) {
            if (!one->Visible())
                continue;
            const platform::Cell& its = grid.cell(one->Row(), one->Col());
            if (its.text != one->VData() && its.text != library.tranStr(one->VData()))
                RC_FAIL((one->Key() + " shows " + its.text + " for " + one->VData()).toStdString());
            RC_ASSERT(its.font.bold == (one->Edit == EditState::kChanged));
        }
    }
};

TEST_P(RandomEdits, KeepLimitsShowWhatIsStoredAndCanBeUndone)
{
    shipped(GetParam());
    shell.sends = false; // nothing goes out, so that every edit can be undone
    const Everything start = everything();
    EXPECT_TRUE(rc::check([this, &start] {
        while (editor.canUndo())
            editor.undo();
        editor.clear();
        std::vector<Everything> states{start};
        for (int left = *rc::gen::inRange(1, 13); left > 0; --left) {
            const Everything before = everything();
            editSomething();
            cellsAgree();
            if (everything() != before)
                states.push_back(everything());
        }
        for (size_t i = states.size() - 1; i > 0; --i) {
            editor.undo();
            RC_ASSERT(everything() == states[i - 1]);
        }
        RC_ASSERT_FALSE(editor.canUndo());
        for (size_t i = 1; i < states.size(); ++i) {
            editor.redo();
            RC_ASSERT(everything() == states[i]);
        }
        RC_ASSERT_FALSE(editor.canRedo());
    }));
    EXPECT_GT(eventLog.lines.size(), 40) << "something was edited";
}

INSTANTIATE_TEST_SUITE_P(Shipped, RandomEdits, ::testing::ValuesIn(kShippedModels),
                         [](const auto& row) { return std::string(row.param); });

} // namespace
