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
    frmOption dialog(library, settings, [](QWidget*, const FontRecord&) {
        return std::optional(FontRecord{"Mono", 120, 0, -16, 0});
    });
    QStringList calls;
    QObject::connect(&dialog, &frmOption::designChanged, [&] { calls << "design"; });
    QObject::connect(&dialog, &frmOption::stored, [&] { calls << "stored"; });
    const QByteArray before = settingsFile();
    // What is pressed, and what it leads to.
    const std::pair<QString, QString> rows[] = {
        {"Check1_4 Command1_1", ""}, // Cancel
        {"Check1_4 Escape", ""},
        {"Check1_6 Command1_0", "stored"},        // off-line
        {"Check1_4 Command1_0", "design stored"}, // forced font
        {"Command2 Command1_0", "design stored"}, // another font
    };
    for (const auto& [presses, expected] : rows) {
        calls.clear();
        const bool wasForced = settings.m_bForceFont;
        dialog.showModeless(&owner, true);
        EXPECT_TRUE(dialog.isModal() && !owner.isEnabled());
        EXPECT_EQ(dialog.findChild<QCheckBox*>("Check1_4")->isChecked(), wasForced) << "filled anew";
        for (const QString& name : presses.split(' ')) {
            auto* button = dialog.findChild<QAbstractButton*>(name);
            button == nullptr ? QTest::keyClick(&dialog, Qt::Key_Escape) : button->click();
        }
        EXPECT_TRUE(owner.isEnabled() && !dialog.isVisible());
        EXPECT_EQ(calls.join(' '), expected);
        EXPECT_EQ(settingsFile() == before, calls.isEmpty());
    }
    EXPECT_EQ(dialog.findChild<QLabel*>("Label1")->text(), u"Mono:12pt");
    EXPECT_TRUE(box.content(kPlaces).contains("frmOption"));
    EXPECT_TRUE(settingsFile().contains("UseCommunicate=True")) << settingsFile().toStdString();
}

} // namespace
