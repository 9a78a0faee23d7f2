#include "frmMain.h"

#include "ProgramContext.h"
#include "RecordingMessages.h"
#include "ScriptedController.h"
#include "SoundController.h"
#include "vaSpread.h"

#include <QAction>
#include <QLabel>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <gtest/gtest.h>

#include <memory>

namespace {

const QByteArray kLastModel = "[Setting]\nLastModelNo=1\nLastModelString=KX41000000-10A\n";

// The window in a scratch program folder, COM1 on a scripted controller.
class MainWindow : public ::testing::Test
{
protected:
    QString programFolder() const { return dir.path() + QStringLiteral("/Vorlant"); }
    QString applicationData() const { return dir.path() + QStringLiteral("/AppData"); }

    void open(const QString& device, const QByteArray& settings = kLastModel)
    {
        ASSERT_TRUE(soundController::install(programFolder(), applicationData(), settings));
        platform::PathMap paths;
        paths.mount(u'C', dir.path());
        program = std::make_unique<ProgramContext>(paths, platform::Folders(paths, programFolder(), applicationData()),
                                                   QProcessEnvironment(), colors);
        program->ports().assign(1, device);
        window = std::make_unique<frmMain>(*program, std::make_unique<RecordingMessages>(asked));
        window->show();
    }

    void openWith(ScriptedController::Answer reply, const QByteArray& settings = kLastModel)
    {
        controller = std::make_unique<ScriptedController>(std::move(reply));
        open(controller->device(), settings);
    }

    QAction* recv() { return window->findChild<QAction*>(QStringLiteral("mnuKX_1")); }
    QString panel(const char* name) { return window->findChild<QLabel*>(QLatin1String(name))->text(); }
    QString cell(int row)
    {
        const auto* grid = window->findChild<platform::vaSpread*>(QStringLiteral("sprMain"));
        return grid->model()->index(row - 1, 0).data().toString();
    }
    QByteArray settingsFile() const
    {
        QFile file(applicationData() + QStringLiteral("/Vorlan/Vorlant.ini"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir dir;
    platform::SystemColors colors;
    std::unique_ptr<ScriptedController> controller;
    std::unique_ptr<ProgramContext> program;
    RecordingMessages::Record asked;
    std::unique_ptr<frmMain> window;
};

TEST_F(MainWindow, RecvFillsTheGrid)
{
    openWith([](const QByteArray& request) { return soundController::reply(request); });
    EXPECT_EQ(panel("panelState"), u"not read");
    recv()->trigger();
    EXPECT_EQ(cell(1), QString::fromLatin1(soundController::kModel));
    EXPECT_EQ(cell(2), u"25.8");
    EXPECT_EQ(cell(3), u"42");
    EXPECT_EQ(window->state(), MainState::UpToDate);
    EXPECT_TRUE(panel("panelState").startsWith(u"read at ")) << qPrintable(panel("panelState"));
    EXPECT_EQ(panel("panelLink"), QStringLiteral("COM1 %1 9600,N,8,1 RTU slave 1").arg(controller->device()));
    EXPECT_TRUE(window->isEnabled());
    EXPECT_TRUE(asked.texts.isEmpty());
}

TEST_F(MainWindow, LostRequestLeavesItsCellEmpty)
{
    openWith(soundController::damagedReply);
    recv()->trigger();
    EXPECT_EQ(cell(2), QString());
    EXPECT_EQ(cell(3), u"42");
    EXPECT_EQ(panel("panelState"), u"1 parameters not read (Main: Direct 8000)");
}

TEST_F(MainWindow, OtherModelNamesTheSettings)
{
    openWith([](const QByteArray& request) { return soundController::reply(request, "KX62000000-10A"); });
    recv()->trigger();
    ASSERT_EQ(asked.texts.size(), 2);
    EXPECT_EQ(asked.texts[0], u"Model number is different.");
    EXPECT_TRUE(asked.texts[1].contains(program->settingsFile()));
    window->close();
    EXPECT_TRUE(settingsFile().contains("LastModelString=KX41000000-10A")) << "the grid is still that model's";
}

TEST_F(MainWindow, MissingPortSaysSo)
{
    open(dir.path() + QStringLiteral("/no-adapter"));
    EXPECT_EQ(panel("panelState"), u"not connected");
    EXPECT_TRUE(panel("panelLink").startsWith(u"COM1 is closed: ")) << qPrintable(panel("panelLink"));
    recv()->trigger();
    EXPECT_EQ(asked.texts, QStringList{QStringLiteral("Reception error occurred.[-1]")});
}

TEST_F(MainWindow, RecvOpensAPortThatHasComeBack)
{
    open(dir.path() + QStringLiteral("/adapter"));
    controller =
        std::make_unique<ScriptedController>([](const QByteArray& request) { return soundController::reply(request); });
    ASSERT_TRUE(QFile::link(controller->device(), dir.path() + QStringLiteral("/adapter")));
    recv()->trigger();
    EXPECT_EQ(cell(3), u"42");
}

TEST_F(MainWindow, WithoutAModelTheHintSaysWhatToDo)
{
    open(QStringLiteral("/dev/null"), QByteArray());
    const auto* hint = window->findChild<QLabel*>(QStringLiteral("lblHint"));
    EXPECT_TRUE(hint->isVisible());
    EXPECT_TRUE(hint->text().contains(u"communication settings")) << qPrintable(hint->text());
    EXPECT_FALSE(recv()->isEnabled());
}

TEST_F(MainWindow, ClosingDuringAReadEndsIt)
{
    openWith([this](const QByteArray&) {
        QTimer::singleShot(0, window.get(), [this] { window->close(); });
        return QByteArray();
    });
    const QSignalSpy closed(window.get(), &frmMain::closed);
    recv()->trigger();
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(controller->requests(), 1);
    EXPECT_TRUE(asked.texts.isEmpty());
}

TEST_F(MainWindow, NoToQuitKeepsTheWindow)
{
    openWith([](const QByteArray& request) { return soundController::reply(request); },
             kLastModel + "ShowProgramEndConfForm=True\n");
    asked.answer = MessageResult::kNo;
    const QByteArray before = settingsFile();
    EXPECT_FALSE(window->close());
    EXPECT_EQ(asked.texts, QStringList{QStringLiteral("Quit?")});
    EXPECT_EQ(settingsFile(), before);
    window->closeWithoutQuestion();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(asked.texts.size(), 1);
}

TEST_F(MainWindow, ClosingKeepsTheLastState)
{
    openWith([](const QByteArray& request) { return soundController::reply(request); },
             kLastModel + "LastSlaveAdr=many\nLastModebusMode=1\n");
    window->close();
    const QByteArray saved = settingsFile();
    EXPECT_TRUE(saved.contains("LastSlaveAdr=1\n") || saved.contains("LastSlaveAdr=1\r\n")) << saved.toStdString();
    EXPECT_TRUE(saved.contains("LastModebusMode=1"));
    EXPECT_TRUE(saved.contains("LastModelString=KX41000000-10A"));
}

TEST_F(MainWindow, EveryControlHasANameForScreenReaders)
{
    openWith([](const QByteArray& request) { return soundController::reply(request); });
    for (const char* name : {"sprMain", "lblHint", "stbMain", "panelModel", "panelLink", "panelState"}) {
        const auto* widget = window->findChild<QWidget*>(QLatin1String(name));
        ASSERT_NE(widget, nullptr) << name;
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << name;
    }
}

} // namespace
