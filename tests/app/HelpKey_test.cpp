#include "HelpKey.h"

#include "ManualSearch.h"

#include "ProgramFixture.h"
#include "WhenShown.h"
#include "frmComSet.h"
#include "frmMessageBox.h"
#include "frmOption.h"
#include "vaSpread.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QScrollBar>
#include <QTabWidget>
#include <QToolBar>
#include <QWindow>

namespace {

// The main window with its own message boxes, without a controller; the manual as it is shipped.
class Help : public ProgramFixture
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(soundController::install(folder, data, kLastModel));
        ASSERT_TRUE(QFile::link(VORLANT_DATA_DIR "/help", folder + "/help"));
        start(dir.filePath("no-adapter"), nullptr);
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
    QString text() const { return help()->browser().toPlainText(); }

    // "page#id" of what the key shows at a widget.
    QString pageAt(QWidget* widget) const
    {
        QTest::keyClick(widget, Qt::Key_F1);
        const QUrl source = help() == nullptr ? QUrl() : help()->browser().source();
        return source.fileName() + u'#' + source.fragment();
    }
    QString pageAt(const QWidget& dialog, const char* name) const { return pageAt(dialog.findChild<QWidget*>(name)); }

    // Through the window system, which keeps from windows what a modal dialog blocks.
    bool takesClicks() const
    {
        auto* bar = help()->findChild<QToolBar*>("toolBar");
        const auto* button = bar->widgetForAction(help()->findChild<QAction*>("contents"));
        const QPoint place = button->mapTo(help(), button->rect().center());
        QTest::mouseClick(help()->windowHandle(), Qt::LeftButton, {}, place);
        return help()->browser().source().fileName() == u"index.html";
    }
};

TEST(ManualSearch, FindsOnAllPages)
{
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"Vorlant", "when nothing  ANSWERS", "connecting.html#nothing-answers"}, // a heading before all other places
        {"Vorlant", "ＳＥＲ２ＮＥＴ", "connecting.html#servers"},
        {"Vorlant", "&", "#"}, // one letter is everywhere
        {"Vorlant", "no such words", "#"},
        {"VorlantJ", "ｵﾌﾟｼｮﾝ", "windows.html#options"}};
    for (const auto& [manual, text, place] : rows) {
        const auto hits = ManualSearch(QStringLiteral(VORLANT_HELP_DIR "/") + manual).find(QString::fromUtf8(text));
        const ManualSearch::Hit first = hits.empty() ? ManualSearch::Hit() : hits.front();
        EXPECT_EQ((first.page + u'#' + first.anchor).toStdString(), place) << text;
    }
}

TEST_F(Help, OpensThePageOfWhatHasTheFocusAndFindsWords)
{
    find<QTableView>("sprMain")->setCurrentIndex({}); // at no parameter
    EXPECT_EQ(pageAt(*window, "sprMain"), u"editing.html#editing");
    EXPECT_TRUE(help()->windowTitle().contains(u"Changing parameters")) << qPrintable(help()->windowTitle());
    auto* field = help()->findChild<QLineEdit*>("findText");
    // The second time around the end.
    for (const QString words : {"Undo and redo", "Undo and redo", "no such words"}) {
        const bool isFound = words != u"no such words";
        field->setText(words);
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_EQ(help()->browser().textCursor().selectedText() == field->text(), isFound);
        EXPECT_EQ(help()->findChild<QLabel*>("findResult")->text().isEmpty(), isFound);
    }
    auto* hits = help()->findChild<QListWidget*>("findHits");
    field->clear();
    QTest::keyClicks(field, "SER2NET");
    EXPECT_GT(hits->count(), 0) << "on another page";
    QTest::keyClick(field, Qt::Key_Down);
    EXPECT_EQ(help()->browser().source().fileName(), u"connecting.html");
    EXPECT_EQ(help()->browser().textCursor().selectedText(), u"ser2net");
    QTest::keyClicks(field, " nowhere");
    EXPECT_TRUE(hits->isHidden());
    program->context().languageFile = "JP.txt";
    EXPECT_EQ(pageAt(*window, "sprMain"), u"editing.html#editing");
    EXPECT_TRUE(help()->windowTitle().contains(u"パラメータの変更")) << qPrintable(help()->windowTitle());
    EXPECT_FALSE(help()->findChild<QAction*>("back")->isEnabled());
    // In a cell with a parameter, or beside it: its row, when the manual has one.
    auto* grid = find<platform::vaSpread>("sprMain");
    const std::tuple<int, int, const char*> cells[] = {{1, 0, "parameters-KX410.html#VQSV1"},
                                                       {2, 0, "editing.html#editing"},
                                                       {1, 1, "parameters-KX410.html#VQSV1"},
                                                       {1, 2, "editing.html#editing"}};
    for (const auto& [row, column, topic] : cells) {
        grid->setCurrentIndex(grid->model()->index(row, column));
        EXPECT_EQ(pageAt(grid), topic) << row << ' ' << column;
    }
    auto* menu = find<QMenu>("KXMenu");
    menu->popup(QPoint(10, 10));
    menu->setActiveAction(find<QAction>("mnuKX_1"));
    EXPECT_EQ(pageAt(menu), u"transfer.html#reading");
    EXPECT_FALSE(menu->isVisible());
    window->showOption();
    auto* options = window->findChild<frmOption*>();
    options->findChild<QTabWidget*>()->setCurrentIndex(1);
    EXPECT_EQ(pageAt(*options, "Check1_0"), u"windows.html#options-questions");
    EXPECT_GT(help()->browser().verticalScrollBar()->value(), 0) << "the page stands at the id";
    options->reject();
    platform::HelpWindow::closeAll();
    EXPECT_EQ(help(), nullptr);
}

// Also under a message that comes up later, and after it has gone.
TEST_F(Help, StaysUsableOverModalDialogs)
{
    const WhenShown<frmComSet> settings([this](frmComSet& dialog) {
        EXPECT_EQ(pageAt(dialog, "Combo1"), u"connecting.html#com");
        EXPECT_TRUE(takesClicks());
        const WhenShown<frmMessageBox> message([this](frmMessageBox& box) {
            EXPECT_EQ(pageAt(box, "cmdCommand_0"), u"messages.html#there-was-no-response");
            EXPECT_TRUE(takesClicks());
            box.reject();
        });
        dialog.findChild<QAbstractButton*>("Command2")->click();
        EXPECT_EQ(message.count(), 1);
        EXPECT_EQ(pageAt(dialog, "Command1_0"), u"communication.html#ok");
        EXPECT_TRUE(takesClicks());
        dialog.reject();
    });
    window->showCommSetting();
    EXPECT_EQ(settings.count(), 1);
    QCoreApplication::processEvents();
    ASSERT_NE(help(), nullptr) << "it outlives the dialog";
    EXPECT_EQ(help()->windowHandle()->transientParent(), nullptr);
    pageAt(*window, "sprMain");
    const WhenShown<frmMessageBox> message([this](frmMessageBox& box) {
        EXPECT_TRUE(QTest::qWaitFor([this] { return takesClicks(); })) << "it was open before the message";
        box.reject();
    });
    window->openDataFile();
    EXPECT_EQ(message.count(), 1);
    // As the dialog for printing and the question that it asks: a window that belongs to its own dialog has no end.
    QDialog print(help());
    QDialog question(&print);
    for (QDialog* dialog : {&print, &question}) {
        dialog->setWindowModality(Qt::ApplicationModal);
        dialog->show();
        QCoreApplication::processEvents();
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_FALSE(dialog->windowHandle()->isAncestorOf(help()->windowHandle(), QWindow::IncludeTransients));
    }
}

TEST_F(Help, MissingPageSaysWhereItShouldBe)
{
    const QString manual = folder + "/help/Vorlant";
    ASSERT_TRUE(QFile::remove(folder + "/help"));
    pageAt(*window, "sprMain");
    EXPECT_TRUE(help()->browser().isMissing());
    EXPECT_TRUE(text().contains("not in the folder " + manual)) << qPrintable(text());
    QDir().mkpath(manual);
    pageAt(*window, "sprMain");
    EXPECT_TRUE(text().contains(manual + "/editing.html")) << qPrintable(text());
    ASSERT_TRUE(soundController::writeFile(manual + "/editing.html", "<p>now</p>"));
    pageAt(*window, "sprMain");
    EXPECT_EQ(text(), u"now");
}

// A page that names files elsewhere gets none of them; the folder's own it gets.
TEST_F(Help, BrowserShowsNothingFromOutsideOfItsFolder)
{
    QImage picture(70, 50, QImage::Format_RGB32);
    ASSERT_TRUE(QDir().mkdir(folder + "/pages") && picture.save(folder + "/out.png") &&
                picture.save(folder + "/pages/in.png"));
    ASSERT_TRUE(QFile::link(folder + "/out.png", folder + "/pages/link.png"));
    ASSERT_TRUE(QFile::link("/dev/zero", folder + "/pages/zero.png"));
    ASSERT_TRUE(soundController::writeFile(folder + "/out.css", "p { font-size: 99px }"));
    platform::HelpBrowser browser([](const QString& text) { return text; });
    browser.show();
    const auto heightWith = [&](const QString& head, const QString& body) {
        const QString page = "<html><head>%1</head><body><p>a%2</p></body></html>";
        EXPECT_TRUE(soundController::writeFile(folder + "/pages/p.html", page.arg(head, body).toUtf8()));
        browser.showPage(folder + "/pages", "p.html", {});
        return browser.document()->size().height();
    };
    const double plain = heightWith({}, {});
    EXPECT_GT(heightWith({}, "<img src=\"in.png\">"), plain + 20);
    for (const QString& source :
         {folder + "/out.png", QString("../out.png"), "file://" + folder + "/out.png", QString("link.png"),
          QString("zero.png"), QString("/dev/zero"), QString("https://example.org/out.png")})
        EXPECT_LT(heightWith({}, QString("<img src=\"%1\">").arg(source)), plain + 20) << qPrintable(source);
    EXPECT_EQ(heightWith("<link rel=\"stylesheet\" href=\"../out.css\">", {}), plain);
    const QUrl page = browser.source();
    for (const char* link : {"https://example.org/", "../out.png", "file:///etc/hostname", "javascript:1"}) {
        Q_EMIT browser.anchorClicked(QUrl(link));
        EXPECT_EQ(browser.source(), page) << link;
    }
    Q_EMIT browser.anchorClicked(QUrl("other.html#id"));
    EXPECT_EQ(browser.source().toString(), "file://" + folder + "/pages/other.html#id");
    browser.showPage({}, "p.html", {});
    EXPECT_TRUE(browser.toPlainText().contains("not in the folder help.")) << qPrintable(browser.toPlainText());
}

} // namespace
