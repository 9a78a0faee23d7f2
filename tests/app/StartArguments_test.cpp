#include "StartArguments.h"

#include "ProgramFixture.h"

#include <QProcess>

namespace {

TEST(StartArguments, NameAFileOrAreAnsweredWithoutAWindow)
{
    // Arguments, whether there is a display, exit status and what is said, or -1 and the file and what the detection
    // of the model is told.
    const std::tuple<QStringList, bool, int, const char*> rows[] = {
        {{}, true, -1, "|"},
        {{"/D", "/M:KX41000000-10A"}, true, -1, "|/D /M:KX41000000-10A"},
        {{"/Data/M:x/D/set.kx410", "--read-only"}, true, -1, "/Data/M:x/D/set.kx410|"},
        {{"/D/M:KX410", "--", "--odd.kx410"}, true, -1, "--odd.kx410|/D/M:KX410"},
        {{}, false, 1, "no display"},
        {{"set.kx410"}, false, 1, "no display"},
        {{"-platform", "offscreen", "-style=fusion", "-reverse", "a b"}, false, -1, "a b|"},
        {{"--help"}, false, 0, "Usage"},
        {{"-h"}, true, 0, "--read-only"},
        {{"--version"}, true, 0, "vorlant "},
        {{"-V", "a"}, false, 0, "vorlant "},
        {{"--bogus\x1b"}, false, 2, "Unknown option 'bogus\\x1b'. vorlant --help"},
        {{"--read-only=1"}, true, 2, "read-only"},
        {{"a", "b"}, true, 2, "\"b\" is too much"},
        {{""}, true, 2, "empty"},
    };
    for (const auto& [arguments, hasDisplay, exitStatus, says] : rows) {
        SCOPED_TRACE(qPrintable(arguments.join(u' ')));
        const StartArguments start = StartArguments::parse(arguments, hasDisplay);
        EXPECT_EQ(start.answer ? start.answer->exitStatus : -1, exitStatus);
        const QString text = start.answer ? start.answer->text : start.file + u'|' + start.detection;
        EXPECT_TRUE(start.answer ? text.contains(QLatin1String(says)) : text == QLatin1String(says))
            << qPrintable(text);
        EXPECT_TRUE(start.answer || start.isReadOnly == arguments.contains("--read-only"));
    }
}

// A message at the start is open when the process is asked to end.
TEST(StartArguments, TheProcessEndsUnderAMessageToo)
{
    const QTemporaryDir dir;
    const QString log = dir.filePath("program/Log/Vorlant.log");
    const QString file = dir.filePath("set.k41");
    ASSERT_TRUE(soundController::install(dir.filePath("program"), dir.filePath("data"), kOffLine) &&
                soundController::writeFile(file, "[Info]\r\nMODEL=KX41000000-10A\r\n[Data]\r\nVQSV1=none\r\n"));
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
        environment.insert(variable, dir.filePath("data"));
    environment.insert("VORLANT_PROGRAM_DIR", dir.filePath("program"));
    process.setProcessEnvironment(environment);
    process.start(VORLANT_WINDOW, {file});
    const auto isOpened = [&] {
        QFile lines(log);
        return lines.open(QIODevice::ReadOnly) && lines.readAll().contains("showOpenFile-");
    };
    ASSERT_TRUE(QTest::qWaitFor(isOpened, 20000)) << process.readAllStandardError().constData();
    QTest::qWait(300); // the message follows
    process.terminate();
    EXPECT_TRUE(process.waitForFinished(10000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
}

} // namespace
