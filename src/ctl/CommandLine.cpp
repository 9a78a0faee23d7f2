#include "CommandLine.h"

#include <QCommandLineParser>
#include <QRegularExpression>

namespace {

constexpr int kMaxSlave = 247;
constexpr int kMaxTimeoutSeconds = 3600;
constexpr int kMaxSpeed = 4000000;

const char* const kHelp = R"(Usage: vorlantctl [OPTION]... COMMAND

Commands:
  models    list the model catalogue
  ports     list the serial ports and their COM names
  detect    ask the controller for its model; print the model string and its code
  read      read all parameters of the controller and print them

Options (those left out come from the main settings file):
  --port DEVICE|COMn     serial port
  --speed BAUD           line speed
  --chara P,D,S          parity (N, E, O, M, S), data bits, stop bits, such as N,8,1
  --mode rtu|ascii       transmission mode
  --slave N              slave address, 1 to 247
  --model CODE           model code, such as KX410, or the whole model string
  --timeout S            seconds of silence after which a request counts as lost, 1 to 3600
  --quiet                show no progress
  -o FILE                write the result to FILE, whole or not at all
  --as table|csv|json    form of the result (default: table)
  --help, --version

Exit status: 0 done, 2 usage, 3 no port or no answer, 4 wrong or unknown model,
5 unreadable file or definition.
)";

std::optional<int> numberWithin(const QString& text, int least, int most)
{
    bool ok = false;
    const int number = text.toInt(&ok);
    return ok && number >= least && number <= most ? std::optional<int>(number) : std::nullopt;
}

std::optional<Command> commandNamed(const QString& name)
{
    if (name == u"models")
        return Command::Models;
    if (name == u"ports")
        return Command::Ports;
    if (name == u"detect")
        return Command::Detect;
    if (name == u"read")
        return Command::Read;
    return std::nullopt;
}

// Takes the values out of the parsed options; the first one that makes no sense is the error.
class OptionReader
{
public:
    OptionReader(const QCommandLineParser& parser, ParsedCommandLine& result) : m_parser(parser), m_result(result) {}

    void readAll()
    {
        CommandLine& line = m_result.line;
        line.quiet = m_parser.isSet(QStringLiteral("quiet"));
        readText(QStringLiteral("port"), line.port);
        readText(QStringLiteral("model"), line.model);
        readText(QStringLiteral("o"), line.outputFile);
        readSpeed(line);
        readChara(line);
        readMode(line);
        readNumber(QStringLiteral("slave"), kMaxSlave, line.slave);
        readNumber(QStringLiteral("timeout"), kMaxTimeoutSeconds, line.timeoutSeconds);
        readFormat(line);
    }

private:
    void readText(const QString& name, QString& into)
    {
        into = m_parser.value(name);
        if (m_parser.isSet(name) && into.isEmpty())
            refuse(name, QStringLiteral("a value that is not empty"));
    }

    void readNumber(const QString& name, int most, std::optional<int>& into)
    {
        if (!m_parser.isSet(name))
            return;
        into = numberWithin(m_parser.value(name), 1, most);
        if (!into)
            refuse(name, QStringLiteral("a whole number from 1 to %1").arg(most));
    }

    void readSpeed(CommandLine& line)
    {
        std::optional<int> speed;
        readNumber(QStringLiteral("speed"), kMaxSpeed, speed);
        line.speed = speed ? QString::number(*speed) : QString();
    }

    void readChara(CommandLine& line)
    {
        static const QRegularExpression form(QStringLiteral("\\A[NEOMS],[4-8],(1|1\\.5|2)\\z"));
        readText(QStringLiteral("chara"), line.chara);
        line.chara = line.chara.toUpper();
        if (!line.chara.isEmpty() && !form.match(line.chara).hasMatch())
            refuse(QStringLiteral("chara"), QStringLiteral("parity, data bits and stop bits, such as N,8,1"));
    }

    void readMode(CommandLine& line)
    {
        const QString name = m_parser.value(QStringLiteral("mode"));
        if (!m_parser.isSet(QStringLiteral("mode")))
            return;
        if (name != u"rtu" && name != u"ascii")
            refuse(QStringLiteral("mode"), QStringLiteral("rtu or ascii"));
        line.transmissionMode = name == u"ascii" ? 1 : 0;
    }

    void readFormat(CommandLine& line)
    {
        if (!m_parser.isSet(QStringLiteral("as")))
            return;
        const std::optional<OutputFormat> format = outputFormatNamed(m_parser.value(QStringLiteral("as")));
        if (!format)
            refuse(QStringLiteral("as"), QStringLiteral("table, csv or json"));
        line.format = format.value_or(OutputFormat::Table);
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
    for (const char* name : {"port", "speed", "chara", "mode", "slave", "model", "timeout", "as", "o"})
        parser.addOption({QString::fromLatin1(name), QString(), QStringLiteral("value")});
    for (const char* name : {"quiet", "help", "version"})
        parser.addOption(QCommandLineOption(QString::fromLatin1(name)));
}

void readCommand(const QStringList& words, ParsedCommandLine& result)
{
    const std::optional<Command> command = words.isEmpty() ? std::nullopt : commandNamed(words.first());
    if (words.isEmpty())
        result.error = QStringLiteral("no command; vorlantctl --help lists them");
    else if (!command)
        result.error =
            QStringLiteral("unknown command \"%1\"; vorlantctl --help lists the commands").arg(words.first());
    else if (words.size() > 1)
        result.error =
            QStringLiteral("%1: \"%2\" is too much; the command takes options only").arg(words.first(), words.at(1));
    else
        result.line.command = *command;
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
    return result;
}

QString helpText()
{
    return QString::fromUtf8(kHelp);
}
