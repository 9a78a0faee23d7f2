#include "frmShowVersion.h"

#include "OptionsFixture.h"

#include <QLabel>
#include <QTest>

namespace {

TEST_F(OptionsFixture, VersionDialogShowsTitleAndVersionUntilItIsClosed)
{
    load();
    ASSERT_TRUE(box.put("C:\\Vorlant\\Lang\\JP.txt", "[Language]\nVersionInfo=About\nVer.=V\nVorlant=The Tool\n"
                                                     "[Caption]\nfrmShowVersion-lblTitle-0=not this\n"));
    QWidget owner;
    frmShowVersion dialog(library, ProgramVersion{1, 2, 5});
    dialog.showModeless(&owner, true);
    EXPECT_EQ(dialog.windowTitle(), u"About");
    EXPECT_EQ(dialog.findChild<QLabel*>("lblTitle")->text(), u"The Tool");
    EXPECT_EQ(dialog.findChild<QLabel*>("lblVersion")->text(), u"V 1.02.05");
    EXPECT_TRUE(dialog.findChild<QLabel*>("lblTitle")->isVisible());
    EXPECT_FALSE(owner.isEnabled());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(owner.isEnabled() && !dialog.isVisible());
    EXPECT_TRUE(box.content(kPlaces).contains("frmShowVersion"));
}

} // namespace
