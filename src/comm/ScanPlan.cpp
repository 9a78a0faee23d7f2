#include "ScanPlan.h"

#include "FrameLength.h"
#include "LineFormat.h"
#include "ModbusFrame.h"
#include "ModelCodes.h"
#include "ProtocolNumbers.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kThinkingMs = 120;
constexpr int kGapCharacters = 5;
constexpr int kQuestionBytes = 8; // slave, function, direction, address, count
constexpr double kMsPerSecondOfLine = 1000;
constexpr int kUsualSpeed = 9600;
constexpr int kLeastSpeed = 50;

template <class Value> QList<Value> chosenOr(const QList<Value>& chosen, const QList<Value>& likely)
{
    return chosen.isEmpty() ? likely : chosen;
}

template <class Value> bool allows(const QList<Value>& chosen, const Value& value)
{
    return chosen.isEmpty() || chosen.contains(value);
}

double bitsPerCharacter(const QString& chara)
{
    const platform::LineFormat format = platform::parseLineFormat(chara).value_or(platform::LineFormat());
    const int parityBits = format.parity == QSerialPort::NoParity ? 0 : 1;
    const int stopBits = format.stopBits == QSerialPort::OneStop ? 1 : 2;
    return 1 + format.dataBits + parityBits + stopBits;
}

} // namespace

bool LineSettings::isPossible() const
{
    const auto format = platform::parseLineFormat(chara);
    return format && (mode == 1 || format->dataBits == QSerialPort::Data8);
}

QString LineSettings::text() const
{
    return speed + u',' + chara + u' ' + scanplan::modeText(mode);
}

namespace scanplan {

QList<LineSettings> settings(const LineSettings& inUse, const Choice& choice)
{
    QList<LineSettings> found;
    const auto add = [&found](const LineSettings& line) {
        if (line.isPossible() && !found.contains(line))
            found << line;
    };
    if (allows(choice.speeds, inUse.speed) && allows(choice.charas, inUse.chara) && allows(choice.modes, inUse.mode))
        add(inUse);
    for (const QString& speed : chosenOr(choice.speeds, {QStringLiteral("9600"), QStringLiteral("19200")})) {
        for (const QString& chara : chosenOr(choice.charas, {QStringLiteral("N,8,1"), QStringLiteral("E,7,1"),
                                                             QStringLiteral("E,8,1"), QStringLiteral("N,8,2")})) {
            for (const int mode : chosenOr(choice.modes, {0, 1}))
                add({speed, chara, mode});
        }
    }
    return found;
}

QString charaOf(const QString& text)
{
    QString chara = text.trimmed().toUpper();
    if (chara.size() == 3)
        chara = QStringList{chara.mid(0, 1), chara.mid(1, 1), chara.mid(2, 1)}.join(u',');
    return platform::parseLineFormat(chara) ? chara : QString();
}

QString modeText(int mode)
{
    return mode == 1 ? QStringLiteral("ASCII") : QStringLiteral("RTU");
}

int timeOutMs(const LineSettings& line)
{
    const bool ascii = line.mode == 1;
    const int answerBytes = framelength::ofReply(functioncode::kMemory, modelcodes::kModelStringLength);
    const auto characters =
        modbusframe::wireBytes(kQuestionBytes, ascii) + kGapCharacters + modbusframe::wireBytes(answerBytes, ascii);
    bool isNumber = false;
    const int speed = line.speed.toInt(&isNumber);
    const double characterMs =
        kMsPerSecondOfLine * bitsPerCharacter(line.chara) / (isNumber ? std::max(speed, kLeastSpeed) : kUsualSpeed);
    return kThinkingMs + static_cast<int>(std::ceil(static_cast<double>(characters) * characterMs));
}

} // namespace scanplan
