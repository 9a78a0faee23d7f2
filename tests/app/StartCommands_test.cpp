#include "Journal.h"
#include "StartCommands.h"

#include "FakeClock.h"
#include "ProgramFixture.h"
#include "WhenShown.h"
#include "frmComSet.h"
#include "vaSpread.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

namespace {

TEST(SimulatorStart, SaysWhyThereIsNone)
{
    const std::tuple<const char*, QStringList, const char*> rows[] = {
        {"/no/vorlant-sim", {}, "o such file"},
        {VORLANT_SIM, {"--mode", "x"}, "--mode is rtu or ascii"},
        {"/bin/cat", {}, ""}};
    for (const auto& [program, arguments, reason] : rows) {
        FakeClock clock;
        SimulatorProcess simulator(program, clock);
        QSignalSpy failed(&simulator, &SimulatorProcess::failed);
        simulator.start(arguments);
        if (*reason == '\0')
            clock.advance(SimulatorProcess::kAnswerMs);
        ASSERT_TRUE(failed.count() == 1 || failed.wait()) << program;
        const QString said = failed.constFirst().constFirst().toString();
        EXPECT_TRUE(*reason == '\0' ? said.isEmpty() : said.contains(reason)) << qPrintable(said);
    }
}

class Trial : public ProgramFixture
{
protected:
    // The simulator of this test has the small model, too.
    void begin(const QByteArray& settings = {})
    {
        for (const auto& [name, value] : {std::pair("VORLANT_PROGRAM_DIR", folder), std::pair("XDG_CONFIG_HOME", data),
                                          std::pair("XDG_STATE_HOME", data)})
            qputenv(name, value.toLocal8Bit());
        openSound(settings);
        simulator().process().setProgram(VORLANT_SIM);
    }
    bool tryIt(const char* way)
    {
        QSignalSpy read(&simulator(), &SimulatorSession::modelChosen);
        find<QAction>(way) != nullptr ? trigger(way) : find<QPushButton>(way)->click();
        return read.wait() && QTest::qWaitFor([this] { return window->state() == MainState::UpToDate; });
    }
    SimulatorSession& simulator() { return window->startCommands().simulator(); }
    QString link() const { return find<QLabel>("panelLink")->text(); }
};

TEST_F(Trial, LeavesNothingInTheSettings)
{
    begin();
    EXPECT_EQ(window->focusWidget(), find<QPushButton>("cmdStart_0"));
    ASSERT_TRUE(tryIt("cmdStart_2"));
    EXPECT_TRUE(link().startsWith("simulator, no real controller: /dev/pts/")) << qPrintable(link());
    EXPECT_TRUE(find<platform::vaSpread>("sprMain")->isVisible() && controller->requests() == 0);
    const WhenShown<frmComSet> settings([this](frmComSet& dialog) {
        EXPECT_TRUE(dialog.findChild<QComboBox*>("Combo1")->currentText().contains(controller->device()));
        dialog.reject();
    });
    window->showCommSetting();
    window->getDataFromKX();
    EXPECT_EQ(window->state(), MainState::UpToDate) << "of the simulator, which is still there";
    window->setDataToKXAll();
    const Journal journal(program->context());
    ASSERT_EQ(journal.read().entries.size(), 1);
    EXPECT_TRUE(journal.read().entries.front().device.startsWith("simulator /dev/pts/"));
    EXPECT_EQ(controller->requests(), 0);
    window->close();
    EXPECT_FALSE(settingsFile().contains("/dev/pts")) << settingsFile().constData();
    EXPECT_TRUE(settingsFile().contains("LastModelString=\n")) << settingsFile().constData();
}

TEST_F(Trial, TheStartPageOpensAFileOfAnyModel)
{
    begin();
    const QString file = dir.filePath("set.k41");
    ASSERT_TRUE(soundController::writeFile(file, "[Info]\r\nMODEL=KX41011100-10A\r\n[Data]\r\nVQSV1=50\r\n"));
    window->setFileChooser([&](const FileQuestion&) { return file; });
    find<QPushButton>("cmdStart_1")->click();
    EXPECT_TRUE(window->windowTitle().contains("KX41011100-10A - set.k41")) << qPrintable(window->windowTitle());
}

// What is written then would go to another controller.
TEST_F(Trial, ASimulatorThatEndsIsNoControllerAnyMore)
{
    begin(kLastModel);
    ASSERT_TRUE(tryIt("mnuHelp_3"));
    QSignalSpy ended(&simulator(), &SimulatorSession::ended);
    simulator().process().findChild<QProcess*>()->terminate();
    ASSERT_TRUE(ended.wait());
    EXPECT_EQ(window->state(), MainState::NoConnection);
    EXPECT_TRUE(link().startsWith("COM1 " + controller->device())) << qPrintable(link());
    EXPECT_TRUE(asked.texts.constLast().startsWith("The simulator has ended.")) << qPrintable(asked.texts.join('|'));
}

TEST_F(Trial, AsksAboutChangesAndEndsWithAnotherController)
{
    begin(kLastModel);
    window->getDataFromKX();
    Q_EMIT find<platform::vaSpread>("sprMain")->editChanged(1, 2, "7.0");
    asked.answer = MessageResult::kNo;
    QSignalSpy ready(&simulator().process(), &SimulatorProcess::ready);
    trigger("mnuHelp_3");
    ASSERT_TRUE(ready.wait() && QTest::qWaitFor([this] { return asked.texts.size() == 1; }));
    EXPECT_EQ(asked.texts.constLast(), u"1 change was not written. Discard it?");
    EXPECT_FALSE(window->mainLink().hasStandIn() || simulator().process().isReady());
    asked.answer = MessageResult::kYes;
    ASSERT_TRUE(tryIt("mnuHelp_3"));
    const WhenShown<frmComSet> settings(
        [](frmComSet& dialog) { dialog.findChild<QPushButton*>("Command1_0")->click(); });
    window->showCommSetting();
    EXPECT_TRUE(link().startsWith("COM1 " + controller->device())) << qPrintable(link());
    EXPECT_FALSE(simulator().process().isReady());
}

} // namespace
