#include "frmMain.h"

#include "ProgramFixture.h"
#include "WhenShown.h"
#include "frmComSet.h"
#include "frmOption.h"
#include "vaSpread.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>

namespace {

using Settings = WhenShown<frmComSet>;

class MainWindow : public ProgramFixture
{
protected:
    void recv() { trigger("mnuKX_1"); }
    QString panel(const char* name) { return find<QLabel>(name)->text(); }
    platform::vaSpread& grid() { return *find<platform::vaSpread>("sprMain"); }
    QString cell(int row) { return grid().model()->index(row - 1, 0).data().toString(); }
    void enter(const char* text) { Q_EMIT grid().editChanged(1, 2, text); }
    QStringList messages() { return std::exchange(asked.texts, {}); } // since the last look
};

TEST_F(MainWindow, RecvFillsTheGrid)
{
    openSound();
    EXPECT_EQ(panel("panelState"), u"not connected");
    recv();
    EXPECT_EQ(cell(1) + u' ' + cell(2) + u' ' + cell(3), u"KX41000000-10A 25.8 42");
    EXPECT_EQ(window->state(), MainState::UpToDate);
    EXPECT_TRUE(panel("panelState").startsWith(u"read at ")) << qPrintable(panel("panelState"));
    EXPECT_EQ(panel("panelLink"), QString("COM1 %1 9600,N,8,1 RTU slave 1").arg(controller->device()));
    EXPECT_TRUE(window->isEnabled() && asked.texts.isEmpty());
    for (const char* name : {"sprMain", "lblHint", "stbMain", "panelModel", "panelLink", "panelState"})
        EXPECT_FALSE(find<QWidget>(name)->accessibleName().isEmpty()) << name;
}

TEST_F(MainWindow, OtherModelOpensTheSettings)
{
    openWith([](const QByteArray& request) { return soundController::reply(request, "KX62000000-10A"); });
    const Settings settings([this](frmComSet& dialog) {
        dialog.findChild<QPushButton*>("Command4")->click();
        const auto windows = QApplication::topLevelWidgets();
        EXPECT_TRUE(std::any_of(windows.begin(), windows.end(), [](const QWidget* each) {
            return each->objectName() == u"frmTraffic" && each->isVisible();
        }));
        dialog.reject();
    });
    recv();
    EXPECT_EQ(settings.count(), 1);
    EXPECT_EQ(messages(), QStringList{"Model number is different.\nExpected: KX41000000-10A, found: KX62000000-10A"});
    window->close();
    EXPECT_TRUE(settingsFile().contains("LastModelString=KX41000000-10A")) << "the grid is still that model's";
}

// Somebody plugs the cable into a controller of the same code with other options while the settings are being applied.
TEST_F(MainWindow, SettingsComeBackUntilTheModelFits)
{
    int asks = 0;
    openWith([&](const QByteArray& request) {
        const bool isFirst = soundController::asksFor(request, "0000FBC0") && ++asks == 1;
        return soundController::reply(request, isFirst ? "KX41000000-10A" : "KX41011100-10A");
    });
    const Settings settings([](frmComSet& dialog) { dialog.findChild<QPushButton*>("Command1_0")->click(); });
    window->showCommSetting();
    EXPECT_EQ(settings.count(), 2);
    EXPECT_TRUE(messages().join(u'|').startsWith(u"Model number is different.\n"));
    EXPECT_EQ(panel("panelModel"), u"KX41011100-10A");
    EXPECT_EQ(cell(3), u"42");
    EXPECT_EQ(window->state(), MainState::UpToDate);
}

TEST_F(MainWindow, StartOpensTheSettingsUnlessOffLineWithAModel)
{
    const std::pair<QByteArray, int> rows[] = {{kOffLine, 0}, {kLastModel, 1}, {"", 1}};
    for (const auto& [lines, opened] : rows) {
        openSound(lines);
        const Settings settings([](frmComSet& dialog) { dialog.reject(); });
        window->start();
        QTest::qWait(0);
        EXPECT_EQ(settings.count(), opened) << lines.toStdString();
    }
    const Settings settings([](frmComSet& dialog) {
        dialog.findChild<QPushButton*>("Command2")->click();
        EXPECT_EQ(dialog.findChild<QLineEdit*>("Text2")->text(), u"KX41000000-10A");
        dialog.findChild<QPushButton*>("Command1_0")->click();
    });
    trigger("mnuKX_0");
    EXPECT_EQ(cell(2), u"25.8") << "a model that is detected is read at once";
    EXPECT_EQ(panel("panelModel"), u"KX41000000-10A");
    EXPECT_EQ(window->state(), MainState::UpToDate);
    EXPECT_EQ(messages(), QStringList());
    window->close();
    EXPECT_TRUE(settingsFile().contains("LastModelString=KX41000000-10A"));
}

// Menu, choice, OK: the open window changes at once, and the communication settings follow.
TEST_F(MainWindow, LanguageAndFontAreChangedByTheOptions)
{
    const QString lang = folder + "/Lang/";
    ASSERT_TRUE(QDir().mkpath(lang) && soundController::writeFile(lang + "EN.txt", "[Info]\nName=English\n") &&
                soundController::writeFile(lang + "JP.txt",
                                           "[Info]\nName=Japanese\n[Caption]\nfrmMain-mnuKX-1=\x8e\xf3\x90\x4d\n"));
    openSound(kLastModel + "LanguageFile=EN.txt\nForceFontSize=17\n");
    const Settings settings([](frmComSet& dialog) { dialog.reject(); });
    for (const bool isOther : {true, false}) {
        trigger("mnuOption_0");
        auto* options = window->findChild<frmOption*>();
        EXPECT_FALSE(window->isEnabled());
        options->findChild<QComboBox*>("Combo1")->setCurrentIndex(isOther ? 1 : 0);
        options->findChild<QCheckBox*>("Check1_4")->setChecked(isOther);
        const int before = settings.count();
        options->findChild<QPushButton*>("Command1_0")->click();
        EXPECT_TRUE(window->isEnabled());
        EXPECT_TRUE(QTest::qWaitFor([&] { return settings.count() > before; }));
        EXPECT_EQ(find<QAction>("mnuKX_1")->text(), isOther ? u"受信" : u"&Read");
        EXPECT_EQ(window->font().pointSize() == 17, isOther);
        for (const char* action : {"mnuKX_3", "mnuEdit_4"})
            trigger(action);
        QWidget* send = find<QToolBar>("tlbMain")->widgetForAction(find<QAction>("tlbMain_Send"));
        QWidgetList widgets{send, find<QWidget>("tlbMain"), find<QWidget>("findBar")};
        for (QWidget* top : QApplication::topLevelWidgets())
            widgets += top->objectName() == u"frmTraffic" ? QWidgetList{top} : QWidgetList();
        for (const QWidget* widget : widgets)
            EXPECT_EQ(widget->font().pointSize() == 17, isOther) << qPrintable(widget->objectName());
        EXPECT_EQ(settingsFile().contains("LanguageFile=JP.txt"), isOther);
    }
}

// The search and the zoom from the menu; both live through another start, the search without its text.
TEST_F(MainWindow, GridIsSearchedAndZoomed)
{
    openSound();
    recv();
    const int plain = grid().columnWidth(0);
    trigger("mnuEdit_4");
    QTest::keyClicks(find<QLineEdit>("findText"), "pqb");
    EXPECT_EQ(grid().currentIndex().row(), 2);
    EXPECT_EQ(panel("findCount"), u"1 of 1");
    for (const char* action : {"mnuView_0", "mnuView_0", "mnuView_1"})
        trigger(action);
    EXPECT_NEAR(grid().columnWidth(0), plain * 1.1, plain * 0.06);
    const int larger = grid().columnWidth(0);
    window->close();
    start(controller->device(), std::make_unique<RecordingMessages>(asked));
    recv();
    EXPECT_EQ(grid().columnWidth(0), larger);
    trigger("mnuView_2");
    EXPECT_EQ(grid().columnWidth(0), plain);
}

TEST_F(MainWindow, SetsAreSavedAndOpenedOverWhatWasRead)
{
    openSound();
    QString chosen = dir.filePath("my set.k41");
    int questions = 0;
    window->setFileChooser([&](const FileQuestion&) {
        ++questions;
        return chosen;
    });
    window->openDataFile();
    EXPECT_EQ(messages(), QStringList{"Please acquire the up-to-date data from the equipment."});
    EXPECT_EQ(questions, 0) << "no dialog before a read";
    recv();
    window->saveDataFile();
    QFile file(chosen);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray saved = file.readAll();
    EXPECT_TRUE(saved.contains("VQSV1=258\r\n")) << saved.toStdString();
    EXPECT_EQ(window->windowTitle(), u"Vorlant - [KX41000000-10A - my set.k41[*]]");
    EXPECT_FALSE(window->isWindowModified());
    enter("7.0");
    EXPECT_TRUE(window->isWindowModified());
    const QString kUnsent = "1 change was not written. Discard it?";
    // What is in the file, what is said, and what the cell shows then.
    const std::tuple<const char*, const char*, QStringList, QString> sets[] = {
        {"VQSV1=258", "VQSV1=258", {kUnsent}, "25.8"},
        {"VQSV1=258", "VQSV1=50", {}, "5.0"},
        {"MODEL=KX41",
         "MODEL=KX62",
         {kUnsent, "Model number is different.\nExpected: KX41000000-10A, found: KX62000000-10A"},
         "5.0"}};
    for (const auto& [before, after, says, shows] : sets) {
        ASSERT_TRUE(soundController::writeFile(chosen, QByteArray(saved).replace(before, after)));
        window->openDataFile();
        EXPECT_EQ(messages(), says);
        EXPECT_EQ(cell(2), shows);
        EXPECT_FALSE(window->isWindowModified());
    }
    const std::pair<QString, QString> refused[] = {{"/no/such/folder.k41", "The file was not saved: "},
                                                   {"/a:b.k41", "The name of a parameter file"},
                                                   {"/a\\b.k41", "The name of a parameter file"}};
    for (const auto& [name, why] : refused) {
        chosen = dir.path() + name;
        window->saveDataFile();
        ASSERT_EQ(asked.texts.size(), 1);
        EXPECT_TRUE(messages().constFirst().startsWith(why)) << qPrintable(name);
        EXPECT_FALSE(QFile::exists(chosen));
    }
    chosen.clear();
    window->saveDataFile();
    EXPECT_EQ(messages(), QStringList()) << "cancelled: nothing happens";
    recv();
    EXPECT_EQ(window->windowTitle(), u"Vorlant - [KX41000000-10A[*]]") << "the values are the controller's";
}

// Off-line a read fills the grid with defaults: not without asking when that ends a file.
TEST_F(MainWindow, OffLineAReadAsksBeforeItReplacesAFile)
{
    openSound(kOffLine);
    EXPECT_EQ(cell(2), u"0.7") << "the default, scaled";
    EXPECT_EQ(panel("panelState"), u"default values");
    EXPECT_EQ(window->state(), MainState::UpToDate);
    window->setFileChooser([this](const FileQuestion&) { return dir.filePath("set.k41"); });
    enter("5.0");
    window->saveDataFile();
    const QString question =
        "The default values take the place of the values of set.k41. Changes that are not saved are lost. Go on?";
    for (const int answer : {MessageResult::kNo, MessageResult::kYes}) {
        asked.answer = answer;
        recv();
        EXPECT_EQ(messages(), QStringList{question});
        EXPECT_EQ(cell(2), answer == MessageResult::kYes ? u"0.7" : u"5.0");
    }
    recv();
    EXPECT_EQ(messages(), QStringList()) << "there is no file any more";
    enter("5.0");
    recv();
    EXPECT_EQ(messages(), QStringList{"1 change was not saved. Discard it?"});
    program->settings().m_bComm = false;
    window->doCommCheck();
    EXPECT_EQ(window->state(), MainState::NoConnection) << "defaults are not the controller's values";
}

// Whatever would take the place of an edit asks first, and nothing happens without a yes.
TEST_F(MainWindow, NoEditIsLostUnasked)
{
    openSound();
    window->setFileChooser([this](const FileQuestion&) { return dir.filePath("set.k41"); });
    recv();
    window->saveDataFile();
    asked.answer = MessageResult::kNo;
    const Settings settings([this](frmComSet& dialog) {
        dialog.findChild<QPushButton*>("Command1_0")->click();
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    });
    const auto store = [this](bool isOther) {
        trigger("mnuOption_0");
        auto* options = window->findChild<frmOption*>();
        options->findChild<QCheckBox*>("Check1_3")->setChecked(isOther);
        options->findChild<QPushButton*>("Command1_0")->click();
        EXPECT_EQ(options->isVisible(), isOther);
        options->reject();
    };
    const std::function<void()> ways[] = {[this] { recv(); }, [this] { window->openDataFile(); }, [&] { store(true); },
                                          [this] { EXPECT_FALSE(window->close()); }, [this] { trigger("mnuKX_0"); }};
    for (const auto& way : ways) {
        SCOPED_TRACE(&way - ways);
        type(QString::number(7 + (&way - ways)));
        way();
        EXPECT_EQ(messages(), QStringList{"1 change was not written. Discard it?"});
        EXPECT_EQ(asked.messages.last().style & 0x300, MessageStyle::kSecondIsDefault) << "No";
        EXPECT_EQ(cell(2), QString("%1.0").arg(7 + (&way - ways)));
    }
    EXPECT_EQ(settings.count(), 1);
    store(false);
    EXPECT_EQ(messages(), QStringList()) << "nothing is loaded anew for it";
    program->settings().m_bViewDiscardConf = false;
    recv();
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(cell(2), u"25.8");
}

// A model string may hold anything: it is shown, and goes on as it is.
TEST_F(MainWindow, HostileModelStringIsShownAndKept)
{
    const QByteArray model = "KX4100\x1b[\x7f<b>AB";
    open(QString(), "[Setting]\nLastModelNo=1\nUseCommunicate=True\nLastModelString=" + model + '\n');
    const QString shown = "KX4100\\x1b[\\x7f<b>AB";
    const Settings settings([&](frmComSet& dialog) {
        EXPECT_EQ(dialog.findChild<QLineEdit*>("Text2")->text(), shown);
        dialog.findChild<QPushButton*>("Command1_0")->click();
        EXPECT_FALSE(dialog.isVisible()) << qPrintable(asked.texts.join(u'|'));
        dialog.close();
    });
    window->showCommSetting();
    EXPECT_EQ(panel("panelModel"), shown);
    EXPECT_EQ(find<QLabel>("panelModel")->textFormat(), Qt::PlainText);
    EXPECT_EQ(window->windowTitle(), QString("Vorlant - [%1[*]]").arg(shown));
    window->close();
    EXPECT_TRUE(settingsFile().contains("LastModelString=" + model)) << settingsFile().toStdString();
}

TEST_F(MainWindow, FileDialogShowsWhatANameHides)
{
    openSound(kOffLine);
    const WhenShown<QFileDialog> asking([](QFileDialog& dialog) {
        const auto* view = dialog.findChild<QTreeView*>("treeView");
        const auto* delegate = view == nullptr ? nullptr : qobject_cast<QStyledItemDelegate*>(view->itemDelegate());
        EXPECT_TRUE(delegate != nullptr && delegate->displayText("a\u202E14k.exe", {}) == u"a<U+202E>14k.exe");
        EXPECT_EQ(dialog.nameFilters().join(u'|'), u"KX410パラメータファイル (*.)|* (*)");
        dialog.reject();
    });
    window->saveDataFile();
    EXPECT_EQ(asking.count(), 1);
}

TEST_F(MainWindow, RecentFilesAreOfferedAndForgottenWhenTheyAreGone)
{
    openSound(kOffLine);
    QString chosen;
    window->setFileChooser([&](const FileQuestion&) { return chosen; });
    for (const char* name : {"a&b.k41", "c.k41", "a&b.k41"}) {
        chosen = dir.filePath(name);
        window->saveDataFile();
    }
    const auto offered = [this] {
        QStringList captions;
        Q_EMIT find<QMenu>("RecentMenu")->aboutToShow();
        for (const QAction* item : find<QMenu>("RecentMenu")->actions()) {
            if (!item->isSeparator())
                captions << item->text().section(u'(', 0, 0).trimmed();
        }
        return captions.join(u'|');
    };
    EXPECT_EQ(offered(), u"&1 a&&b.k41|&2 c.k41|&Clear the list");
    open(controller->device(), settingsFile());
    EXPECT_EQ(offered(), u"&1 a&&b.k41|&2 c.k41|&Clear the list") << "after a restart";
    ASSERT_TRUE(QFile::remove(dir.filePath("a&b.k41")));
    find<QMenu>("RecentMenu")->actions().constFirst()->trigger();
    QCoreApplication::processEvents();
    EXPECT_TRUE(asked.texts.join(u'|').endsWith(u"does not exist or is not a file: choose another one."))
        << qPrintable(asked.texts.join(u'|'));
    EXPECT_EQ(offered(), u"&1 c.k41|&Clear the list");
    trigger("mnuRecent_0");
    EXPECT_EQ(offered(), u"&Clear the list");
}

TEST_F(MainWindow, TheMenuOfACellRevertsAndWrites)
{
    openWith([](const QByteArray& request) {
        const bool isWrite = request.at(1) == 66 && request.at(2) == 1;
        return isWrite ? soundController::rtu(request.left(8)) : soundController::reply(request);
    });
    recv();
    const auto choose = [this](const char* caption) {
        grid().setCurrentCell(1, 2);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
        QApplication::sendEvent(&grid(), &event);
        auto* menu = grid().findChild<QMenu*>("CellMenu");
        for (QAction* action : menu->actions()) {
            if (action->text() == QLatin1String(caption))
                action->trigger(); // nothing where it is off
        }
        menu->close();
        menu->setObjectName({});
        QCoreApplication::processEvents();
    };
    const int read = controller->requests();
    enter("7.0");
    choose("Revert to the controller's value");
    EXPECT_EQ(cell(2), u"25.8");
    EXPECT_FALSE(window->isWindowModified());
    trigger("mnuEdit_2");
    EXPECT_EQ(cell(2), u"7.0") << "one step of undo";
    EXPECT_EQ(controller->requests(), read);
    choose("Write this parameter");
    EXPECT_GT(controller->requests(), read);
    EXPECT_TRUE(find<QToolButton>("panelWrite")->text().startsWith(u"1 written ")) << qPrintable(messages().join('|'));
    EXPECT_FALSE(window->isWindowModified());
    program->settings().m_bNeverWrite = true;
    const int written = controller->requests();
    choose("Write this parameter");
    EXPECT_EQ(controller->requests(), written);
}

// The controller's memory is that of the test: somebody at the front panel changes it.
TEST_F(MainWindow, TheReviewSendsWhatIsTickedAndSaysWhatBecameOfIt)
{
    QByteArray memory = QByteArray::fromHex("01020304");
    openWith([&memory](const QByteArray& request) {
        if (request.at(1) != 66 || !soundController::asksFor(request, "00008000"))
            return soundController::reply(request);
        if (request.at(2) == 0)
            return soundController::rtu(request.left(2) + QByteArray::fromHex("0004") + memory);
        memory = request.mid(8, 4);
        return soundController::rtu(request.left(8));
    });
    recv();
    enter("7.0");
    find<QToolButton>("panelChanges")->click();
    QWidget* form = nullptr;
    for (QWidget* top : QApplication::topLevelWidgets())
        form = top->objectName() == u"frmReview" ? top : form;
    ASSERT_NE(form, nullptr);
    auto* table = form->findChild<QTableView*>("tblReview");
    const auto state = [table] { return table->model()->index(0, 4).data().toString(); };
    const auto press = [form](int n) { form->findChild<QPushButton*>(QString("Command1_%1").arg(n))->click(); };
    form->findChild<QLineEdit*>("Text1")->setText("nowhere");
    EXPECT_TRUE(form->findChild<QLabel*>("Label1")->text().contains("not shown here: 1.")) << "what would go unseen";
    form->findChild<QLineEdit*>("Text1")->clear();
    memory = QByteArray::fromHex("00630304");
    press(0);
    EXPECT_EQ(state(), u"conflict: the controller held 25.8 before");
    EXPECT_EQ(memory.toHex(), "00630304");
    EXPECT_EQ(cell(2), u"7.0");
    QTest::keyClick(table, Qt::Key_Space); // decided
    press(0);
    EXPECT_EQ(state(), u"accepted");
    table->selectRow(0);
    EXPECT_FALSE(form->findChild<QPushButton*>("Command1_2")->isEnabled()) << "nothing to revert";
    EXPECT_EQ(memory.toHex(), "00460304") << "with what the controller held beside it";
    EXPECT_TRUE(find<QToolButton>("panelChanges")->isHidden());
    EXPECT_TRUE(window->isEnabled());
    enter("8.0");
    asked.answer = MessageResult::kExtra;
    form->close();
    EXPECT_FALSE(window->close()) << "to look at the changes first";
    EXPECT_EQ(asked.messages.last().extra, u"Review...");
    EXPECT_TRUE(form->isVisible());
    table->selectRow(0);
    press(2);
    EXPECT_EQ(cell(2), u"7.0") << "what the controller holds";
    asked.answer = MessageResult::kYes;
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(form->isVisible());
}

// As after a power cut in the middle of a write.
TEST_F(MainWindow, AnInterruptedWriteIsToldOnce)
{
    openSound(kOffLine);
    QDir().mkpath(program->machine().folders.state() + "/vorlant");
    ASSERT_TRUE(soundController::writeFile(
        program->machine().folders.state() + "/vorlant/journal-2026-01.jsonl",
        R"({"event":"begun","id":"1","time":"2026-01-02T03:04:05.000+00:00","process":1,"started":1,"cause":"Set value 1"})"
        "\n"));
    for (const int told : {1, 0}) {
        messages();
        window->start();
        EXPECT_EQ(messages().filter("A write was interrupted at 2026-01-02 03:04:05 (Set value 1").size(), told);
    }
}

TEST_F(MainWindow, NeverWritesWhereTheOptionsSaySo)
{
    openSound(kLastModel + "NeverWrite=True\n");
    recv();
    const int read = controller->requests();
    EXPECT_FALSE(find<QAction>("mnuKX_2")->isEnabled() || find<QAction>("tlbMain_Send")->isEnabled());
    EXPECT_TRUE(find<QAction>("tlbMain_Send")->toolTip().contains(u"never to write"));
    EXPECT_TRUE(panel("panelLink").endsWith(u", read-only")) << qPrintable(panel("panelLink"));
    window->setDataToKXAll();
    EXPECT_TRUE(messages().last().startsWith(u"Nothing was written: "));
    EXPECT_EQ(controller->requests(), read);
    const Settings settings([](frmComSet& dialog) { dialog.reject(); });
    trigger("mnuOption_0");
    auto* options = window->findChild<frmOption*>();
    options->findChild<QCheckBox*>("Check1_11")->setChecked(false);
    options->findChild<QPushButton*>("Command1_0")->click();
    EXPECT_TRUE(find<QAction>("mnuKX_2")->isEnabled());
    EXPECT_FALSE(find<QAction>("mnuKX_2")->toolTip().contains(u"never"));
}

// The toolbar asks before it sends, the menu only tells. The status bar tells a write from a read.
TEST_F(MainWindow, SendOfTheToolbarAsks)
{
    QStringList states;
    openWith([&](const QByteArray& request) {
        states << panel("panelState");
        return soundController::reply(request);
    });
    grid().setCurrentCell(1, 2);
    recv();
    EXPECT_FALSE(panel("panelHint").isEmpty()) << "of the current cell, after a read too";
    const int read = controller->requests();
    for (const int answer : {MessageResult::kNo, MessageResult::kYes}) {
        asked.answer = answer;
        trigger("tlbMain_Send");
        EXPECT_EQ(messages().value(0), u"Transfer All Data.Sure?");
        EXPECT_EQ(controller->requests() > read, answer == MessageResult::kYes);
    }
    EXPECT_EQ(states.first() + states.last(), u"reading...writing...");
    const int written = controller->requests();
    for (const char* command : {"tlbMain_Send", "mnuKX_2"}) {
        type("99999");
        trigger(command);
        EXPECT_EQ(controller->requests(), written) << "not with the value that was to be replaced";
    }
    EXPECT_EQ(find<QLabel>("panelLink")->toolTip(), panel("panelLink")) << "whole, where the panel shortens it";
}

TEST_F(MainWindow, LongTextsShareTheStatusBar)
{
    openSound();
    window->resize(640, 480);
    for (const char* name : {"panelLink", "panelState", "panelHint"})
        find<QLabel>(name)->setText(QString(400, u'W'));
    QCoreApplication::processEvents();
    EXPECT_EQ(window->width(), 640) << "no text widens the window";
    for (const char* name : {"panelModel", "panelLink", "panelState", "panelHint"}) {
        auto* label = find<QLabel>(name);
        EXPECT_GE(label->width(), 60) << name;
        const QImage image = label->grab().toImage();
        QImage blank = image;
        blank.fill(image.pixel(image.width() - 1, 0));
        const QRect edge(image.width() - 2, 0, 2, image.height());
        EXPECT_EQ(image.copy(edge), blank.copy(edge)) << name << " is cut, not elided";
        const QRect half(image.width() / 2, 0, image.width() / 2, image.height());
        EXPECT_NE(image.copy(half), blank.copy(half)) << name;
    }
}

TEST_F(MainWindow, RecvAndSendOpenAPortThatHasComeBack)
{
    const QString adapter = dir.filePath("adapter");
    open(adapter);
    const auto plug = [&] {
        QFile::remove(adapter);
        controller =
            ScriptedController::make([](const QByteArray& request) { return soundController::reply(request); });
        return QFile::link(controller->device(), adapter);
    };
    ASSERT_TRUE(plug());
    recv();
    EXPECT_EQ(cell(3), u"42");
    controller->unplug();
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->mainLink().State() == 0; }));
    ASSERT_TRUE(plug());
    trigger("mnuKX_2");
    EXPECT_GT(controller->requests(), 0);
    EXPECT_FALSE(panel("panelLink").contains(u"closed"));
}

// Without a click. What was changed stays; another controller at the same adapter gets nothing.
TEST_F(MainWindow, ALostAdapterIsUsedAgainAndItsControllerIsAskedFirst)
{
    const QString adapter = dir.filePath("adapter");
    const auto plug = [&](const QByteArray& model) {
        QFile::remove(adapter);
        controller = ScriptedController::make([model](const QByteArray& request) {
            return request.at(1) == 66 && request.at(2) == 1 ? soundController::rtu(request.left(8))
                                                             : soundController::reply(request, model);
        });
        return QFile::link(controller->device(), adapter);
    };
    open(adapter);
    ASSERT_TRUE(plug(soundController::kModel));
    recv();
    const Settings settings([](frmComSet& dialog) { dialog.reject(); });
    for (const bool isSame : {true, false}) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return !panel("panelLink").contains(u"lost"); }));
        enter("7.0");
        controller->unplug();
        ASSERT_TRUE(QTest::qWaitFor([&] { return panel("panelLink").contains(u" lost, "); }));
        ASSERT_TRUE(plug(isSame ? soundController::kModel : QByteArray("KX41300000-10A")));
        ASSERT_TRUE(QTest::qWaitFor([&] { return panel("panelLink").startsWith(u"connected again, "); }));
        EXPECT_EQ(cell(2), u"7.0");
        const int before = controller->requests();
        trigger("mnuKX_2");
        EXPECT_EQ(messages().join(u'|').contains(u"Model number is different."), !isSame);
        EXPECT_EQ(controller->requests() - before == 1, !isSame) << "the question for the model";
    }
    EXPECT_EQ(settings.count(), 1);
}

TEST_F(MainWindow, ClosingDuringAReadAsksAndEndsIt)
{
    for (const int answer : {MessageResult::kNo, MessageResult::kYes}) {
        openWith([this](const QByteArray& request) {
            const bool isLast = soundController::asksFor(request, "00008000");
            if (isLast)
                QTimer::singleShot(0, window.get(), [this] { window->close(); });
            return isLast && asked.answer == MessageResult::kYes ? QByteArray() : soundController::reply(request);
        });
        asked.answer = answer;
        const QSignalSpy closed(window.get(), &frmMain::closed);
        recv();
        EXPECT_EQ(messages(), QStringList{"A transfer with the controller is running. Give it up and quit?"});
        EXPECT_EQ(asked.messages.last().style & 0x300, MessageStyle::kSecondIsDefault) << "No";
        EXPECT_EQ(closed.count() == 1 && !window->isVisible(), answer == MessageResult::kYes);
        EXPECT_EQ(window->state() == MainState::UpToDate, answer == MessageResult::kNo);
    }
}

// The question is the user's: a request to end takes an open dialog along, and the question itself.
TEST_F(MainWindow, ClosingAsksTheUserAndNobodyElse)
{
    openSound(kLastModel + "ShowProgramEndConfForm=True\n");
    asked.answer = MessageResult::kNo;
    const QByteArray before = settingsFile();
    EXPECT_FALSE(window->close());
    EXPECT_EQ(messages(), QStringList{"Quit?"});
    EXPECT_EQ(settingsFile(), before);
    for (const bool isAsked : {false, true}) {
        start(controller->device(), isAsked ? nullptr : std::make_unique<RecordingMessages>(asked));
        const QSignalSpy closed(window.get(), &frmMain::closed);
        const auto endUnasked = [this] { window->closeWithoutQuestion(); };
        const Settings settings([&](frmComSet&) { endUnasked(); });
        if (isAsked)
            QTimer::singleShot(0, window.get(), endUnasked);
        QTimer::singleShot(5000, window.get(), [] {
            ADD_FAILURE() << "still asked";
            QApplication::activeModalWidget()->close();
        });
        isAsked ? window->exitApp() : window->showCommSetting();
        EXPECT_TRUE(closed.count() == 1 && !window->isVisible());
        EXPECT_EQ(messages(), QStringList());
    }
}

TEST_F(MainWindow, TheGridIsEditedFromTheKeyboard)
{
    openSound();
    const auto at = [this] { return QString::number(grid().currentIndex().row() + 1) + '=' + cell(2); };
    EXPECT_EQ(at(), u"1=7.0") << "the first parameter, as soon as the model is shown";
    recv();
    window->activateWindow();
    grid().setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    const std::tuple<const char*, Qt::Key, QString> rows[] = {
        {"", Qt::Key_Tab, "2=25.8"},
        {"12,5", Qt::Key_Return, "2=12.5"},
        {"1,234", Qt::Key_Return, "2=12.5"},
        {"30", Qt::Key_Return, "2=30.0"}}; // over what was refused
    for (const auto& [text, key, then] : rows) {
        for (const char sign : QByteArray(text))
            QTest::keyClick(QApplication::focusWidget(), sign);
        QTest::keyClick(QApplication::focusWidget(), key);
        QCoreApplication::processEvents();
        EXPECT_EQ(at(), then);
    }
    EXPECT_EQ(messages().size(), 1);
    grid().setCurrentCell(1, 3);
    trigger("mnuEdit_2");
    EXPECT_EQ(at(), u"2=12.5") << "undone where it is seen";
    QGuiApplication::clipboard()->setText("41");
    grid().selectAll();
    grid().requestPaste();
    EXPECT_EQ(cell(2), u"41.0") << "one value fills all that accept it";
}

TEST_F(MainWindow, CellsAreSpoken)
{
    openSound();
    recv();
    QAccessibleTableInterface* table = QAccessible::queryAccessibleInterface(&grid())->tableInterface();
    QStringList all;
    for (int i = 0; i < 4; ++i)
        all << table->cellAt(i, 0)->text(QAccessible::Name) + '/' + table->cellAt(i, 0)->text(QAccessible::Description);
    EXPECT_EQ(all.join('|'), u"Model, KX41000000-10A/Model: shown only, cannot be changed|設定値, 25.8/-100 to 100|"
                             "PQB1, 42/PQB1: shown only, cannot be changed|/");
}

} // namespace
