#include "StartArguments.h"

#include "ProgramVersion.h"
#include "VisibleText.h"

#include <QCommandLineParser>

namespace {

constexpr int kNoDisplay = 1;
constexpr int kWrongUsage = 2;

const QString kHelp = QStringLiteral(
    "Usage: vorlant [OPTION]... [/D /M:MODELSTRING] [FILE]\n"
    "Opens the window of the parameter tool for KX process controllers, with the parameter file FILE when one is\n"
    "named: its model is loaded and its values are shown; no controller is asked. A window that is open already takes\n"
    "the file, unless --read-only, /D or /M: is given.\n"
    "\n"
    "  --read-only      write nothing to a controller\n"
    "  /D /M:MODELSTRING\n"
    "                   the model string takes the place of the one that the controller answers when its model is\n"
    "                   detected\n"
    "  -h, --help       print this\n"
    "  -V, --version    print the version\n"
    "\n"
    "See vorlant(1); vorlantctl(1) does the same from a terminal, vorlant-sim(1) simulates a controller.\n");

// Of the Qt library and its window systems; they read them by themselves.
const char* const kWithValue[] = {"platform",     "platformpluginpath", "platformtheme", "plugin", "qwindowgeometry",
                                  "qwindowtitle", "qwindowicon",        "session",       "style",  "stylesheet",
                                  "display",      "geometry",           "title",         "icon",   "name",
                                  "qmljsdebugger"};
const char* const kWithoutValue[] = {"reverse", "nograb", "dograb", "widgetcount"};

// "/D" and "/M:MODEL"; a path such as "/Documents/M:x" is none.
bool isDetectionSwitch(const QString& word)
{
    return word == u"/D" || word.startsWith(u"/M:") || word.startsWith(u"/D/M:");
}

// Long options with one dash, too, as the library has them.
void addOptions(QCommandLineParser& parser)
{
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOption(QCommandLineOption(QStringLiteral("read-only")));
    parser.addOption(QCommandLineOption(QStringList{QStringLiteral("h"), QStringLiteral("help")}));
    parser.addOption(QCommandLineOption(QStringList{QStringLiteral("V"), QStringLiteral("version")}));
    for (const char* name : kWithValue)
        parser.addOption({QLatin1String(name), QString(), QStringLiteral("value")});
    for (const char* name : kWithoutValue)
        parser.addOption(QCommandLineOption(QLatin1String(name)));
}

WindowlessAnswer wrongUsage(const QString& sentence)
{
    return {QStringLiteral("vorlant: %1 vorlant --help lists the options.\n").arg(platform::visibleText(sentence)),
            kWrongUsage};
}

std::optional<WindowlessAnswer> answerTo(const QCommandLineParser& parser, bool isSound, const QStringList& files,
                                         bool hasDisplay)
{
    if (!isSound)
        return wrongUsage(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        return WindowlessAnswer{kHelp, 0};
    if (parser.isSet(QStringLiteral("version")))
        return WindowlessAnswer{QStringLiteral("vorlant %1\n").arg(ProgramVersion::current().plain()), 0};
    if (files.size() > 1)
        return wrongUsage(QStringLiteral("\"%1\" is too much: one file at a time.").arg(files.at(1)));
    if (files.contains(QString()))
        return wrongUsage(QStringLiteral("The name of the file is empty."));
    if (hasDisplay || parser.isSet(QStringLiteral("platform")))
        return {};
    return WindowlessAnswer{QStringLiteral("vorlant: there is no display to open a window on; start it in a desktop "
                                           "session, or use vorlantctl in a terminal\n"),
                            kNoDisplay};
}

} // namespace

StartArguments StartArguments::parse(const QStringList& arguments, bool hasDisplay)
{
    QCommandLineParser parser;
    addOptions(parser);
    const bool isSound = parser.parse(QStringList{QStringLiteral("vorlant")} + arguments);
    QStringList files = parser.positionalArguments();
    QStringList switches;
    for (qsizetype i = 0; i < files.size();) {
        if (isDetectionSwitch(files.at(i)))
            switches << files.takeAt(i);
        else
            ++i;
    }
    return {parser.isSet(QStringLiteral("read-only")), files.value(0), switches.join(u' '),
            answerTo(parser, isSound, files, hasDisplay)};
}
