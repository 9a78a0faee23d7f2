#include "frmShowVersion.h"

#include "../dialogs/OptionsFixture.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <functional>

namespace {

class VersionDialog : public OptionsFixture
{
protected:
    QString text(const char* name) { return dialog.findChild<QLabel*>(QLatin1String(name))->text(); }

    QWidget owner;
    frmShowVersion dialog{library, ProgramVersion{1, 2, 5}};
};

TEST_F(VersionDialog, ShowsTitleAndVersion)
{
    load();
    ASSERT_TRUE(soundController::writeFile(box.path(QStringLiteral("C:\\Vorlant\\Lang\\JP.txt")),
                                           "[Language]\nVersionInfo=About\nVer.=V\nVorlant=The Tool\n"
                                           "[Caption]\nfrmShowVersion-lblTitle-0=not this\n"));
    dialog.showModeless(&owner, true);
    EXPECT_EQ(dialog.windowTitle(), u"About");
    EXPECT_EQ(text("lblTitle"), u"The Tool");
    EXPECT_EQ(text("lblVersion"), u"V 1.02.05");
}

struct Closing
{
    const char* name;
    bool modal;
    std::function<void(frmShowVersion& dialog)> close;
};

TEST_F(VersionDialog, DisablesItsOwnerWhileItIsOpen)
{
    load();
    const auto exit = [](frmShowVersion& d) { d.findChild<QPushButton*>(QStringLiteral("cmdExit"))->click(); };
    const auto escape = [](frmShowVersion& d) { QTest::keyClick(&d, Qt::Key_Escape); };
    const Closing rows[] = {{"button", true, exit},
                            {"Escape", true, escape},
                            {"closed", true, [](frmShowVersion& d) { d.close(); }},
                            {"modeless", false, exit}};
    for (const Closing& row : rows) {
        dialog.showModeless(&owner, row.modal);
        EXPECT_EQ(owner.isEnabled(), !row.modal) << row.name;
        EXPECT_EQ(dialog.isModal(), row.modal) << row.name;
        row.close(dialog);
        EXPECT_FALSE(dialog.isVisible()) << row.name;
        EXPECT_TRUE(owner.isEnabled()) << row.name;
    }
}

TEST_F(VersionDialog, ComesBackWhereItWas)
{
    load();
    dialog.showModeless(&owner, true);
    dialog.move(60, 80);
    dialog.close();
    dialog.move(200, 200);
    dialog.showModeless(&owner, true);
    EXPECT_EQ(dialog.pos(), QPoint(60, 80));
}

} // namespace
