#include "SetFile.h"

#include "EntryOrder.h"
#include "HeldValue.h"
#include "ItemLimits.h"
#include "ItemStore.h"
#include "ProgramContext.h"
#include "WrittenItems.h"
#include "clsKX.h"

#include <QFileInfo>

namespace {

constexpr int kListed = 10;
const QString kUnit = QStringLiteral("SWQCF");

const QString kUnusableName =
    QStringLiteral("a parameter file cannot have a name with one of \\ : * ? \" < > |; choose another name");

bool hasUsableName(const QFileInfo& file)
{
    return platform::PathMap::hasDesktopName(file.absoluteFilePath());
}

QString listed(const QStringList& texts)
{
    return texts.mid(0, kListed).join(u", ") + (texts.size() > kListed ? QStringLiteral(", ...") : QString());
}

} // namespace

SetFile::SetFile(ProgramContext& program, const QString& fileName)
    : m_program(program), m_name(fileName),
      m_desktopPath(program.machine().paths.toDesktop(QFileInfo(fileName).absoluteFilePath()))
{}

CommandResult SetFile::open(const QString& wantedModel)
{
    const QFileInfo file(m_name);
    if (!file.exists())
        return badFile(QStringLiteral("there is no such file; name a parameter file"));
    if (!file.isFile())
        return badFile(QStringLiteral("it is no plain file; name a parameter file"));
    if (!file.isReadable())
        return badFile(QStringLiteral("it may not be read by you; change its rights"));
    if (file.size() > platform::ProfileStore::kMaxFileBytes)
        return badFile(QStringLiteral("it is too large for a parameter file"));
    if (!hasUsableName(file))
        return badFile(kUnusableName);
    const platform::Result<> readable = m_program.machine().profiles.readable(file.absoluteFilePath());
    if (!readable.ok())
        return CommandResult::failed(ExitStatus::BadFile, readable.error());
    m_modelString = ParameterFile(m_program.library(), m_desktopPath).modelString();
    if (m_modelString.isEmpty())
        return badFile(QStringLiteral("it names no model in its section [Info]; name a parameter file"));
    if (!m_modelString.startsWith(wantedModel))
        return CommandResult::failed(ExitStatus::WrongModel,
                                     QStringLiteral("%1: the file is of model %2, not %3; choose another file or model")
                                         .arg(m_name, m_modelString, wantedModel));
    return {};
}

CommandResult SetFile::badFile(const QString& trouble) const
{
    return CommandResult::failed(ExitStatus::BadFile, QStringLiteral("%1: %2").arg(m_name, trouble));
}

CommandResult SetFile::values(const clsKX& kx, Values& values) const
{
    ParameterSet set;
    const ParameterLoad load = ParameterFile(m_program.library(), m_desktopPath).read(kx, set);
    if (load.outcome == ParameterLoad::Outcome::OtherModel)
        return CommandResult::failed(ExitStatus::WrongModel,
                                     QStringLiteral("%1: the file is of model %2, not %3; choose a file of that model")
                                         .arg(m_name, set.modelString, kx.modelString()));
    if (load.outcome != ParameterLoad::Outcome::Loaded)
        return CommandResult::failed(ExitStatus::BadFile, load.detail + QStringLiteral(" Mend the file."));
    if (load.missing.size() == set.values.size())
        return badFile(QStringLiteral("it holds no values in its section [Data]; name a parameter file"));
    for (const auto& [tag, value] : set.values)
        values.append({kx.getDataByTag(tag), value});
    return {};
}

// What a selection table sets comes before the values of the file, which hold over it.
void SetFile::apply(clsKX& kx, const Values& values)
{
    std::vector<const clsData*> items;
    for (const auto& entry : values)
        items.push_back(entry.first);
    for (const size_t place : entryOrder(items)) {
        const auto& [item, value] = values[static_cast<qsizetype>(place)];
        if (item->Key() == kUnit && value.isEmpty())
            continue; // the unit stays as it is
        item->setData(value);
        item->setKnown(!value.isEmpty());
        if (item->Key() == kUnit)
            kx.setUnitSwitch(kx.library().toLong(value, 0));
    }
    for (const auto& item : kx.items())
        item->Edit = EditState::kUntouched;
}

CommandResult SetFile::show(clsKX& kx) const
{
    Values all;
    const CommandResult read = values(kx, all);
    if (!read.ok())
        return read;
    Values shown;
    for (const auto& [item, value] : all) {
        item->setKnown(false);
        if (isRead(kx, *item))
            shown.append({item, value});
    }
    apply(kx, shown);
    return {};
}

CommandResult SetFile::replaceWritten(clsKX& kx) const
{
    Values all;
    const CommandResult read = values(kx, all);
    if (!read.ok())
        return read;
    Values written;
    QStringList missing;
    for (const auto& [item, value] : all) {
        if (!item->isKnown() || !isRead(kx, *item) || !isWritten(kx, *item))
            continue;
        written.append({item, value});
        if (value.isEmpty())
            missing << item->Key();
    }
    if (!missing.isEmpty())
        return badFile(QStringLiteral("it holds no value for %1; nothing was written: read and save the set anew")
                           .arg(listed(missing)));
    apply(kx, written);
    QStringList unfit;
    for (const auto& [item, value] : written) {
        // What the controller itself holds may stay, whatever the limits say.
        const clsKXAdr* image = kx.ColAdr().find(item->WSection());
        if (heldValue(*item, *image) == value)
            continue;
        if (!isAllowed(*item) || !storeInImage(*item, *kx.ColAdr().find(item->WSection())))
            unfit << QStringLiteral("%1=%2").arg(item->Key(), value);
    }
    if (unfit.isEmpty())
        return {};
    return CommandResult::failed(
        ExitStatus::Refused,
        QStringLiteral("%1: no value for the controller, or outside the limits: %2; nothing was written: mend the file")
            .arg(m_name, listed(unfit)));
}

CommandResult SetFile::save(const clsKX& kx) const
{
    const QFileInfo file(m_name);
    if (!hasUsableName(file))
        return badFile(kUnusableName);
    if (file.exists() && !file.isFile())
        return badFile(QStringLiteral("it is no plain file; choose another place with -o"));
    const QString trouble = ParameterFile(m_program.library(), m_desktopPath).save(kx.currentSet());
    if (trouble.isEmpty())
        return {};
    return CommandResult::failed(ExitStatus::BadFile, trouble + QStringLiteral("; choose another place with -o"));
}
