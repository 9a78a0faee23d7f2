#include "DefinitionFault.h"

#include "FolderName.h"
#include "clsLibrary.h"

#include <algorithm>
#include <initializer_list>

namespace {

// One file of the definition folder, asked what it is.
class Definition
{
public:
    Definition(const clsLibrary& library, const QString& name)
        : m_machine(library.context().machine),
          m_file(m_machine.paths.toMachine(library.getIniFilePath(QString()) + u'\\' + name))
    {}

    QString file() const { return m_file; }

    bool isScreen() const
    {
        for (const char16_t* section : {u"Datas1", u"BlockInfo1", u"Strings1"}) {
            if (m_machine.profiles.hasSection(m_file, QString::fromUtf16(section)))
                return true;
        }
        return holdsAny(QStringLiteral("Setting"), {u"DataMaxCount", u"BlockMaxCount", u"StringMaxCount", u"ExtName"});
    }
    bool isComm() const
    {
        const QStringList sections = m_machine.profiles.sections(m_file);
        return std::any_of(sections.begin(), sections.end(), [this](const QString& section) {
            return holdsAny(section, {u"ReadCmdMax", u"ReadCmd1", u"WriteCmdMax", u"WriteCmd1"});
        });
    }

private:
    bool holdsAny(const QString& section, std::initializer_list<const char16_t*> keys) const
    {
        return std::any_of(keys.begin(), keys.end(), [&](const char16_t* key) {
            return m_machine.profiles.read(m_file, section, QString::fromUtf16(key), {}, 2).found;
        });
    }

    platform::Machine& m_machine;
    QString m_file;
};

} // namespace

QString definitionFault(clsLibrary& library, const ModelEntry& entry)
{
    for (const QString& name : {entry.screenFile, entry.commFile}) {
        if (!name.isEmpty() && !isBareFileName(name))
            return library.tranStr(kRefusedFileName).arg(name);
    }
    const Definition screen(library, entry.screenFile);
    if (!entry.screenFile.isEmpty() && !screen.isScreen() && screen.isComm())
        return library.tranStr(QStringLiteral("%1 is a comm file, but the model catalogue names it as a screen file."))
            .arg(screen.file());
    const Definition comm(library, entry.commFile);
    if (!entry.commFile.isEmpty() && comm.isScreen() && !comm.isComm())
        return library.tranStr(QStringLiteral("%1 is a screen file, but the model catalogue names it as a comm file."))
            .arg(comm.file());
    return {};
}
