#include "frmOption.h"

#include "OptionsFixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace {

TEST_F(OptionsFixture, OptionDialogStoresWhatIsChosenOrNothing)
{
    load();
    QWidget owner;
    owner.show();
    std::optional<FontRecord> chosen;
    frmOption dialog(library, settings, [&](QWidget*, const FontRecord&) { return chosen; });
    QStringList calls;
    QObject::connect(&dialog, &frmOption::designChanged, [&] { calls << "design"; });
    QObject::connect(&dialog, &frmOption::stored, [&] { calls << "stored"; });
    const auto press = [&](const QString& name) { dialog.findChild<QAbstractButton*>(name)->click(); };
    const auto pressBoth = [&](const char* first, const char* last) {
        return [&press, first, last] {
            press(first);
            press(last);
        };
    };
    const auto chooseFont = [&] {
        chosen = FontRecord{"Mono", 120, 0, -16, 0};
        press("Command2");
        EXPECT_EQ(dialog.findChild<QLabel*>("Label1")->text(), u"Mono:12pt");
        press("Command1_0");
    };
    const auto escape = [&] {
        press("Check1_4");
        QTest::keyClick(&dialog, Qt::Key_Escape);
    };
    const QByteArray before = settingsFile();
    const std::pair<std::function<void()>, QString> rows[] = {
        {pressBoth("Check1_4", "Command1_1"), ""}, // Cancel
        {escape, ""},
        {pressBoth("Check1_6", "Command1_0"), "stored"},        // off-line
        {pressBoth("Check1_4", "Command1_0"), "design stored"}, // forced font
        {chooseFont, "design stored"},
    };
    for (const auto& [act, expected] : rows) {
        calls.clear();
        const bool wasForced = settings.m_bForceFont;
        dialog.showModeless(&owner, true);
        EXPECT_TRUE(dialog.isModal() && !owner.isEnabled());
        EXPECT_EQ(dialog.findChild<QCheckBox*>("Check1_4")->isChecked(), wasForced) << "filled anew";
        act();
        EXPECT_TRUE(owner.isEnabled() && !dialog.isVisible());
        EXPECT_EQ(calls.join(' '), expected);
        EXPECT_EQ(settingsFile() == before, calls.isEmpty());
    }
    EXPECT_TRUE(box.content(kPlaces).contains("frmOption"));
    EXPECT_TRUE(settingsFile().contains("UseCommunicate=True")) << settingsFile().toStdString();
}

} // namespace
