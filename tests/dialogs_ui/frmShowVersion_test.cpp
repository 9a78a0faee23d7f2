#include "frmShowVersion.h"

#include "../dialogs/OptionsFixture.h"

#include <QLabel>
#include <QTest>

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
    EXPECT_FALSE(owner.isEnabled());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(owner.isEnabled() && !dialog.isVisible());
}

} // namespace
