#include "SupportCommands.h"

#include "Diagnostics.h"
#include "ProgramFixture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QStatusBar>

namespace {

class Support : public ProgramFixture
{};

TEST_F(Support, ResetKeepsACopyAndTheModels)
{
    openSound(kOffLine + "ShowSendConfForm=True\n");
    const QByteArray before = settingsFile();
    asked.answer = MessageResult::kNo;
    trigger("mnuOption_1");
    EXPECT_EQ(settingsFile(), before);
    EXPECT_EQ(asked.messages.constLast().style & 0x300, MessageStyle::kSecondIsDefault);
    asked.answer = MessageResult::kYes;
    trigger("mnuOption_1");
    const QString copy = asked.texts.constLast().section("The old ones are in ", 1).chopped(1);
    QFile kept(copy);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly)) << qPrintable(asked.texts.constLast());
    EXPECT_EQ(kept.readAll(), before);
    EXPECT_EQ(QFileInfo(copy).absolutePath(), data + "/Vorlan");
    EXPECT_TRUE(settingsFile().contains("KXScreenFile1=M.ini"));
    start(controller->device(), std::make_unique<RecordingMessages>(asked));
    EXPECT_FALSE(program->settings().m_bViewSendConf || program->settings().m_bComm);
}

TEST_F(Support, DiagnosticsSayWhatIsWrongAndNotWhoseItIs)
{
    openSound(kOffLine + "[Recent]\nFile1=Z:\\secret.k41\n[Ports]\nCOM7=" + dir.path().toLocal8Bit() + "/adapter\n");
    for (const char* error : {"first", "last one"})
        program->errorLog().LogWrite(QString("%1/x %2").arg(dir.path(), error));
    const QString text = diagnosticsText(*program, "xcb", dir.path());
    for (const char* line :
         {"Vorlant 0.", ", xcb\n", "\nUseCommunicate=True\n", "\nCOM7=~/adapter\n", "~/x first\n", "~/x last one\n"})
        EXPECT_TRUE(text.contains(line)) << line << qPrintable(text);
    EXPECT_FALSE(text.contains("secret") || text.contains(dir.path())) << qPrintable(text);
    trigger("mnuHelp_2");
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith("Vorlant 0."));
    EXPECT_EQ(find<QStatusBar>("stbMain")->currentMessage(), u"The diagnostics are on the clipboard.");
}

} // namespace
