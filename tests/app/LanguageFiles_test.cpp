#include "MultiSelectOwner.h"
#include "ProgramContext.h"
#include "RecordingMessages.h"
#include "SelectionWindows.h"
#include "frmComSet.h"
#include "frmMain.h"
#include "frmMessageBox.h"
#include "frmOption.h"
#include "frmProgbar.h"
#include "frmShowVersion.h"
#include "frmTraffic.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

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
};

// Every form of the program is shown once with a language file as it is shipped: a word that the file lacks would be
// added to it.
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

    void showEveryForm()
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
        frmComSet({window, program.ports(), program.library(), QString()}, &window).show();
        frmOption options(program.library(), program.settings(), window);
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
    }

    QTemporaryDir dir;
};

TEST_P(ShippedLanguage, HoldsEveryWordOfEveryForm)
{
    const QStringList shipped = wordLines(languageFile());
    showEveryForm();
    QStringList added = wordLines(languageFile());
    for (const QString& line : shipped)
        added.removeOne(line);
    EXPECT_EQ(added, QStringList()) << qPrintable(added.join(u'\n'));
}

INSTANTIATE_TEST_SUITE_P(Files, ShippedLanguage, ::testing::Values("EN.txt", "JP.txt"),
                         [](const auto& row) { return std::string(row.param).substr(0, 2); });

} // namespace
