#include "Faults.h"

#include "ModbusFrame.h"
#include "ProtocolNumbers.h"
#include "SlaveRange.h"

#include <QStringList>

namespace {

constexpr int kMaxDelayMs = 3600000;
constexpr int kMaxExtraBytes = 4;

struct KindRow
{
    const char* name;
    const char* argument; // what stands for it in texts; null: takes none
    int highest;          // of the argument, which counts from 1
};

// In the order of Faults::Kind.
constexpr KindRow kKinds[] = {{"silent", nullptr, 0},
                              {"drop", nullptr, 0},
                              {"corrupt", nullptr, 0},
                              {"truncate", nullptr, 0},
                              {"extra", nullptr, 0},
                              {"delay", "MS", kMaxDelayMs},
                              {"exception", "CODE", exceptioncode::kLast},
                              {"wrong-slave", nullptr, 0},
                              {"noise", nullptr, 0},
                              {"reset", nullptr, 0}};

const KindRow* findKind(const QString& name)
{
    for (const KindRow& row : kKinds) {
        if (name == QLatin1String(row.name))
            return &row;
    }
    return nullptr;
}

// what: the fault without its WHEN.
bool parseArgument(const QString& what, const KindRow& row, int& argument)
{
    if (row.argument == nullptr)
        return !what.contains(u':');
    bool ok = false;
    argument = what.section(u':', 1).toInt(&ok);
    return ok && argument >= 1 && argument <= row.highest;
}

// The same reply from the next slave.
QByteArray fromOtherSlave(const QByteArray& reply, bool ascii)
{
    QByteArray frame = ascii ? modbusframe::fromAscii(reply).chopped(1) : reply.chopped(2);
    frame[0] = static_cast<char>(static_cast<quint8>(frame[0]) % slaverange::kLast + 1);
    return modbusframe::toWire(frame, ascii);
}

} // namespace

QString Faults::kinds()
{
    QStringList texts;
    for (const KindRow& row : kKinds)
        texts << QLatin1String(row.name) +
                     (row.argument == nullptr ? QString() : QLatin1Char(':') + QLatin1String(row.argument));
    return texts.join(QStringLiteral(", "));
}

platform::Result<> Faults::add(const QString& text)
{
    const QString what = text.section(u'@', 0, 0);
    const KindRow* row = findKind(what.section(u':', 0, 0));
    if (row == nullptr)
        return platform::Failure{QStringLiteral("unknown fault \"%1\"; known: %2").arg(text, kinds())};
    Fault fault;
    fault.kind = static_cast<Kind>(row - kKinds);
    if (!parseArgument(what, *row, fault.argument) || !parseWhen(text, fault))
        return platform::Failure{
            QStringLiteral("fault \"%1\" makes no sense; write e.g. exception:2, silent@0.3 or corrupt@every3")
                .arg(text)};
    m_faults.push_back(fault);
    return {};
}

bool Faults::parseWhen(const QString& text, Fault& fault)
{
    if (!text.contains(u'@'))
        return true;
    const QString when = text.section(u'@', 1);
    bool ok = false;
    if (when.startsWith(QStringLiteral("every"))) {
        fault.every = when.mid(5).toInt(&ok);
        return ok && fault.every >= 1;
    }
    fault.probability = when.toDouble(&ok);
    return ok && fault.probability >= 0 && fault.probability <= 1;
}

bool Faults::strikes(Fault& fault)
{
    if (fault.every > 0)
        return ++fault.count % fault.every == 0;
    return std::uniform_real_distribution<double>(0, 1)(m_random) < fault.probability;
}

Faults::Verdict Faults::next()
{
    Verdict verdict;
    for (Fault& fault : m_faults) {
        if (strikes(fault))
            apply(fault, verdict);
    }
    return verdict;
}

void Faults::apply(const Fault& fault, Verdict& verdict)
{
    switch (fault.kind) {
    case Kind::Silent:
        verdict.silent = true;
        break;
    case Kind::Drop:
        verdict.drop = true;
        break;
    case Kind::Corrupt:
        verdict.corrupt = true;
        break;
    case Kind::Truncate:
        verdict.truncate = true;
        break;
    case Kind::Extra:
        verdict.extra = true;
        break;
    case Kind::Delay:
        verdict.delayMs = fault.argument;
        break;
    case Kind::Exception:
        verdict.exception = fault.argument;
        break;
    case Kind::WrongSlave:
        verdict.wrongSlave = true;
        break;
    case Kind::Noise:
        verdict.noise = true;
        break;
    case Kind::Reset:
        verdict.reset = true;
        break;
    }
}

qsizetype Faults::pick(qsizetype first, qsizetype last)
{
    return std::uniform_int_distribution<qsizetype>(first, last)(m_random);
}

QByteArray Faults::randomBytes(qsizetype count)
{
    QByteArray bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(pick(0, 255));
    return bytes;
}

QByteArray Faults::damaged(const QByteArray& reply, const Verdict& verdict, bool ascii)
{
    if (verdict.silent || verdict.reset || reply.isEmpty())
        return {};
    QByteArray bytes = verdict.wrongSlave ? fromOtherSlave(reply, ascii) : reply;
    if (verdict.corrupt) {
        const qsizetype place = pick(0, bytes.size() - 1);
        bytes[place] = static_cast<char>(bytes[place] ^ 0x10);
    }
    if (verdict.drop)
        bytes.remove(pick(0, bytes.size() - 1), 1);
    if (verdict.truncate)
        bytes.truncate(bytes.size() / 2);
    if (verdict.noise)
        bytes = randomBytes(bytes.size());
    if (verdict.extra)
        bytes += randomBytes(pick(1, kMaxExtraBytes));
    return bytes;
}
