#include "SetFile.h"

#include "HeldValue.h"
#include "ItemStore.h"
#include "ProgramContext.h"
#include "WrittenItems.h"
#include "clsKX.h"

#include <QFileInfo>

#include <utility>

namespace {

constexpr int kListed = 10;

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
        return badFile(QStringLiteral("it is not a plain file; name a parameter file"));
    if (!file.isReadable())
        return badFile(QStringLiteral("permission denied; change its rights"));
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

CommandResult SetFile::badFile(const QString& error) const
{
    return CommandResult::failed(ExitStatus::BadFile, QStringLiteral("%1: %2").arg(m_name, error));
}

CommandResult SetFile::values(const clsKX& kx, Values& values) const
{
    ParameterSet set;
    const ParameterLoad load = ParameterFile(m_program.library(), m_desktopPath).read(kx.data(), set);
    if (load.outcome == ParameterLoad::Outcome::OtherModel)
        return CommandResult::failed(ExitStatus::WrongModel,
                                     QStringLiteral("%1: the file is of model %2, not %3; choose a file of that model")
                                         .arg(m_name, set.modelString, kx.modelString()));
    if (load.outcome != ParameterLoad::Outcome::Loaded)
        return CommandResult::failed(ExitStatus::BadFile, load.detail + QStringLiteral(" Correct the file."));
    if (load.missing.size() == set.values.size())
        return badFile(QStringLiteral("it holds no values in its section [Data]; name a parameter file"));
    values = set.values;
    return {};
}

// Values that come from the file count like those of the controller: none is an edit.
void SetFile::apply(clsKX& kx, const Values& values)
{
    kx.setValues(values);
    kx.takeAsRead();
    for (const auto& entry : values)
        kx.getDataByTag(entry.first)->cause = {ChangeCause::Kind::Loaded, {}};
}

CommandResult SetFile::show(clsKX& kx) const
{
    Values all;
    const CommandResult read = values(kx, all);
    if (!read.ok())
        return read;
    Values shown;
    for (const auto& entry : std::as_const(all)) {
        clsData& item = *kx.getDataByTag(entry.first);
        item.setKnown(false);
        if (isRead(kx.data(), item))
            shown.append(entry);
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
    for (const auto& entry : std::as_const(all)) {
        const clsData& item = *kx.getDataByTag(entry.first);
        if (!item.isKnown() || !isRead(kx.data(), item) || !kx.isWritable(item))
            continue;
        written.append(entry);
        if (entry.second.isEmpty())
            missing << entry.first;
    }
    if (!missing.isEmpty())
        return badFile(QStringLiteral("it holds no value for %1; nothing was written: read and save the set anew")
                           .arg(listed(missing)));
    apply(kx, written);
    const QStringList unfit = unfitFor(kx, written);
    if (unfit.isEmpty())
        return {};
    return CommandResult::failed(
        ExitStatus::Refused,
        QStringLiteral(
            "%1: no value for the controller, or outside the limits: %2; nothing was written: correct the file")
            .arg(m_name, listed(unfit)));
}

// What the controller itself holds may stay, whatever the limits say.
QStringList SetFile::unfitFor(const clsKX& kx, const Values& values)
{
    QStringList unfit;
    for (const auto& [tag, value] : values) {
        const clsData& item = *kx.getDataByTag(tag);
        const clsKXAdr& image = *kx.ColAdr().find(item.WSection());
        if (heldValue(item, image) != value && (!item.isAllowed() || !fitsImage(item, image)))
            unfit << QStringLiteral("%1=%2").arg(tag, value);
    }
    return unfit;
}

CommandResult SetFile::save(const clsKX& kx) const
{
    const QFileInfo file(m_name);
    if (!hasUsableName(file))
        return badFile(kUnusableName);
    if (file.exists() && !file.isFile())
        return badFile(QStringLiteral("it is not a plain file; choose another place with -o"));
    const platform::Result<> saved = ParameterFile(m_program.library(), m_desktopPath).save(kx.currentSet());
    if (saved.ok())
        return {};
    return CommandResult::failed(ExitStatus::BadFile, saved.error() + QStringLiteral("; choose another place with -o"));
}
