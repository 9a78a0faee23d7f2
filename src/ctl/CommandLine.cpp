#include "CommandLine.h"

#include "Clock.h"
#include "LineFormat.h"
#include "Numbers.h"
#include "ServerAddress.h"
#include "SlaveRange.h"
#include "uclComm.h"

#include <QCommandLineParser>

#include <algorithm>

namespace {

constexpr int kMaxSpeed = 4000000;

const char* const kHelp = R"(Usage: vorlantctl [OPTION]... COMMAND

Commands:
  models                list the model catalogue
  ports                 list the serial ports with COM name, device, description, serial number and lasting name;
                        "not plugged in": configured and missing; "-": beyond COM99, to be named by its device
  detect                ask the controller for its model; print the model string and its code
  scan                  search for controllers: ask all slaves with the likely settings, print what answers
  read                  read all parameters of the controller and print them
  get TAG...            read the controller; print TAG=value of these parameters
  set TAG=VALUE...      read the controller, check all values, write them, read back; print what became of each
  show FILE             print a parameter file; needs no controller
  write FILE            write what differs in a parameter file to the controller, read back; print what became of each
  changes FILE          print what write --class all would change; write nothing
  compare FILE          print what differs between a parameter file and the controller
  compare FILE FILE2    the same for two parameter files; needs no controller
  history               print what was written to controllers, the oldest first; needs no controller
  backups [MODEL]       list what was kept before each write, the newest first; of one model or of all
  check-definitions [MODEL]...
                        check the definition files of these models, or of all; print what is wrong with them

A VALUE is what the grid shows: a number in its limits, rounded as in the grid, a choice by its text or its stored
value, a switch by its caption or 0 or 1. Nothing is written when one of the values is refused. compare leaves out
what is only measured.

Options (those left out come from the main settings file):
  --port DEVICE|COMn     serial port, or a serial server: tcp://host:port, rfc2217://host:port
  --speed BAUD           line speed
  --chara P,D,S          parity (N, E, O, M, S), data bits, stop bits, such as N,8,1
  --mode rtu|ascii       transmission mode
  --slave N              slave address, 1 to 247
  --model CODE           model code, such as KX410, whatever options the controller has, or the whole model string;
                         a parameter file names its own
  --timeout S            seconds of silence after which a request counts as lost, 0.05 to 3600
  --slaves A-B           of scan: the slaves to ask, 1 to 247 (default: 1-99)
  --speeds BAUD,...      of scan: the speeds to ask with (default: 9600,19200)
  --formats PDS,...      of scan: the data formats to ask with (default: N81,E71,E81,N82)
  --modes rtu,ascii      of scan: the modes to ask with (default: both)
  --port all             of scan: all ports, one after the other; one that is in use is skipped
  --first                of scan: end with the first controller
  --quiet                show no progress
  --stats                print how the requests have ended, on standard error
  --class LIST           of set, write and changes: classes of parameters to write, separated by commas: setting,
                         calibration, line, command; or all (default: write setting, else all)
  --dry-run              of set and write: print what would change, write nothing
  --read-only            write nothing to a controller: set and write end with status 6
  --no-backup            of set and write: keep nothing of what the controller held; write all the same where the
                         history cannot be written
  -o FILE                write the result to FILE, whole or not at all
  --as table|csv|json    form of the result (default: table; of get: TAG=value)
  --as set               of read, with -o: write a parameter file
  -h, --help             print this
  -V, --version          print the version

Exit status: 0 done, 1 the sets differ, 2 usage, also an unknown --model or TAG, 3 no port, no answer, or a refusal,
4 the controller or the file is of another model or of one that the catalogue lacks, 5 unreadable file or definition,
or a definition with faults, 6 a value was refused, did not read back, or the controller changed.
)";

std::optional<int> numberWithin(const QString& text, int least, int most)
{
    bool ok = false;
    const int number = text.toInt(&ok);
    return ok && number >= least && number <= most ? std::optional<int>(number) : std::nullopt;
}

std::optional<QString> speedNamed(const QString& text)
{
    const auto speed = numberWithin(text, 1, kMaxSpeed);
    return speed ? std::optional(QString::number(*speed)) : std::nullopt;
}

std::optional<QString> formatNamed(const QString& text)
{
    const QString chara = scanplan::charaOf(text);
    return chara.isEmpty() ? std::nullopt : std::optional(chara);
}

std::optional<int> modeNamed(const QString& text)
{
    return text == u"rtu" ? std::optional(0) : text == u"ascii" ? std::optional(1) : std::nullopt;
}

struct CommandForm
{
    const char16_t* name;
    Command command;
    int least; // words behind the command
    int most;
    const char16_t* words;
};

constexpr int kAnyNumber = 1000000;

constexpr CommandForm kCommands[] = {
    {u"models", Command::Models, 0, 0, u"options only"},
    {u"ports", Command::Ports, 0, 0, u"options only"},
    {u"detect", Command::Detect, 0, 0, u"options only"},
    {u"scan", Command::Scan, 0, 0, u"options only"},
    {u"read", Command::Read, 0, 0, u"options only"},
    {u"show", Command::Show, 1, 1, u"one parameter file"},
    {u"get", Command::Get, 1, kAnyNumber, u"one TAG or more"},
    {u"set", Command::Set, 1, kAnyNumber, u"one TAG=VALUE or more"},
    {u"write", Command::Write, 1, 1, u"one parameter file"},
    {u"changes", Command::Changes, 1, 1, u"one parameter file"},
    {u"compare", Command::Compare, 1, 2, u"one or two parameter files"},
    {u"history", Command::History, 0, 0, u"options only"},
    {u"backups", Command::Backups, 0, 1, u"one model code or model string, or none for all"},
    {u"check-definitions", Command::CheckDefinitions, 0, kAnyNumber, u"model codes, or none for all"},
};

const CommandForm* commandNamed(const QString& name)
{
    const auto* form = std::find_if(std::begin(kCommands), std::end(kCommands),
                                    [&name](const CommandForm& known) { return name == QStringView(known.name); });
    return form == std::end(kCommands) ? nullptr : form;
}

// Reads the values of the parsed options; the first one that makes no sense is the error.
class OptionReader
{
public:
    OptionReader(const QCommandLineParser& parser, ParsedCommandLine& result) : m_parser(parser), m_result(result) {}

    void readAll()
    {
        CommandLine& line = m_result.line;
        line.quiet = m_parser.isSet(QStringLiteral("quiet"));
        line.stats = m_parser.isSet(QStringLiteral("stats"));
        line.dryRun = m_parser.isSet(QStringLiteral("dry-run"));
        line.readOnly = m_parser.isSet(QStringLiteral("read-only"));
        line.withoutBackup = m_parser.isSet(QStringLiteral("no-backup"));
        readText(QStringLiteral("port"), line.port);
        checkServer(line.port);
        readText(QStringLiteral("model"), line.model);
        readText(QStringLiteral("o"), line.outputFile);
        readSpeed(line);
        readChara(line);
        readMode(line);
        readNumber(QStringLiteral("slave"), slaverange::kLast, line.slave);
        readTimeout(line);
        readClasses(line);
        readFormat(line);
        readScan(line);
    }

private:
    void readText(const QString& name, QString& into)
    {
        into = m_parser.value(name);
        if (m_parser.isSet(name) && into.isEmpty())
            refuse(name, QStringLiteral("a value that is not empty"));
    }

    void checkServer(const QString& port)
    {
        const platform::Result<> sound = platform::ServerAddress::check(port);
        if (!sound.ok() && m_result.error.isEmpty())
            m_result.error = QStringLiteral("option --port: \"%1\": %2").arg(port, sound.error());
    }

    void readNumber(const QString& name, int most, std::optional<int>& into)
    {
        if (!m_parser.isSet(name))
            return;
        into = numberWithin(m_parser.value(name), 1, most);
        if (!into)
            refuse(name, QStringLiteral("a whole number from 1 to %1").arg(most));
    }

    void readTimeout(CommandLine& line)
    {
        if (!m_parser.isSet(QStringLiteral("timeout")))
            return;
        const auto seconds = platform::parseDouble(m_parser.value(QStringLiteral("timeout")));
        const double ms = seconds.value_or(0) * static_cast<double>(platform::kMsPerSecond);
        if (ms >= uclComm::kLeastTimeOutMs && ms <= uclComm::kMostTimeOutMs)
            line.timeoutMs = qRound(ms);
        else
            refuse(QStringLiteral("timeout"), QStringLiteral("a number of seconds from 0.05 to 3600"));
    }

    void readSpeed(CommandLine& line)
    {
        std::optional<int> speed;
        readNumber(QStringLiteral("speed"), kMaxSpeed, speed);
        line.speed = speed ? QString::number(*speed) : QString();
    }

    void readChara(CommandLine& line)
    {
        readText(QStringLiteral("chara"), line.chara);
        line.chara = line.chara.toUpper();
        if (!line.chara.isEmpty() && !platform::parseLineFormat(line.chara))
            refuse(QStringLiteral("chara"), QStringLiteral("parity, data bits and stop bits, such as N,8,1"));
    }

    void readMode(CommandLine& line)
    {
        const QString name = m_parser.value(QStringLiteral("mode"));
        if (!m_parser.isSet(QStringLiteral("mode")))
            return;
        line.transmissionMode = modeNamed(name);
        if (!line.transmissionMode)
            refuse(QStringLiteral("mode"), QStringLiteral("rtu or ascii"));
    }

    void readClasses(CommandLine& line)
    {
        const QString names = m_parser.value(QStringLiteral("class"));
        if (!m_parser.isSet(QStringLiteral("class")) || names == u"all")
            return;
        for (const QString& name : names.split(u',')) {
            const std::optional<ParameterClass> kind = parameterClassOf(name);
            if (kind && kind != ParameterClass::Measured)
                line.classes << *kind;
            else
                refuse(QStringLiteral("class"), QStringLiteral("setting, calibration, line, command or all"));
        }
    }

    void readFormat(CommandLine& line)
    {
        if (!m_parser.isSet(QStringLiteral("as")))
            return;
        line.asParameterFile = m_parser.value(QStringLiteral("as")) == u"set";
        if (line.asParameterFile)
            return;
        const std::optional<OutputFormat> format = outputFormatNamed(m_parser.value(QStringLiteral("as")));
        if (!format)
            refuse(QStringLiteral("as"), QStringLiteral("table, csv, json or (of read) set"));
        line.format = format.value_or(OutputFormat::Table);
    }

    void readScan(CommandLine& line)
    {
        line.onlyFirst = m_parser.isSet(QStringLiteral("first"));
        readSlaves(line);
        readList<QString>(QStringLiteral("speeds"), line.scanChoice.speeds, &speedNamed,
                          QStringLiteral("one speed or more, such as 9600,19200"));
        readList<QString>(QStringLiteral("formats"), line.scanChoice.charas, &formatNamed,
                          QStringLiteral("one format or more, such as N81,E71"));
        readList<int>(QStringLiteral("modes"), line.scanChoice.modes, &modeNamed,
                      QStringLiteral("rtu, ascii or rtu,ascii"));
        if (scanplan::settings({}, line.scanChoice).isEmpty())
            refuse(QStringLiteral("formats"), QStringLiteral("for RTU, which needs 8 data bits"));
    }

    // "1-99", or one number.
    void readSlaves(CommandLine& line)
    {
        const QString name = QStringLiteral("slaves");
        if (!m_parser.isSet(name))
            return;
        const QString text = m_parser.value(name);
        const auto first = numberWithin(text.section(u'-', 0, 0), slaverange::kFirst, slaverange::kLast);
        const auto last =
            text.contains(u'-') ? numberWithin(text.section(u'-', 1), first.value_or(1), slaverange::kLast) : first;
        if (!first || !last)
            refuse(name, QStringLiteral("a range of slaves from %1 to %2, such as 1-99")
                             .arg(slaverange::kFirst)
                             .arg(slaverange::kLast));
        line.firstSlave = first.value_or(slaverange::kFirst);
        line.lastSlave = last.value_or(slaverange::kLast);
    }

    template <class Value>
    void readList(const QString& name, QList<Value>& into, std::optional<Value> (*valueOf)(const QString&),
                  const QString& wanted)
    {
        if (!m_parser.isSet(name))
            return;
        for (const QString& text : m_parser.value(name).split(u',')) {
            const std::optional<Value> value = valueOf(text.trimmed());
            if (!value)
                refuse(name, wanted);
            else if (!into.contains(*value))
                into << *value;
        }
    }

    void refuse(const QString& name, const QString& wanted)
    {
        if (m_result.error.isEmpty())
            m_result.error = QStringLiteral("option %1%2: \"%3\" is not %4")
                                 .arg(name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--"), name,
                                      m_parser.value(name), wanted);
    }

    const QCommandLineParser& m_parser;
    ParsedCommandLine& m_result;
};

void addOptions(QCommandLineParser& parser)
{
    for (const char* name : {"port", "speed", "chara", "mode", "slave", "model", "timeout", "class", "as", "o",
                             "slaves", "speeds", "formats", "modes"})
        parser.addOption({QString::fromLatin1(name), QString(), QStringLiteral("value")});
    for (const char* name : {"quiet", "stats", "dry-run", "read-only", "no-backup", "first"})
        parser.addOption(QCommandLineOption(QString::fromLatin1(name)));
    parser.addOption(QCommandLineOption(QStringList{QStringLiteral("h"), QStringLiteral("help")}));
    parser.addOption(QCommandLineOption(QStringList{QStringLiteral("V"), QStringLiteral("version")}));
}

// The first pair that cannot be meant, with the reason; empty when all can.
QString errorInPairs(const QStringList& pairs)
{
    QStringList tags;
    for (const QString& pair : pairs) {
        const QString tag = pair.section(u'=', 0, 0);
        if (tag.isEmpty() || !pair.contains(u'='))
            return QStringLiteral("set: \"%1\" is not TAG=VALUE").arg(pair);
        if (tags.contains(tag))
            return QStringLiteral("set: %1 is there twice; leave one of them out").arg(tag);
        tags << tag;
    }
    return {};
}

QString errorInWords(const CommandForm& form, const QStringList& words)
{
    const QString name = QString::fromUtf16(form.name);
    const QString wanted = QString::fromUtf16(form.words);
    if (words.size() < form.least)
        return QStringLiteral("%1: the command accepts %2").arg(name, wanted);
    if (words.size() > form.most)
        return QStringLiteral("%1: \"%2\" is too much; the command accepts %3").arg(name, words.at(form.most), wanted);
    if (words.contains(QString()))
        return QStringLiteral("%1: a word is empty; the command accepts %2").arg(name, wanted);
    return form.command == Command::Set ? errorInPairs(words) : QString();
}

void readCommand(const QStringList& words, ParsedCommandLine& result)
{
    const CommandForm* form = words.isEmpty() ? nullptr : commandNamed(words.first());
    if (words.isEmpty()) {
        result.error = QStringLiteral("no command; vorlantctl --help lists them");
        return;
    }
    if (form == nullptr) {
        result.error =
            QStringLiteral("unknown command \"%1\"; vorlantctl --help lists the commands").arg(words.first());
        return;
    }
    result.line.command = form->command;
    result.line.words = words.mid(1);
    result.error = errorInWords(*form, result.line.words);
    const bool isFileOfRead = form->command == Command::Read && !result.line.outputFile.isEmpty();
    if (result.error.isEmpty() && result.line.asParameterFile && !isFileOfRead)
        result.error = QStringLiteral("option --as: \"set\" is for read with -o FILE");
}

} // namespace

ParsedCommandLine parseCommandLine(const QStringList& arguments)
{
    ParsedCommandLine result;
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(QStringList{QStringLiteral("vorlantctl")} + arguments)) {
        result.error = parser.errorText().simplified() + QStringLiteral(" vorlantctl --help lists the options.");
        return result;
    }
    if (parser.isSet(QStringLiteral("help")))
        return result;
    if (parser.isSet(QStringLiteral("version"))) {
        result.line.command = Command::Version;
        return result;
    }
    OptionReader(parser, result).readAll();
    if (result.error.isEmpty())
        readCommand(parser.positionalArguments(), result);
    if (result.line.command == Command::Write && !parser.isSet(QStringLiteral("class")))
        result.line.classes = {ParameterClass::Setting};
    result.line.dryRun = result.line.dryRun || result.line.command == Command::Changes;
    return result;
}

QString helpText()
{
    return QString::fromUtf8(kHelp);
}
