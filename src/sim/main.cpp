#include "DefinitionFault.h"
#include "FileReplacement.h"
#include "FrontPanel.h"
#include "ModelCatalogue.h"
#include "ModelCodes.h"
#include "NamedPipe.h"
#include "ProgramContext.h"
#include "ProgramVersion.h"
#include "SimulatedController.h"
#include "SimulatorLine.h"
#include "SlaveRange.h"
#include "Terminal.h"
#include "TerminationSignals.h"
#include "VisibleText.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace {

constexpr int kUsage = 2;
constexpr int kNoPort = 3;
constexpr int kNoDefinition = 5;

int fail(int status, const QString& message)
{
    std::fprintf(stderr, "vorlant-sim: %s\n", qPrintable(platform::visibleText(message)));
    return status;
}

struct Options
{
    QString model;
    QString modelString;
    QString link;
    QString device;
    int speed = 9600;
    QString chara;
    QString state;
    int slave = 1;
    int mode = 0;
    int pace = 0;
    bool trace = false;
    Faults faults;
    QStringList pokes;
    QString control;
    QString error;
};

// Ends the program for help and version; otherwise returns why the words make no sense, empty when they do.
QString readWords(QCommandLineParser& parser)
{
    if (!parser.parse(QCoreApplication::arguments())) {
        const QString error = parser.errorText();
        return error.endsWith(u'.') ? error.chopped(1) : error;
    }
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp();
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    const QStringList words = parser.positionalArguments();
    return words.isEmpty() ? QString()
                           : QStringLiteral("\"%1\" is too much: there are only options").arg(words.first());
}

Options parse()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Simulates a KX controller on a pseudo-terminal or a serial device."));
    parser.addOption({QStringList{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Print this.")});
    parser.addOption(
        {QStringList{QStringLiteral("V"), QStringLiteral("version")}, QStringLiteral("Print the version.")});
    const auto add = [&parser](const char* name, const char* text, const char* value, const char* preset = "") {
        parser.addOption(QCommandLineOption(QString::fromLatin1(name), QString::fromLatin1(text),
                                            QString::fromLatin1(value), QString::fromLatin1(preset)));
    };
    add("model", "Model code of the catalogue.", "CODE", "KX410");
    add("model-string", "The 14 characters at FBC0.", "TEXT");
    add("slave", "Slave address, 1 to 247.", "N", "1");
    add("mode", "rtu or ascii.", "MODE", "rtu");
    add("link", "Make a link to the pseudo-terminal.", "PATH");
    add("device", "Serve this device.", "DEV");
    add("speed", "Speed of the device.", "BAUD", "9600");
    add("chara", "Parity, data and stop bits of the device.", "TEXT", "N,8,1");
    add("pace", "Let every byte take its time at this speed.", "BAUD", "0");
    const QByteArray faultHelp =
        "Do this wrong with every reply, or with @PROBABILITY or @everyN: " + Faults::kinds().toLatin1() +
        ". May be given more than once.";
    add("fault", faultHelp.constData(), "KIND");
    add("seed", "Repeats the faults.", "N", "1");
    add("poke",
        "Change the memory that many seconds after the start, as at the front panel: ADDRESS=BYTES@SECONDS, such as "
        "8000=0A1B@2.5. May be given more than once.",
        "POKE");
    add("control", "Make a named pipe here that takes lines \"poke ADDRESS=BYTES\".", "FILE");
    add("state", "Write the memory here at the end.", "FILE");
    parser.addOption(QCommandLineOption(QStringLiteral("trace"), QStringLiteral("Print the frames.")));
    Options options;
    options.error = readWords(parser);
    if (!options.error.isEmpty())
        return options;
    const auto number = [&](const char* name, int low, int high) {
        bool ok = false;
        const int value = parser.value(QLatin1String(name)).toInt(&ok);
        if (!ok || value < low || value > high)
            options.error =
                QStringLiteral("--%1 is a number from %2 to %3").arg(QLatin1String(name)).arg(low).arg(high);
        return value;
    };
    options.model = parser.value(QStringLiteral("model"));
    options.modelString = parser.value(QStringLiteral("model-string"));
    if (options.modelString.isEmpty())
        options.modelString = modelcodes::handPicked(options.model);
    options.link = parser.value(QStringLiteral("link"));
    options.device = parser.value(QStringLiteral("device"));
    options.pokes = parser.values(QStringLiteral("poke"));
    options.control = parser.value(QStringLiteral("control"));
    options.state = parser.value(QStringLiteral("state"));
    options.trace = parser.isSet(QStringLiteral("trace"));
    options.slave = number("slave", slaverange::kFirst, slaverange::kLast);
    options.speed = number("speed", 50, 4000000);
    options.chara = parser.value(QStringLiteral("chara"));
    options.pace = number("pace", 0, 4000000);
    options.faults = Faults(static_cast<unsigned>(number("seed", 0, 1000000000)));
    const QString mode = parser.value(QStringLiteral("mode"));
    options.mode = mode == u"ascii" ? 1 : 0;
    if (mode != u"ascii" && mode != u"rtu")
        options.error = QStringLiteral("--mode is rtu or ascii");
    const QStringList faults = parser.values(QStringLiteral("fault"));
    for (const QString& fault : faults) {
        const platform::Result<> added = fault.isEmpty() ? platform::Result<>() : options.faults.add(fault);
        if (!added.ok())
            options.error = added.error();
    }
    return options;
}

// The first poke that makes no sense for the controller, with the reason; empty when all do.
QString refusedPoke(FrontPanel& panel, const QStringList& pokes)
{
    for (const QString& poke : pokes) {
        const platform::Result<> added = panel.add(poke);
        if (!added.ok())
            return QStringLiteral("--poke \"%1\": %2").arg(poke, added.error());
    }
    return {};
}

platform::Result<> openControl(platform::NamedPipe& control, const QString& path, FrontPanel& panel)
{
    if (path.isEmpty())
        return {};
    QObject::connect(&control, &platform::NamedPipe::received, &panel, [&panel](const QString& line) {
        const platform::Result<> obeyed = panel.obey(line);
        if (!obeyed.ok())
            fail(0, QStringLiteral("--control: \"%1\": %2").arg(line, obeyed.error()));
    });
    return control.open(path);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    platform::showWarningsVisibly();
    QCoreApplication::setApplicationVersion(ProgramVersion::current().plain());
    const Options options = parse();
    if (!options.error.isEmpty())
        return fail(kUsage, options.error + QStringLiteral("; try --help"));
    const platform::SystemColors colors;
    ProgramContext program(QCoreApplication::applicationDirPath(), QProcessEnvironment::systemEnvironment(), colors);
    program.context().translates = false;
    for (const FolderNotice& notice : program.folderNotices())
        std::fprintf(stderr, "vorlant-sim: %s\n", qPrintable(platform::visibleText(notice.english())));
    ModelCatalogue catalogue(program.library());
    catalogue.ensureBuiltIn();
    const int number = catalogue.numberOf(options.model);
    if (number == 0)
        return fail(kUsage,
                    QStringLiteral("model %1 is not in the catalogue; see vorlantctl models").arg(options.model));
    const QString fault = definitionFault(program.library(), catalogue.entry(number));
    if (!fault.isEmpty())
        return fail(kNoDefinition, fault);
    const QString screen = program.definitionFile(catalogue.entry(number).screenFile);
    if (!QFileInfo(screen).isFile())
        return fail(kNoDefinition,
                    QStringLiteral("%1 is missing; set VORLANT_PROGRAM_DIR to the program folder").arg(screen));

    SimulatedController controller(program.library(), number, options.modelString, options.slave, options.mode);
    if (controller.itemCount() == 0)
        return fail(kNoDefinition, QStringLiteral("%1 defines no parameters; restore the file").arg(screen));
    FrontPanel panel(controller, program.clock());
    const QString poke = refusedPoke(panel, options.pokes);
    if (!poke.isEmpty())
        return fail(kUsage, poke);
    const platform::TerminationSignals ending; // one that comes as soon as the line is ready is not lost
    QObject::connect(&ending, &platform::TerminationSignals::requested, &application, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    platform::NamedPipe control;
    const platform::Result<> opened = openControl(control, options.control, panel);
    if (!opened.ok())
        return fail(kNoPort, QStringLiteral("the named pipe %1 cannot be created: %2; choose another --control file")
                                 .arg(options.control, opened.error()));
    SimulatorLine line(controller, options.faults, options.pace, program.clock());
    if (!(options.device.isEmpty() ? line.openTerminal()
                                   : line.openDevice(options.device, options.speed, options.chara)))
        return fail(kNoPort, QStringLiteral("%1 cannot be opened: %2; check --device, --speed and --chara")
                                 .arg(options.device.isEmpty() ? QStringLiteral("a terminal") : options.device,
                                      line.errorText()));
    if (!options.link.isEmpty()) {
        if (QFileInfo(options.link).isSymLink())
            QFile::remove(options.link);
        if (!QFile::link(line.path(), options.link))
            return fail(kNoPort,
                        QStringLiteral("the link %1 cannot be created; remove the file of that name, or create "
                                       "its folder")
                            .arg(options.link));
    }
    if (options.trace)
        QObject::connect(&line, &SimulatorLine::traced, [](const QString& direction, const QByteArray& bytes) {
            std::fprintf(stderr, "%s%s\n", qPrintable(direction), bytes.toHex().toUpper().constData());
        });
    panel.start();
    std::printf("ready %s\n", qPrintable(options.link.isEmpty() ? line.path() : options.link));
    std::fflush(stdout);

    QCoreApplication::exec();
    if (!options.link.isEmpty())
        QFile::remove(options.link);
    if (options.state.isEmpty())
        return 0;
    const platform::Result<> written = platform::writeWholeFile(QFile::encodeName(options.state), controller.state());
    return written.ok() ? 0
                        : fail(kNoDefinition, QStringLiteral("%1 cannot be written: %2; choose another --state file")
                                                  .arg(options.state, written.error()));
}
