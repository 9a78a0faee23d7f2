#include "Faults.h"

#include <QStringList>

bool Faults::add(const QString& text, QString& error)
{
    static const QStringList kKinds{QStringLiteral("silent"), QStringLiteral("corrupt"), QStringLiteral("truncate"),
                                    QStringLiteral("exception")};
    const QString when = text.section(u'@', 1);
    const QString what = text.section(u'@', 0, 0);
    const auto index = kKinds.indexOf(what.section(u':', 0, 0));
    if (index < 0) {
        error = QStringLiteral("unknown fault \"%1\"; known: %2").arg(text, kKinds.join(QStringLiteral(", ")));
        return false;
    }
    Fault fault;
    fault.kind = static_cast<Kind>(index);
    bool ok = true;
    if (fault.kind == Kind::Exception) {
        fault.code = what.section(u':', 1).toInt(&ok);
        ok = ok && fault.code >= 1 && fault.code <= 255;
    } else {
        ok = !what.contains(u':');
    }
    bool whenOk = true;
    if (when.startsWith(QStringLiteral("every"))) {
        fault.every = when.mid(5).toInt(&whenOk);
        whenOk = whenOk && fault.every >= 1;
    } else if (text.contains(u'@')) {
        fault.probability = when.toDouble(&whenOk);
        whenOk = whenOk && fault.probability >= 0 && fault.probability <= 1;
    }
    if (!ok || !whenOk) {
        error = QStringLiteral("fault \"%1\" makes no sense; write e.g. exception:2, silent@0.3 or corrupt@every3")
                    .arg(text);
        return false;
    }
    m_faults.push_back(fault);
    return true;
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
        if (!strikes(fault))
            continue;
        verdict.silent = verdict.silent || fault.kind == Kind::Silent;
        verdict.corrupt = verdict.corrupt || fault.kind == Kind::Corrupt;
        verdict.truncate = verdict.truncate || fault.kind == Kind::Truncate;
        if (fault.kind == Kind::Exception)
            verdict.exception = fault.code;
    }
    return verdict;
}

QByteArray Faults::damaged(const QByteArray& reply, const Verdict& verdict)
{
    if (verdict.silent || reply.isEmpty())
        return {};
    QByteArray bytes = reply;
    if (verdict.corrupt) {
        const auto place = std::uniform_int_distribution<qsizetype>(0, bytes.size() - 1)(m_random);
        bytes[place] = static_cast<char>(bytes[place] ^ 0x10);
    }
    return verdict.truncate ? bytes.left(bytes.size() / 2) : bytes;
}
