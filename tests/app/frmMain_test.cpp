#include "frmMain.h"

#include "ProgramContext.h"
#include "RecordingMessages.h"
#include "ScriptedController.h"
#include "SoundController.h"
#include "WhenShown.h"
#include "frmComSet.h"
#include "frmOption.h"
#include "vaSpread.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyledItemDelegate>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <gtest/gtest.h>

#include <functional>
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

    // The same window with the program's own message boxes.
    void askForReal()
    {
        window.reset();
        window = std::make_unique<frmMain>(*program);
        window->show();
    }

    void openWith(ScriptedController::Answer reply, const QByteArray& settings = kLastModel)
    {
        controller = std::make_unique<ScriptedController>(std::move(reply));
        open(controller->device(), settings);
    }

    void openSound(const QByteArray& settings = kLastModel)
    {
        openWith([](const QByteArray& request) { return soundController::reply(request); }, settings);
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
    openSound();
    EXPECT_EQ(panel("panelState"), u"not connected");
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

TEST_F(MainWindow, OtherModelOpensTheSettings)
{
    openWith([](const QByteArray& request) { return soundController::reply(request, "KX62000000-10A"); });
    const WhenShown<frmComSet> settings([](frmComSet& dialog) { dialog.reject(); });
    recv()->trigger();
    EXPECT_EQ(settings.count(), 1);
    EXPECT_EQ(asked.texts, QStringList{QStringLiteral("Model number is different.")});
    window->close();
    EXPECT_TRUE(settingsFile().contains("LastModelString=KX41000000-10A")) << "the grid is still that model's";
}

// Somebody plugs the cable into a controller of the same code with other options while the settings are being applied.
TEST_F(MainWindow, SettingsComeBackUntilTheModelFits)
{
    int asks = 0;
    openWith([&](const QByteArray& request) {
        const bool asksModel = request.mid(3, 4) == QByteArray::fromHex("0000FBC0");
        const bool isFirst = asksModel && ++asks == 1;
        return soundController::reply(request, isFirst ? "KX41000000-10A" : "KX41011100-10A");
    });
    const WhenShown<frmComSet> settings(
        [](frmComSet& dialog) { dialog.findChild<QPushButton*>(QStringLiteral("Command1_0"))->click(); });
    window->showCommSetting();
    EXPECT_EQ(settings.count(), 2);
    EXPECT_EQ(asked.texts, QStringList{QStringLiteral("Model number is different.")});
    EXPECT_EQ(panel("panelModel"), u"KX41011100-10A");
    EXPECT_EQ(cell(3), u"42");
    EXPECT_EQ(window->state(), MainState::UpToDate);
}

TEST_F(MainWindow, SettingsOpenAtTheStartUnlessOffLineWithAModel)
{
    const std::pair<QByteArray, int> rows[] = {
        {QByteArray(), 1}, {kLastModel, 1}, {kLastModel + "UseCommunicate=True\n", 0}};
    for (const auto& [settings, opened] : rows) {
        SCOPED_TRACE(settings.toStdString());
        window.reset();
        openSound(settings);
        const WhenShown<frmComSet> shown([](frmComSet& dialog) { dialog.reject(); });
        window->start();
        QTest::qWait(0);
        EXPECT_EQ(shown.count(), opened);
    }
}

TEST_F(MainWindow, DetectedModelIsReadAtOnce)
{
    openSound(QByteArray());
    const WhenShown<frmComSet> settings([](frmComSet& dialog) {
        dialog.findChild<QPushButton*>(QStringLiteral("Command2"))->click();
        EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("Text2"))->text(),
                  QString::fromLatin1(soundController::kModel));
        dialog.findChild<QPushButton*>(QStringLiteral("Command1_0"))->click();
    });
    window->showCommSetting();
    EXPECT_EQ(cell(2), u"25.8");
    EXPECT_EQ(panel("panelModel"), QString::fromLatin1(soundController::kModel));
    EXPECT_EQ(window->state(), MainState::UpToDate);
    EXPECT_TRUE(asked.texts.isEmpty()) << qPrintable(asked.texts.join(u'|'));
    window->close();
    EXPECT_TRUE(settingsFile().contains("LastModelString=KX41000000-10A"));
}

TEST_F(MainWindow, ClosingTakesAnOpenDialogAlong)
{
    openSound();
    const QSignalSpy closed(window.get(), &frmMain::closed);
    const WhenShown<frmComSet> settings([this](frmComSet&) { window->closeWithoutQuestion(); });
    window->showCommSetting();
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(window->isVisible());
}

// Menu, choice, OK: the open window changes at once, and the communication settings follow.
TEST_F(MainWindow, LanguageAndFontAreChangedByTheOptions)
{
    QDir().mkpath(programFolder() + QStringLiteral("/Lang"));
    const QString lang = programFolder() + QStringLiteral("/Lang/");
    ASSERT_TRUE(soundController::writeFile(lang + QStringLiteral("EN.txt"), "[Info]\nName=English\n"));
    ASSERT_TRUE(soundController::writeFile(lang + QStringLiteral("JP.txt"),
                                           "[Info]\nName=Japanese\n[Caption]\nfrmMain-mnuKX-1=\x8e\xf3\x90\x4d\n"));
    openSound(kLastModel + "LanguageFile=EN.txt\nForceFontSize=17\n");
    const WhenShown<frmComSet> settings([](frmComSet& dialog) { dialog.reject(); });
    const auto choose = [&](int language, bool forceFont) {
        window->findChild<QAction*>(QStringLiteral("mnuOption_0"))->trigger();
        auto* options = window->findChild<frmOption*>();
        ASSERT_NE(options, nullptr);
        EXPECT_FALSE(window->isEnabled());
        options->findChild<QComboBox*>(QStringLiteral("Combo1"))->setCurrentIndex(language);
        options->findChild<QCheckBox*>(QStringLiteral("Check1_4"))->setChecked(forceFont);
        const int before = settings.count();
        options->findChild<QPushButton*>(QStringLiteral("Command1_0"))->click();
        EXPECT_TRUE(window->isEnabled());
        EXPECT_TRUE(QTest::qWaitFor([&] { return settings.count() > before; }));
    };
    choose(1, true);
    EXPECT_EQ(recv()->text(), u"受信");
    EXPECT_EQ(window->font().pointSize(), 17);
    EXPECT_TRUE(settingsFile().contains("LanguageFile=JP.txt"));
    choose(0, false);
    EXPECT_EQ(recv()->text(), u"Recv");
    EXPECT_NE(window->font().pointSize(), 17);
}

TEST_F(MainWindow, SetsAreSavedAndOpenedOverWhatWasRead)
{
    openSound();
    QString chosen;
    QStringList questions;
    window->setFileChooser([&](const FileQuestion& question) {
        questions << (question.save ? QStringLiteral("save") : QStringLiteral("open"));
        return chosen;
    });
    window->openDataFile();
    EXPECT_EQ(asked.texts, QStringList{QStringLiteral("Please acquire the up-to-date data from the equipment.")});
    EXPECT_TRUE(questions.isEmpty()) << "no dialog before a read";
    recv()->trigger();
    asked.texts.clear();
    chosen = dir.path() + QStringLiteral("/my set.k41");
    window->saveDataFile();
    QFile file(chosen);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray saved = file.readAll();
    EXPECT_TRUE(saved.contains("VQSV1=258\r\n")) << saved.toStdString();
    file.close();
    EXPECT_EQ(window->windowTitle(), u"Vorlant - [KX41000000-10A - my set.k41[*]]");
    EXPECT_FALSE(window->isWindowModified());
    Q_EMIT window->findChild<platform::vaSpread*>(QStringLiteral("sprMain"))->editChanged(1, 2, QStringLiteral("7.0"));
    EXPECT_TRUE(window->isWindowModified());
    window->openDataFile();
    EXPECT_TRUE(asked.texts.isEmpty()) << qPrintable(asked.texts.join(u'|'));
    ASSERT_TRUE(soundController::writeFile(chosen, QByteArray(saved).replace("VQSV1=258", "VQSV1=50")));
    window->openDataFile();
    EXPECT_EQ(cell(2), u"5.0");
    EXPECT_FALSE(window->isWindowModified());
    ASSERT_TRUE(soundController::writeFile(chosen, QByteArray(saved).replace("MODEL=KX41", "MODEL=KX62")));
    window->openDataFile();
    EXPECT_EQ(asked.texts, QStringList{QStringLiteral("Model number is different.")});
    EXPECT_EQ(cell(2), u"5.0");
    asked.texts.clear();
    chosen = dir.path() + QStringLiteral("/no/such/folder.k41");
    window->saveDataFile();
    ASSERT_EQ(asked.texts.size(), 1);
    EXPECT_TRUE(asked.texts.first().startsWith(u"The file was not saved: ")) << qPrintable(asked.texts.first());
    for (const char16_t* name : {u"/a:b.k41", u"/a\\b.k41"}) {
        asked.texts.clear();
        chosen = dir.path() + QString::fromUtf16(name);
        window->saveDataFile();
        ASSERT_EQ(asked.texts.size(), 1);
        EXPECT_TRUE(asked.texts.first().startsWith(u"The name of a parameter file")) << qPrintable(asked.texts.first());
        EXPECT_FALSE(QFile::exists(chosen));
    }
    chosen.clear();
    window->saveDataFile();
    EXPECT_EQ(asked.texts.size(), 1) << "cancelled: nothing happens";
    recv()->trigger();
    EXPECT_EQ(window->windowTitle(), u"Vorlant - [KX41000000-10A[*]]")
        << "the values are the controller's, not a file's";
}

// Off-line a read fills the grid with defaults: not without asking when that ends a file.
TEST_F(MainWindow, OffLineAReadAsksBeforeItReplacesAFile)
{
    openSound(kLastModel + "UseCommunicate=True\n");
    auto* grid = window->findChild<platform::vaSpread*>(QStringLiteral("sprMain"));
    EXPECT_EQ(cell(2), u"0.7") << "the default, scaled";
    EXPECT_EQ(panel("panelState"), u"default values");
    EXPECT_EQ(window->state(), MainState::UpToDate);
    window->setFileChooser([this](const FileQuestion&) { return dir.path() + QStringLiteral("/set.k41"); });
    Q_EMIT grid->editChanged(1, 2, QStringLiteral("5.0"));
    window->saveDataFile();
    const QString question = QStringLiteral(
        "The default values take the place of the values of set.k41. Changes that are not saved are lost. Go on?");
    for (const int answer : {MessageResult::kNo, MessageResult::kYes}) {
        asked.texts.clear();
        asked.answer = answer;
        recv()->trigger();
        EXPECT_EQ(asked.texts, QStringList{question});
        EXPECT_EQ(cell(2), answer == MessageResult::kYes ? u"0.7" : u"5.0");
    }
    recv()->trigger();
    EXPECT_EQ(asked.texts.size(), 1) << "there is no file any more";
    program->settings().m_bComm = false;
    window->doCommCheck();
    EXPECT_EQ(window->state(), MainState::NoConnection) << "defaults are not the controller's values";
}

// A model string may hold anything: it is shown, and goes on as it is.
TEST_F(MainWindow, HostileModelStringIsShownAndKept)
{
    const QByteArray model = "KX4100\x1b[\x7f<b>AB";
    open(QString(), "[Setting]\nLastModelNo=1\nUseCommunicate=True\nLastModelString=" + model + '\n');
    const QString shown = QStringLiteral("KX4100\\x1b[\\x7f<b>AB");
    const auto* panel = window->findChild<QLabel*>(QStringLiteral("panelModel"));
    const WhenShown<frmComSet> settings([&](frmComSet& dialog) {
        EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("Text2"))->text(), shown);
        dialog.findChild<QPushButton*>(QStringLiteral("Command1_0"))->click();
        EXPECT_FALSE(dialog.isVisible()) << qPrintable(asked.texts.join(u'|'));
        dialog.close();
    });
    window->showCommSetting();
    EXPECT_EQ(panel->text(), shown);
    EXPECT_EQ(panel->textFormat(), Qt::PlainText);
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Vorlant - [%1[*]]").arg(shown));
    window->close();
    EXPECT_TRUE(settingsFile().contains("LastModelString=" + model)) << settingsFile().toStdString();
}

TEST_F(MainWindow, FileDialogShowsWhatANameHides)
{
    openSound(kLastModel + "UseCommunicate=True\n");
    const WhenShown<QFileDialog> asking([](QFileDialog& dialog) {
        const auto* view = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
        const auto* delegate = view == nullptr ? nullptr : qobject_cast<QStyledItemDelegate*>(view->itemDelegate());
        EXPECT_TRUE(delegate != nullptr &&
                    delegate->displayText(QStringLiteral("a\u202E14k.exe"), QLocale()) == u"a<U+202E>14k.exe");
        dialog.reject();
    });
    window->saveDataFile();
    EXPECT_EQ(asking.count(), 1);
}

TEST_F(MainWindow, RecentFilesAreOfferedAndForgottenWhenTheyAreGone)
{
    openSound(kLastModel + "UseCommunicate=True\n");
    QString chosen;
    window->setFileChooser([&](const FileQuestion&) { return chosen; });
    for (const char* name : {"a&b.k41", "c.k41", "a&b.k41"}) {
        chosen = dir.path() + u'/' + QLatin1String(name);
        window->saveDataFile();
    }
    const auto offered = [this] {
        QStringList captions;
        auto* menu = window->findChild<QMenu*>(QStringLiteral("RecentMenu"));
        Q_EMIT menu->aboutToShow();
        const auto items = menu->actions();
        for (const QAction* item : items) {
            if (!item->isSeparator())
                captions << item->text().section(u'(', 0, 0).trimmed();
        }
        return captions;
    };
    EXPECT_EQ(offered(), (QStringList{"&1 a&&b.k41", "&2 c.k41", "Clear the list"}));
    window.reset();
    program.reset();
    open(controller->device(), settingsFile());
    EXPECT_EQ(offered(), (QStringList{"&1 a&&b.k41", "&2 c.k41", "Clear the list"})) << "after a restart";
    ASSERT_TRUE(QFile::remove(dir.path() + QStringLiteral("/a&b.k41")));
    window->findChild<QMenu*>(QStringLiteral("RecentMenu"))->actions().constFirst()->trigger();
    QCoreApplication::processEvents();
    ASSERT_EQ(asked.texts.size(), 1);
    EXPECT_TRUE(asked.texts.constFirst().endsWith(u"is no file.")) << qPrintable(asked.texts.constFirst());
    EXPECT_EQ(offered(), (QStringList{"&1 c.k41", "Clear the list"}));
    window->findChild<QAction*>(QStringLiteral("mnuRecent_0"))->trigger();
    EXPECT_EQ(offered(), QStringList{"Clear the list"});
}

// The toolbar asks before it sends, the menu only tells. The status bar tells a write from a read.
TEST_F(MainWindow, SendOfTheToolbarAsks)
{
    QStringList said;
    openWith([&](const QByteArray& request) {
        said << panel("panelState");
        return soundController::reply(request);
    });
    window->findChild<platform::vaSpread*>(QStringLiteral("sprMain"))->setCurrentCell(1, 2);
    recv()->trigger();
    EXPECT_FALSE(panel("panelHint").isEmpty()) << "of the current cell, after a read too";
    const int read = controller->requests();
    auto* send = window->findChild<QAction*>(QStringLiteral("tlbMain_Send"));
    asked.answer = MessageResult::kNo;
    send->trigger();
    EXPECT_EQ(asked.texts, QStringList{QStringLiteral("Transfer All Data.Sure?")});
    EXPECT_EQ(controller->requests(), read) << "No sends nothing";
    asked.answer = MessageResult::kYes;
    send->trigger();
    EXPECT_GT(controller->requests(), read);
    EXPECT_EQ(said.first(), u"reading...");
    EXPECT_EQ(said.last(), u"writing...");
    const auto* link = window->findChild<QLabel*>(QStringLiteral("panelLink"));
    EXPECT_EQ(link->toolTip(), link->text()) << "the whole text, where the panel shortens it";
}

// The right edge of what a panel paints, in pixels; a panel of nothing but its background has 0.
int paintedWidth(QLabel& panel)
{
    const QImage image = panel.grab().toImage();
    int right = 0;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y)
            right = image.pixel(x, y) == image.pixel(image.width() - 1, 0) ? right : x;
    }
    return right;
}

TEST_F(MainWindow, LongTextsShareTheStatusBar)
{
    openWith([](const QByteArray& request) { return soundController::reply(request); });
    window->show();
    window->resize(640, 480);
    const QString longText = QString(400, u'W');
    for (const char* name : {"panelLink", "panelState", "panelHint"})
        window->findChild<QLabel*>(QLatin1String(name))->setText(longText);
    window->findChild<QLabel*>(QStringLiteral("panelModel"))->setText(QStringLiteral("KX41000000-10A"));
    QCoreApplication::processEvents();
    EXPECT_EQ(window->width(), 640) << "no text widens the window";
    for (const char* name : {"panelModel", "panelLink", "panelState", "panelHint"}) {
        auto* label = window->findChild<QLabel*>(QLatin1String(name));
        EXPECT_GE(label->width(), 60) << name;
        EXPECT_LT(paintedWidth(*label), label->width() - 2) << name << " is cut, not elided";
        EXPECT_GT(paintedWidth(*label), label->width() / 2) << name;
    }
}

TEST_F(MainWindow, RecvAndSendOpenAPortThatHasComeBack)
{
    const QString adapter = dir.path() + QStringLiteral("/adapter");
    open(adapter);
    const auto plug = [&] {
        QFile::remove(adapter);
        controller = std::make_unique<ScriptedController>(
            [](const QByteArray& request) { return soundController::reply(request); });
        return QFile::link(controller->device(), adapter);
    };
    ASSERT_TRUE(plug());
    recv()->trigger();
    EXPECT_EQ(cell(3), u"42");
    controller->unplug();
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->mainLink().State() == 0; }));
    ASSERT_TRUE(plug());
    window->setDataToKXAll();
    EXPECT_GT(controller->requests(), 0);
    EXPECT_FALSE(panel("panelLink").contains(u"closed"));
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
    openSound(kLastModel + "ShowProgramEndConfForm=True\n");
    asked.answer = MessageResult::kNo;
    const QByteArray before = settingsFile();
    EXPECT_FALSE(window->close());
    EXPECT_EQ(asked.texts, QStringList{QStringLiteral("Quit?")});
    EXPECT_EQ(settingsFile(), before);
    window->closeWithoutQuestion();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(asked.texts.size(), 1);
}

TEST_F(MainWindow, ARequestToEndAnswersTheQuestionWhetherToQuit)
{
    openSound(kLastModel + "ShowProgramEndConfForm=True\n");
    askForReal();
    QTimer::singleShot(0, window.get(), &frmMain::closeWithoutQuestion);
    bool isStillAsked = false;
    QTimer::singleShot(5000, window.get(), [&isStillAsked] {
        isStillAsked = true;
        QApplication::activeModalWidget()->close();
    });
    const QSignalSpy closed(window.get(), &frmMain::closed);
    window->close();
    EXPECT_FALSE(isStillAsked);
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(window->isVisible());
}

} // namespace
