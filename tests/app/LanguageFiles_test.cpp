#include "HelpWindow.h"
#include "MultiSelectOwner.h"
#include "ProgramContext.h"
#include "RecordingMessages.h"
#include "SelectionWindows.h"
#include "VisibleText.h"
#include "frmComSet.h"
#include "frmMain.h"
#include "frmMessageBox.h"
#include "frmOption.h"
#include "frmProgbar.h"
#include "frmShowVersion.h"
#include "frmTraffic.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QToolTip>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

// The lines of a language file that hold words: not the fonts, and no empty tool tips.
QStringList wordLines(const QString& file)
{
    QFile in(file);
    EXPECT_TRUE(in.open(QIODevice::ReadOnly)) << qPrintable(file);
    QStringList words;
    QString section;
    const auto lines = platform::CodePage().toText(in.readAll()).split(QStringLiteral("\r\n"));
    for (const QString& line : lines) {
        if (line.startsWith(u'['))
            section = line;
        const bool isFont = section.startsWith(QStringLiteral("[Font")) || line.startsWith(QStringLiteral("Font"));
        if (line.contains(u'=') && !isFont && !line.endsWith(u'='))
            words << section + line;
    }
    words.sort();
    return words;
}

struct NoSettings : MultiSelectOwner
{
    void setData(const QString&, const QString&, bool) override {}
    void setVData(const QString&, const QString&, bool) override {}
    void setEntry(const std::vector<EntrySetting>&) override {}
};

// Every form of the program is shown once with a language file.
class ShippedLanguage : public ::testing::TestWithParam<const char*>
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir().mkpath(dir.filePath(QStringLiteral("config/Vorlan"))));
        for (const char* folder : {"ini", "Lang"}) {
            const QString from = QStringLiteral(VORLANT_DATA_DIR "/") + QLatin1String(folder);
            const QString to = dir.filePath(QStringLiteral("program/") + QLatin1String(folder));
            ASSERT_TRUE(QDir().mkpath(to));
            const auto names = QDir(from).entryList(QDir::Files);
            for (const QString& name : names)
                ASSERT_TRUE(QFile::copy(from + u'/' + name, to + u'/' + name));
        }
        QFile settings(dir.filePath(QStringLiteral("config/Vorlan/Vorlant.ini")));
        ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
        settings.write(QByteArray("[Setting]\nLastModelString=KX41000000-10A\nLanguageFile=") + GetParam() + "\n");
    }

    QString languageFile() const { return dir.filePath(QStringLiteral("program/Lang/")) + QLatin1String(GetParam()); }

    void showEveryForm(const std::function<void()>& inspect = [] {})
    {
        const platform::SystemColors colors;
        ProgramContext program(platform::PathMap(),
                               platform::Folders(platform::PathMap(), dir.filePath(QStringLiteral("program")),
                                                 dir.filePath(QStringLiteral("config"))),
                               QProcessEnvironment(), colors);
        RecordingMessages::Record told;
        program.ports().assign(1, dir.filePath(QStringLiteral("no-adapter")));
        frmMain window(program, std::make_unique<RecordingMessages>(told));
        window.show();
        frmTraffic(program.library(), program.traceLog().filePath()).show();
        frmComSet({window.commSettings(), program.ports(), program.library(), QString()}, &window).show();
        frmOption options(program.library(), program.settings());
        options.showModeless(&window, false);
        frmShowVersion version(program.library(), ProgramVersion::current());
        version.showModeless(&window, false);
        frmProgbar progress;
        progress.setLib(&program.library());
        progress.showModeless(&window, 1, QStringLiteral("Sending..."),
                              QStringLiteral("It is forwarding it. Please wait for a while."), 0, false, true);
        NoSettings nothing;
        SelectionWindows selections(program.library(), nothing);
        for (const char* table : {"InputRangeC", "InputRangeK", "AlarmType", "EventType", "DigitalInput"})
            EXPECT_TRUE(selections.open({}, QLatin1String(table), &window, false)) << table;
        frmMessageBox box(program.library());
        window.getDataFromKX();
        EXPECT_EQ(told.texts.size(), 1) << qPrintable(told.texts.join(u'|'));
        platform::HelpWindow help(program.library().translation());
        help.showPage(QStringLiteral(VORLANT_DATA_DIR "/help/Vorlant"), QStringLiteral("index.html"));
        inspect();
    }

    QTemporaryDir dir;
};

// A word that the file lacks would be added to it.
TEST_P(ShippedLanguage, HoldsEveryWordOfEveryForm)
{
    const QStringList shipped = wordLines(languageFile());
    showEveryForm();
    QStringList added = wordLines(languageFile());
    for (const QString& line : shipped)
        added.removeOne(line);
    EXPECT_EQ(added, QStringList()) << qPrintable(added.join(u'\n'));
}

// Every text of the language file names a file in HTML and speaks to the terminal.
constexpr char kHostile[] = "<img src=\"/dev/zero\"><b>%1</b>\x1b\u202E";

void makeHostile(const QString& file)
{
    const QStringList words = wordLines(file);
    QByteArray text("\xEF\xBB\xBF[Info]\r\nName=x\r\n");
    QString section = QStringLiteral("[Info]");
    for (const QString& word : words) { // sorted by section
        if (word.startsWith(QStringLiteral("[Info]")))
            continue;
        if (!word.startsWith(section))
            text += (section = word.section(u']', 0, 0) + u']').toUtf8() + "\r\n";
        text += word.mid(section.size()).section(u'=', 0, 0).toUtf8() + '=' + kHostile + "\r\n";
    }
    QFile out(file);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(text) == text.size());
}

QStringList textsOf(const QWidget& widget)
{
    QStringList texts{widget.windowTitle(), widget.toolTip()};
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        texts << label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        texts << button->text();
    if (const auto* box = qobject_cast<const QGroupBox*>(&widget))
        texts << box->title();
    if (const auto* tabs = qobject_cast<const QTabWidget*>(&widget)) {
        for (int i = 0; i < tabs->count(); ++i)
            texts << tabs->tabText(i);
    }
    if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) {
        for (int i = 0; i < combo->count(); ++i)
            texts << combo->itemText(i);
    }
    const auto actions = widget.actions();
    for (const QAction* action : actions)
        texts << action->text() << action->toolTip();
    return texts;
}

// Also what Qt makes itself: a tool tip, and a message box of its own.
TEST_P(ShippedLanguage, HostileTextsAreOnlyShown)
{
    makeHostile(languageFile());
    int shown = 0;
    showEveryForm([&] {
        QMessageBox box(QMessageBox::Warning, QString(), QStringLiteral("<b>x</b>"));
        box.show();
        QToolTip::showText(QPoint(), QStringLiteral("<b>x</b>"));
        QStringList labels;
        const auto widgets = QApplication::allWidgets();
        for (const QWidget* widget : widgets) {
            const auto* label = qobject_cast<const QLabel*>(widget);
            if (label != nullptr && label->text().contains(u'<')) {
                EXPECT_EQ(label->textFormat(), Qt::PlainText) << qPrintable(label->objectName());
                labels << QString::fromLatin1(label->metaObject()->className());
            }
            for (const QString& text : textsOf(*widget)) {
                EXPECT_EQ(platform::visibleLines(text), text) << qPrintable(widget->objectName());
                shown += text.contains(u"\\x1b<U+202E>") ? 1 : 0;
            }
        }
        EXPECT_TRUE(labels.contains(u"QTipLabel")) << "it was there to be looked at";
    });
    EXPECT_GT(shown, 150);
}

INSTANTIATE_TEST_SUITE_P(Files, ShippedLanguage, ::testing::Values("EN.txt", "JP.txt"),
                         [](const auto& row) { return std::string(row.param).substr(0, 2); });

} // namespace
