#include "HelpKey.h"

#include "ProgramContext.h"
#include "SoundController.h"
#include "WhenShown.h"
#include "frmComSet.h"
#include "frmMain.h"
#include "frmMessageBox.h"
#include "frmOption.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QWindow>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

// The main window with its own message boxes, without a controller; the manual as it is shipped.
class Help : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const QString programFolder = dir.filePath(QStringLiteral("Vorlant"));
        const QString data = dir.filePath(QStringLiteral("AppData"));
        ASSERT_TRUE(soundController::install(programFolder, data,
                                             "[Setting]\nLastModelNo=1\nLastModelString=KX41000000-10A\n"));
        manual = programFolder + QStringLiteral("/help/Vorlant");
        ASSERT_TRUE(QFile::link(QStringLiteral(VORLANT_DATA_DIR "/help"), programFolder + QStringLiteral("/help")));
        platform::PathMap paths;
        paths.mount(u'C', dir.path());
        program = std::make_unique<ProgramContext>(paths, platform::Folders(paths, programFolder, data),
                                                   QProcessEnvironment(), colors);
        program->ports().assign(1, dir.filePath(QStringLiteral("no-adapter")));
        window = std::make_unique<frmMain>(*program);
        helpFile = window->helpFile();
        key = std::make_unique<HelpKey>(
            HelpKey::Parts{program->machine().paths, program->library().translation(), [this] { return helpFile; }});
        window->show();
    }

    platform::HelpWindow* help() const
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* found = qobject_cast<platform::HelpWindow*>(widget);
            if (found != nullptr && found->isVisible())
                return found;
        }
        return nullptr;
    }

    // "page#id" of what is shown.
    QString shown() const
    {
        const QUrl source = help() == nullptr ? QUrl() : help()->browser().source();
        return source.fileName() + u'#' + source.fragment();
    }

    // Through the window system, which keeps from windows what a modal dialog blocks.
    void pressContents() const
    {
        auto* bar = help()->findChild<QToolBar*>(QStringLiteral("toolBar"));
        const auto* button = bar->widgetForAction(help()->findChild<QAction*>(QStringLiteral("contents")));
        const QPoint place = button->mapTo(help(), button->rect().center());
        QTest::mouseClick(help()->windowHandle(), Qt::LeftButton, {}, place);
    }

    template <class Widget> Widget* child(const char* name) const
    {
        return window->findChild<Widget*>(QLatin1String(name));
    }

    QTemporaryDir dir;
    QString manual;
    QString helpFile;
    platform::SystemColors colors;
    std::unique_ptr<ProgramContext> program;
    std::unique_ptr<frmMain> window;
    std::unique_ptr<HelpKey> key;
};

TEST_F(Help, GridOpensThePageAboutEntries)
{
    QTest::keyClick(child<QWidget>("sprMain"), Qt::Key_F1);
    ASSERT_NE(help(), nullptr);
    EXPECT_EQ(shown(), u"editing.html#editing");
    EXPECT_FALSE(help()->browser().isMissing());
    EXPECT_TRUE(help()->windowTitle().contains(u"Changing parameters")) << qPrintable(help()->windowTitle());
    platform::HelpWindow::closeAll();
    EXPECT_EQ(help(), nullptr);
}

TEST_F(Help, MenusAndTabsHaveTopicsOfTheirOwn)
{
    auto* menu = child<QMenu>("KXMenu");
    menu->popup(QPoint(10, 10));
    menu->setActiveAction(child<QAction>("mnuKX_1"));
    QTest::keyClick(menu, Qt::Key_F1);
    EXPECT_EQ(shown(), u"transfer.html#reading");
    EXPECT_FALSE(menu->isVisible());
    window->showOption();
    auto* options = window->findChild<frmOption*>();
    options->findChild<QTabWidget*>()->setCurrentIndex(1);
    QTest::keyClick(options->findChild<QWidget*>(QStringLiteral("Check1_0")), Qt::Key_F1);
    EXPECT_EQ(shown(), u"windows.html#options-questions");
    EXPECT_GT(help()->browser().verticalScrollBar()->value(), 0) << "the page stands at the id";
    options->reject();
}

// Also under a message that comes up later, and after it has gone.
TEST_F(Help, StaysUsableOverModalDialogs)
{
    const WhenShown<frmComSet> settings([this](frmComSet& dialog) {
        QTest::keyClick(dialog.findChild<QComboBox*>(QStringLiteral("Combo1")), Qt::Key_F1);
        ASSERT_NE(help(), nullptr);
        EXPECT_EQ(shown(), u"connecting.html#com");
        pressContents();
        EXPECT_EQ(shown(), u"index.html#");
        const WhenShown<frmMessageBox> message([this](frmMessageBox& box) {
            QTest::keyClick(box.findChild<QPushButton*>(QStringLiteral("cmdCommand_0")), Qt::Key_F1);
            EXPECT_EQ(shown(), u"messages.html#there-was-no-response");
            pressContents();
            EXPECT_EQ(shown(), u"index.html#");
            box.reject();
        });
        dialog.findChild<QPushButton*>(QStringLiteral("Command2"))->click();
        EXPECT_EQ(message.count(), 1);
        QTest::keyClick(dialog.findChild<QPushButton*>(QStringLiteral("Command1_0")), Qt::Key_F1);
        EXPECT_EQ(shown(), u"communication.html#ok");
        pressContents();
        EXPECT_EQ(shown(), u"index.html#");
        dialog.reject();
    });
    window->showCommSetting();
    EXPECT_EQ(settings.count(), 1);
    QCoreApplication::processEvents();
    ASSERT_NE(help(), nullptr) << "it outlives the dialog";
    EXPECT_EQ(help()->windowHandle()->transientParent(), nullptr);
    key->openFor(child<QWidget>("sprMain"));
    pressContents();
    EXPECT_EQ(shown(), u"index.html#");
}

TEST_F(Help, OpenWindowIsNotBlockedByADialogThatFollows)
{
    key->openFor(child<QWidget>("sprMain"));
    const WhenShown<frmMessageBox> message([this](frmMessageBox& box) {
        QCoreApplication::processEvents();
        pressContents();
        EXPECT_EQ(shown(), u"index.html#");
        box.reject();
    });
    window->openDataFile();
    EXPECT_EQ(message.count(), 1);
}

TEST_F(Help, MissingPageSaysWhereItShouldBe)
{
    const QString folder = dir.filePath(QStringLiteral("Vorlant"));
    ASSERT_TRUE(QFile::remove(folder + QStringLiteral("/help")));
    key->openFor(nullptr);
    EXPECT_TRUE(help()->browser().isMissing());
    EXPECT_TRUE(help()->browser().toPlainText().contains(manual)) << qPrintable(help()->browser().toPlainText());
    QDir().mkpath(manual);
    key->openFor(child<QWidget>("sprMain"));
    EXPECT_TRUE(help()->browser().toPlainText().contains(manual + QStringLiteral("/editing.html")));
    ASSERT_TRUE(soundController::writeFile(manual + QStringLiteral("/editing.html"), "<p>now</p>"));
    key->openFor(child<QWidget>("sprMain"));
    EXPECT_EQ(help()->browser().toPlainText(), u"now");
    helpFile.clear();
    key->openFor(nullptr);
    EXPECT_TRUE(help()->browser().toPlainText().contains(u"Install the manual again"));
}

TEST_F(Help, LinksOutOfTheManualAreRefused)
{
    key->openFor(nullptr);
    auto* browser = help()->findChild<platform::HelpBrowser*>();
    for (const char* link : {"https://example.org/", "../../../ini/M.ini", "file:///etc/hostname", "javascript:1"}) {
        Q_EMIT browser->anchorClicked(QUrl(QString::fromLatin1(link)));
        EXPECT_EQ(shown(), u"index.html#") << link;
    }
    Q_EMIT browser->anchorClicked(QUrl(QStringLiteral("windows.html#version")));
    EXPECT_EQ(shown(), u"windows.html#version");
}

// A page that names files elsewhere gets none of them; the folder's own it gets.
TEST(HelpBrowser, ShowsNothingFromOutsideOfItsFolder)
{
    const QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("help"));
    ASSERT_TRUE(QDir().mkdir(folder));
    QImage picture(70, 50, QImage::Format_RGB32);
    ASSERT_TRUE(picture.save(dir.filePath(QStringLiteral("out.png"))) &&
                picture.save(folder + QStringLiteral("/in.png")));
    ASSERT_TRUE(QFile::link(dir.filePath(QStringLiteral("out.png")), folder + QStringLiteral("/link.png")));
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), folder + QStringLiteral("/zero.png")));
    ASSERT_TRUE(soundController::writeFile(dir.filePath(QStringLiteral("out.css")), "p { font-size: 99px }"));
    platform::HelpBrowser browser([](const QString& text) { return text; });
    browser.show();
    const auto heightWith = [&](const QString& head, const QString& body) {
        EXPECT_TRUE(soundController::writeFile(
            folder + QStringLiteral("/p.html"),
            QStringLiteral("<html><head>%1</head><body><p>a%2</p></body></html>").arg(head, body).toUtf8()));
        browser.showPage(folder, QStringLiteral("p.html"), {});
        return browser.document()->size().height();
    };
    const double plain = heightWith({}, {});
    EXPECT_GT(heightWith({}, QStringLiteral("<img src=\"in.png\">")), plain + 20);
    for (const QString& source :
         {dir.filePath(QStringLiteral("out.png")), QStringLiteral("../out.png"),
          QStringLiteral("file://") + dir.filePath(QStringLiteral("out.png")), QStringLiteral("link.png"),
          QStringLiteral("zero.png"), QStringLiteral("/dev/zero"), QStringLiteral("https://example.org/out.png")})
        EXPECT_LT(heightWith({}, QStringLiteral("<img src=\"%1\">").arg(source)), plain + 20) << qPrintable(source);
    EXPECT_EQ(heightWith(QStringLiteral("<link rel=\"stylesheet\" href=\"../out.css\">"), {}), plain);
}

TEST_F(Help, OtherLanguageOpensTheOtherManual)
{
    key->openFor(child<QWidget>("sprMain"));
    helpFile.replace(QStringLiteral("Vorlant.chm"), QStringLiteral("VorlantJ.chm"));
    key->openFor(child<QWidget>("sprMain"));
    EXPECT_TRUE(help()->windowTitle().contains(u"パラメータの変更")) << qPrintable(help()->windowTitle());
    EXPECT_FALSE(help()->findChild<QAction*>(QStringLiteral("back"))->isEnabled());
}

TEST_F(Help, FindsATextAroundTheEnd)
{
    key->openFor(child<QWidget>("sprMain"));
    auto* field = help()->findChild<QLineEdit*>(QStringLiteral("findText"));
    const auto* browser = help()->findChild<platform::HelpBrowser*>();
    const auto* result = help()->findChild<QLabel*>(QStringLiteral("findResult"));
    field->setText(QStringLiteral("Undo and redo"));
    for (int round = 0; round < 2; ++round) {
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_EQ(browser->textCursor().selectedText(), u"Undo and redo");
        EXPECT_TRUE(result->text().isEmpty());
    }
    field->setText(QStringLiteral("no such words"));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_FALSE(result->text().isEmpty());
}

// As the dialog for printing and the question that it asks: a window that belongs to its own dialog has no end.
TEST(HelpWindow, DialogsOverItAreNotItsOwners)
{
    platform::HelpWindow help([](const QString& text) { return text; });
    help.showPage(QStringLiteral(VORLANT_DATA_DIR "/help/Vorlant"), QStringLiteral("index.html"));
    QDialog print(&help);
    print.setWindowModality(Qt::ApplicationModal);
    print.show();
    QCoreApplication::processEvents();
    EXPECT_FALSE(print.windowHandle()->isAncestorOf(help.windowHandle(), QWindow::IncludeTransients));
    QDialog question(&print);
    question.setWindowModality(Qt::ApplicationModal);
    question.show();
    QCoreApplication::processEvents();
    EXPECT_TRUE(question.isVisible());
}

} // namespace
