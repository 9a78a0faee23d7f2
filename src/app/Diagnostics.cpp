#include "Diagnostics.h"

#include "FileLocations.h"
#include "LogReader.h"
#include "ProgramContext.h"
#include "ProgramVersion.h"
#include "VisibleText.h"
#include "clsINI.h"

#include <QStringList>
#include <QSysInfo>

#include <algorithm>

namespace {

constexpr size_t kErrors = 20; // the last ones

QStringList portLines(const platform::ComPorts& ports)
{
    QStringList lines;
    for (const platform::ComPort& port : ports.all()) {
        QStringList parts{port.number > 0 ? platform::ComPorts::nameOf(port.number) : QStringLiteral("-"), port.device,
                          port.description, port.isPluggedIn ? QString() : QStringLiteral("not plugged in")};
        parts.removeAll(QString());
        lines << parts.join(QStringLiteral("  "));
    }
    return lines;
}

QStringList settingLines(Context& context)
{
    clsINI ini = mainSettings(context);
    QStringList lines;
    for (const char* section : {"Setting", "Comm1", "Ports"}) {
        QStringList ofSection;
        ini.EnumSectionString(QLatin1String(section), ofSection);
        lines << QStringLiteral("[%1]").arg(QLatin1String(section)) << ofSection;
    }
    return lines;
}

QStringList errorLines(ProgramContext& program)
{
    const auto entries = LogReader(program.machine().codePage, program.errorLog().filePath()).look().entries;
    QStringList lines;
    for (size_t i = entries.size() - std::min(entries.size(), kErrors); i < entries.size(); ++i)
        lines << entries[i].stamp + u' ' + entries[i].text;
    return lines;
}

} // namespace

QString diagnosticsText(ProgramContext& program, const QString& windowSystem, const QString& home)
{
    QStringList lines{QStringLiteral("Vorlant %1").arg(ProgramVersion::current().plain()),
                      QStringLiteral("Qt %1, %2").arg(QLatin1String(qVersion()), windowSystem),
                      QStringLiteral("%1, %2 %3, %4")
                          .arg(QSysInfo::prettyProductName(), QSysInfo::kernelType(), QSysInfo::kernelVersion(),
                               QSysInfo::currentCpuArchitecture()),
                      QStringLiteral("Language: %1").arg(program.context().languageFile)};
    lines << QString() << QStringLiteral("Ports:") << portLines(program.ports());
    lines << QString() << QStringLiteral("Settings:") << settingLines(program.context());
    lines << QString() << QStringLiteral("Last errors:") << errorLines(program);
    QString text = platform::visibleTexts(lines).join(u'\n') + u'\n';
    if (!home.isEmpty())
        text.replace(home, QStringLiteral("~")).replace(program.machine().paths.toDesktop(home), QStringLiteral("~"));
    return text;
}
