#include "EditorFixture.h"

// Needs the test framework before it.
#include <rapidcheck/gtest.h>

namespace {

constexpr const char* kModels[] = {"KX410", "KX413", "KX620", "KX623", "KX640", "KX643", "KX910"};
constexpr int kRounds = 40;  // histories of a model
constexpr int kEntries = 12; // of a history

class RandomEdits : public EditorFixture, public ::testing::WithParamInterface<const char*>
{
protected:
    // Texts of all kinds that a person types, most of them near the limits.
    static QString typed(const clsData& item)
    {
        const QString limit = *rc::gen::arbitrary<bool>() ? item.LimitL() : item.LimitH();
        switch (*rc::gen::inRange(0, 6)) {
        case 0:
            return limit;
        case 1:
            return QString::number(limit.toDouble() + *rc::gen::inRange(-3, 4) * 0.1, 'f', 1);
        case 2:
            return QString::number(*rc::gen::inRange(-20000, 20000) * 0.01, 'f', 2);
        case 3:
            return *rc::gen::element(QStringLiteral(""), QStringLiteral("-"), QStringLiteral("x1"),
                                     QStringLiteral("1e9"), QStringLiteral("-0"), QStringLiteral("&h10"));
        default:
            return QString::number(*rc::gen::inRange(-200, 1500));
        }
    }

    // Visible items, those with interlocks more often than the others.
    clsData& someItem()
    {
        static const QStringList tied =
            QStringLiteral("VQLIL VQLIH VQLIZL VQLIZS VQSVL VQSVH VQSV1 VQSV2 VQP1 VQODB PIDONOF SVDOT SWQCF PQRNO "
                           "PQKAL1 VQAL1 VQOL1 VQOH1")
                .split(u' ');
        if (*rc::gen::inRange(0, 3) > 0)
            return item(tied[*rc::gen::inRange<qsizetype>(0, tied.size())]);
        for (;;) {
            clsData& one = *kx.items()[*rc::gen::inRange<size_t>(0, kx.items().size())];
            if (one.Visible())
                return one;
        }
    }

    void editSomething()
    {
        clsData& one = someItem();
        switch (one.MType()) {
        case ItemType::Data:
            typeInto(one, typed(one));
            break;
        case ItemType::Combo:
            editor.changeCombo(one.Col(), one.Row(), *rc::gen::inRange(-1, 5));
            break;
        case ItemType::Bit:
            editor.clickCell(one.Col(), one.Row());
            break;
        case ItemType::Multi:
        case ItemType::Input:
            editor.setData(one.Key(), QString::number(*rc::gen::inRange(0, 26)), true);
            break;
        case ItemType::String:
            editor.openSelect(one.Col(), one.Row());
            break;
        }
    }

    void typeInto(clsData& one, const QString& text)
    {
        const LimitRange limits = one.limits();
        const QString before = one.Data();
        const qsizetype told = record.texts.size();
        const bool taken = editor.checkCell(one.Col(), one.Row(), true, text);
        if (taken)
            RC_ASSERT(limits.allows(text));
        else
            RC_ASSERT(one.Data() == before && record.texts.size() - told <= 1);
    }

    // Every cell shows its item, is marked when the item is, and holds a number that the controller can hold.
    void cellsAgree()
    {
        for (const auto& one : kx.items()) {
            if (!one->Visible())
                continue;
            const platform::Cell& its = grid.cell(one->Row(), one->Col());
            if (its.text != one->VData() && its.text != library.tranStr(one->VData()))
                RC_FAIL(one->Key().toStdString() + " shows " + its.text.toStdString() + " for " +
                        one->VData().toStdString());
            RC_ASSERT(its.font.bold == (one->Edit == EditState::kChanged));
        }
    }
};

TEST_P(RandomEdits, KeepLimitsShowWhatIsStoredAndCanBeUndone)
{
    shipped(QLatin1String(GetParam()));
    shell.sends = false; // nothing goes out, so that every edit can be undone
    const Everything start = everything();
    const bool passed = rc::check([this, &start] {
        while (editor.canUndo())
            editor.undo();
        RC_ASSERT(everything() == start);
        editor.clear();
        std::vector<Everything> states{start};
        const int entries = *rc::gen::inRange(1, kEntries + 1);
        for (int i = 0; i < entries; ++i) {
            const Everything before = everything();
            editSomething();
            cellsAgree();
            if (!(everything() == before))
                states.push_back(everything());
        }
        for (size_t i = states.size() - 1; i > 0; --i) {
            editor.undo();
            RC_ASSERT(everything() == states[i - 1]);
        }
        RC_ASSERT_FALSE(editor.canUndo());
        for (size_t i = 1; i < states.size(); ++i)
            editor.redo();
        RC_ASSERT(everything() == states.back());
    });
    EXPECT_TRUE(passed);
    EXPECT_GT(eventLog.LogSwitch() ? logged("Event.log").size() : 0, kRounds) << "something was edited";
}

INSTANTIATE_TEST_SUITE_P(Shipped, RandomEdits, ::testing::ValuesIn(kModels),
                         [](const auto& row) { return std::string(row.param); });

} // namespace
