#include "ShippedFiles.h"

#include "FileSnapshot.h"
#include "LanguageAdditions.h"
#include "LockedFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <limits>

using platform::Failure;
using platform::LockedFolder;
using platform::Result;

namespace {

const QString kShipped = QStringLiteral("/.shipped/");
const QString kLanguageFolder = QStringLiteral("Lang/");
const QString kHelp = QStringLiteral("help/"); // nobody edits it: what a power cut damages the next package repairs

std::optional<QByteArray> contentOf(const QString& path)
{
    const platform::FileSnapshot file =
        platform::FileSnapshot::read(QFile::encodeName(path), std::numeric_limits<qint64>::max());
    if (!file.state.exists() || !file.content.ok())
        return {}; // half a file must not take the place of a whole one
    return file.content.value();
}

// A link leads to a file that somebody keeps himself.
std::optional<QByteArray> plainContentOf(const QString& path)
{
    return QFileInfo(path).isSymLink() ? std::nullopt : contentOf(path);
}

bool isThere(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

QByteArray encodedFolder(const QString& path)
{
    return QFile::encodeName(QFileInfo(path).path());
}

Result<> writeRecord(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    const Result<LockedFolder> folder = LockedFolder::lock(encodedFolder(path));
    return folder.ok() ? folder.value().replace(QFile::encodeName(path), bytes, platform::Flush::Later)
                       : Failure{folder.error()};
}

QStringList namesBelow(const QString& folder)
{
    QStringList names;
    QDirIterator walk(folder, QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (walk.hasNext())
        names << walk.next().mid(folder.size() + 1);
    names.sort();
    return names;
}

} // namespace

ShippedFiles::ShippedFiles(const QString& installed, const QString& own, const platform::CodePage& codePage)
    : m_installed(installed), m_own(own), m_codePage(codePage)
{}

FolderNotices ShippedFiles::update() const
{
    FolderNotices notices;
    const QStringList names = namesBelow(m_installed);
    for (const QString& name : names) {
        const Result<> updated = updateFile(name, notices);
        if (updated.ok())
            continue;
        notices.append({kNotFilled, m_own, updated.error()});
        break;
    }
    return notices;
}

bool ShippedFiles::isWhole() const
{
    const QStringList names = namesBelow(m_installed);
    return std::all_of(names.cbegin(), names.cend(),
                       [this](const QString& name) { return isThere(m_own + u'/' + name); });
}

std::optional<QByteArray> ShippedFiles::successor(const QByteArray& copy, const std::optional<QByteArray>& shipped,
                                                  const QByteArray& next, bool isLanguage) const
{
    if (copy == next || (isLanguage && withAdditions(next, copy, next, m_codePage)))
        return copy;
    if (!shipped)
        return {};
    if (copy == *shipped)
        return next;
    return isLanguage ? withAdditions(*shipped, copy, next, m_codePage) : std::nullopt;
}

Result<> ShippedFiles::updateFile(const QString& name, FolderNotices& notices) const
{
    const QString path = m_own + u'/' + name;
    const QString record = m_own + kShipped + name;
    const std::optional<QByteArray> next = contentOf(m_installed + u'/' + name);
    const std::optional<QByteArray> shipped = contentOf(record);
    if (!next || (isThere(path) && shipped == next))
        return {};
    if (!QDir().mkpath(QFileInfo(path).path()))
        return Failure{qt_error_string()};
    const Result<LockedFolder> folder = LockedFolder::lock(encodedFolder(path)); // whoever else changes the copy waits
    if (!folder.ok())
        return Failure{folder.error()};
    const std::optional<QByteArray> copy = plainContentOf(path);
    std::optional<QByteArray> wanted = next;
    if (isThere(path))
        wanted = copy ? successor(*copy, shipped, *next, name.startsWith(kLanguageFolder)) : std::nullopt;
    const auto flush = name.startsWith(kHelp) ? platform::Flush::Later : platform::Flush::ToDisk;
    Result<> replaced =
        wanted && wanted != copy ? folder.value().replace(QFile::encodeName(path), *wanted, flush) : Result<>();
    if (!replaced.ok())
        return replaced;
    if (!wanted)
        notices.append({QStringLiteral("%1 was edited here and is kept as it is. The new version is %2: compare them."),
                        path, m_installed + u'/' + name});
    return writeRecord(record, *next);
}
