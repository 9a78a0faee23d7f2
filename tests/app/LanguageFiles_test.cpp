#include "GridHint.h"
#include "HelpWindow.h"
#include "Journal.h"
#include "MultiSelectOwner.h"
#include "ProgramFixture.h"
#include "SelectionWindows.h"
#include "StartPage.h"
#include "VisibleText.h"
#include "frmBackups.h"
#include "frmComSet.h"
#include "frmHistory.h"
#include "frmMessageBox.h"
#include "frmProgbar.h"
#include "frmScan.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QMessageBox>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTabBar>
#include <QTableView>
#include <QToolTip>

#include <functional>

namespace {

struct NoSettings : MultiSelectOwner
{
    void setData(const QString&, const QString&, bool) override {}
    void setVData(const QString&, const QString&, bool) override {}
    void setEntry(const std::vector<EntrySetting>&) override {}
};

// Every form of the program is shown once with a language file.
class ShippedLanguage : public ProgramFixture, public ::testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override
    {
        for (const QString name : {"/ini", "/Lang"}) {
            const QDir from(VORLANT_DATA_DIR + name);
            ASSERT_TRUE(QDir().mkpath(folder + name) && QDir().mkpath(data + "/Vorlan"));
            for (const QString& file : from.entryList(QDir::Files))
                ASSERT_TRUE(QFile::copy(from.filePath(file), folder + name + u'/' + file));
        }
        ASSERT_TRUE(
            soundController::writeFile(data + "/Vorlan/Vorlant.ini", kLastModel + "LanguageFile=" + GetParam() + "\n"));
    }

    QString path() const { return folder + "/Lang/" + GetParam(); }
    QString content() const
    {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
        return platform::CodePage().toText(file.readAll());
    }
    // The lines that hold words: not the fonts, and no empty tool tips.
    QStringList wordLines() const
    {
        QStringList words;
        QString section;
        for (const QString& line : content().split("\r\n")) {
            section = line.startsWith(u'[') ? line : section;
            const bool isFont = section.startsWith(u"[Font") || line.startsWith(u"Font");
            if (line.contains(u'=') && !isFont && !line.endsWith(u'='))
                words << section + line;
        }
        return words;
    }

    void showEveryForm(const std::function<void()>& inspect = [] {})
    {
        start(dir.filePath("no-adapter"), std::make_unique<RecordingMessages>(asked));
        clsLibrary& library = program->library();
        window->showTraffic();
        window->showReview();
        const Journal journal(program->context());
        StartPage start;
        start.setText(gridHint({}, 0, {}, {}, library.translation()));
        start.show();
        frmHistory history(library, journal);
        history.show();
        window->showOption();
        window->showVersion();
        frmComSet({window->commSettings(), program->ports(), library, QString()}, window.get()).show();
        ComSetSession session({window->commSettings(), program->ports(), library, QString()});
        frmScan scan(session, {}, library, nullptr);
        scan.show();
        frmProgbar progress;
        progress.setLib(&library);
        progress.showModeless(window.get(), 1, "Sending...", "It is forwarding it. Please wait for a while.", 0, false,
                              true);
        NoSettings nothing;
        SelectionWindows selections(library, nothing);
        for (const char* table : {"InputRangeC", "InputRangeK", "AlarmType", "EventType", "DigitalInput"})
            EXPECT_TRUE(selections.open({}, table, window.get(), false)) << table;
        frmMessageBox box(library);
        clsKX kx(library);
        frmBackups backups(kx, {});
        backups.show();
        window->getDataFromKX();
        EXPECT_EQ(asked.texts.size(), 1) << qPrintable(asked.texts.join(u'|'));
        platform::HelpWindow help(library.translation());
        help.showPage(VORLANT_DATA_DIR "/help/Vorlant", "index.html");
        inspect();
    }
};

// A word that the file lacks would be added to it.
TEST_P(ShippedLanguage, HoldsEveryWordOfEveryForm)
{
    const QStringList shipped = wordLines();
    showEveryForm();
    QStringList added = wordLines();
    for (const QString& line : shipped)
        added.removeOne(line);
    EXPECT_EQ(added, QStringList()) << qPrintable(added.join(u'\n'));
}

TEST_P(ShippedLanguage, TheCommunicationSettingsUnderlineEachLetterOnce)
{
    start(dir.filePath("no-adapter"), std::make_unique<RecordingMessages>(asked));
    const frmComSet form({window->commSettings(), program->ports(), program->library(), QString()});
    QStringList keys;
    for (const QWidget* widget : form.findChildren<QWidget*>()) {
        const QString key = QKeySequence::mnemonic(widget->property("text").toString()).toString();
        EXPECT_FALSE(keys.contains(key)) << qPrintable(key + ' ' + widget->objectName());
        if (!key.isEmpty())
            keys << key;
    }
    EXPECT_TRUE(keys.contains("Alt+V")) << "a button that the language file names";
}

TEST_P(ShippedLanguage, FourColumnsOfBlocksFitASmallScreen)
{
    ASSERT_TRUE(
        soundController::writeFile(data + "/Vorlan/Vorlant.ini", kOffLine + "LanguageFile=" + GetParam() + "\n"));
    start(dir.filePath("no-adapter"), std::make_unique<RecordingMessages>(asked));
    window->resize(1270, 860); // and a frame
    for (const auto& [number, code] : {std::pair(5, "KX640"), std::pair(6, "KX643"), std::pair(7, "KX910")}) {
        window->loadKXInfo(number, code + QString("11111-11A"));
        QCoreApplication::processEvents();
        const auto* grid = find<QTableView>("sprMain");
        EXPECT_EQ(grid->horizontalScrollBar()->maximum(), 0)
            << code << ' ' << grid->horizontalHeader()->length() << " pixels";
    }
}

QStringList textsOf(const QObject& object)
{
    QStringList texts;
    for (const char* name : {"windowTitle", "toolTip", "text", "title"})
        texts << object.property(name).toString();
    const auto* tabs = qobject_cast<const QTabBar*>(&object);
    for (int i = 0; tabs != nullptr && i < tabs->count(); ++i)
        texts << tabs->tabText(i);
    const auto* combo = qobject_cast<const QComboBox*>(&object);
    for (int i = 0; combo != nullptr && i < combo->count(); ++i)
        texts << combo->itemText(i);
    return texts;
}

// Every text of the language file names a file in HTML and speaks to the terminal. Also what Qt makes itself is looked
// at: a tool tip, and a message box of its own.
TEST_P(ShippedLanguage, HostileTextsAreOnlyShown)
{
    static const QRegularExpression word("^([^=\r\n]+=)[^\r\n]+", QRegularExpression::MultilineOption);
    const QString hostile = content().replace(word, "\\1<img src=\"/dev/zero\"><b>%1</b>\x1b\u202E");
    ASSERT_TRUE(soundController::writeFile(path(), "\xEF\xBB\xBF" + hostile.toUtf8()));
    showEveryForm([] {
        QMessageBox box(QMessageBox::Warning, QString(), "<b>x</b>");
        box.show();
        QToolTip::showText(QPoint(), "<b>x</b>");
        QObjectList objects;
        for (QWidget* top : QApplication::topLevelWidgets())
            objects << top << top->findChildren<QObject*>();
        int shown = 0;
        bool hasToolTip = false;
        for (const QObject* object : objects) {
            for (const QString& text : textsOf(*object)) {
                EXPECT_EQ(platform::visibleLines(text), text) << qPrintable(object->objectName());
                shown += text.contains(u"\\x1b<U+202E>") ? 1 : 0;
            }
            const QString spoken = object->property("accessibleName").toString();
            const bool isQts = spoken.isEmpty() || object->objectName().startsWith(u"Scroll"); // of a row of tabs
            EXPECT_TRUE(isQts || spoken.contains(u"<b>")) << qPrintable(object->objectName() + ' ' + spoken);
            const auto* label = qobject_cast<const QLabel*>(object);
            if (label != nullptr && label->text().contains(u'<')) {
                EXPECT_EQ(label->textFormat(), Qt::PlainText) << qPrintable(label->objectName());
            }
            hasToolTip = hasToolTip || object->inherits("QTipLabel");
        }
        EXPECT_TRUE(hasToolTip) << "it was there to be looked at";
        EXPECT_GT(shown, 150);
    });
}

INSTANTIATE_TEST_SUITE_P(Files, ShippedLanguage, ::testing::Values("EN.txt", "JP.txt"),
                         [](const auto& row) { return std::string(row.param).substr(0, 2); });

} // namespace
