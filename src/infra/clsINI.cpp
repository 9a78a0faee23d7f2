#include "clsINI.h"

#include "FolderName.h"
#include "IniBatch.h"
#include "Numbers.h"

#include <algorithm>

namespace {

constexpr int kGetFailure = 759;
constexpr int kSectionFailure = 763;

QString textOf(const QVariant& item)
{
    switch (item.typeId()) {
    case QMetaType::Bool:
        return item.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case QMetaType::Float:
        return platform::singleText(item.toFloat());
    case QMetaType::Double:
        return platform::doubleText(item.toDouble());
    default:
        return item.toString();
    }
}

QString folderText(const QString& folder)
{
    return folder.isEmpty() ? QString() : withBackslash(folder);
}

} // namespace

clsINI::clsINI(Context& context)
    : m_iniPath(withBackslash(context.machine.folders.program())),
      m_iniFileName(context.machine.folders.baseName() + QStringLiteral(".ini")), m_context(context)
{}

void clsINI::setIniPath(const QString& NewValue)
{
    setFolder(m_context.machine.paths, NewValue, m_iniPath);
    m_machineFile.clear();
}

void clsINI::setIniFileName(const QString& NewValue)
{
    setFileName(NewValue, m_iniFileName);
    m_machineFile.clear();
}

bool clsINI::setIniFileOrNone(const QString& name)
{
    m_isNone = !isBareFileName(name);
    setIniFileName(name);
    return !m_isNone;
}

void clsINI::setBufferSize(int size)
{
    if (size > 0)
        m_bufferSize = size;
}

const QString& clsINI::machineFile()
{
    if (m_machineFile.isEmpty() && !m_isNone)
        m_machineFile = m_context.machine.paths.toMachine(m_iniPath + m_iniFileName);
    return m_machineFile;
}

QString clsINI::GetIniData(const QString& strSection, const QString& strKey, const QString& strDefault, bool bReadOnly)
{
    platform::ProfileStore& profiles = m_context.machine.profiles;
    const auto stored = profiles.read(machineFile(), strSection, strKey, strDefault, m_bufferSize);
    if (!stored.found && !isReadable(kGetFailure))
        return strDefault;
    const QString value = stored.count >= 1 ? stored.text : strDefault;
    // A key that holds its default already needs no writing.
    const bool kept = stored.found && stored.text == strDefault;
    if (value == strDefault && !bReadOnly && !kept && !m_isNone)
        IniBatch::note(m_context, kPutFailure, profiles.writeDefault(machineFile(), strSection, strKey, strDefault));
    return value;
}

void clsINI::PutIniData(const QString& strSection, const QString& strKey, const QVariant& vntItem)
{
    if (m_isNone || !vntItem.isValid() || (vntItem.isNull() && vntItem.typeId() != QMetaType::QString))
        return;
    IniBatch::note(m_context, kPutFailure,
                   m_context.machine.profiles.write(machineFile(), strSection, strKey, textOf(vntItem)));
}

bool clsINI::isReadable(int number)
{
    const platform::Result<> outcome = m_context.machine.profiles.readable(machineFile());
    IniBatch::note(m_context, number, outcome);
    return outcome.ok();
}

QString clsINI::GetWindowsPath() const
{
    return folderText(m_context.machine.folders.windows());
}

QString clsINI::GetSystemPath() const
{
    return folderText(m_context.machine.folders.system());
}

QString clsINI::GetWinTempPath() const
{
    return folderText(m_context.machine.folders.temporary());
}

int clsINI::EnumSectionString(const QString& strSection, QStringList& strSectionString)
{
    const QStringList lines = m_context.machine.profiles.readSection(machineFile(), strSection);
    if (lines.isEmpty()) {
        isReadable(kSectionFailure);
        return -1;
    }
    strSectionString = lines;
    return static_cast<int>(lines.size());
}

bool clsINI::hasSection(const QString& section)
{
    return m_context.machine.profiles.hasSection(machineFile(), section);
}

int clsINI::numberedSections(const QString& prefix)
{
    const QStringList sections = m_context.machine.profiles.sections(machineFile());
    return static_cast<int>(std::count_if(sections.begin(), sections.end(), [&](const QString& section) {
        if (!section.startsWith(prefix, Qt::CaseInsensitive))
            return false;
        bool isNumber = false;
        section.mid(prefix.size()).toUInt(&isNumber);
        return isNumber;
    }));
}

int clsINI::clearSection(const QString& strSection)
{
    QStringList lines;
    EnumSectionString(strSection, lines);
    IniBatch batch(m_context);
    int emptied = 0;
    for (const QString& line : lines) {
        const auto equals = line.size() > 1 ? line.indexOf(u'=') : -1;
        const QString key = equals < 0 ? line : line.left(equals);
        const QString value = equals < 0 ? line : line.mid(equals + 1);
        if (value.isEmpty())
            continue;
        PutIniData(strSection, key, QStringLiteral(""));
        ++emptied;
    }
    batch.commitLogged();
    return emptied;
}
