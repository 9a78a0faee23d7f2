#pragma once

#include "CodePage.h"
#include "FolderNotice.h"
#include "Result.h"

#include <QByteArray>
#include <QString>
#include <optional>

// The notice about a folder that cannot be filled.
inline const QString kNotFilled = QStringLiteral("The program folder %1 cannot be filled: %2. Make room there or give "
                                                 "yourself the right to write there, then start again.");

// The files that come with the program (definitions, texts, help), as a user's own folder holds them. Beside the copies
// the folder ".shipped" keeps each file as it was shipped when the copy was last looked at; that tells an edited copy
// from one that is only old, and a new package from the one before.
//
// A missing file is copied, a copy that nobody edited follows the package (a language file keeps what was added to it),
// an edited one stays and is reported once for each version. Every file is replaced whole or not at all, so a start
// that was killed is completed by the next.
class ShippedFiles
{
public:
    // Both as machine paths; the codePage is that of the files.
    ShippedFiles(const QString& installed, const QString& own, const platform::CodePage& codePage);

    // Brings the own folder up to date; returns what has to be reported, which is nothing on most days. The first file
    // that cannot be written ends it.
    FolderNotices update() const;
    // Whether the own folder holds every file that is shipped, edited or not.
    bool isWhole() const;

private:
    // Adds the file to the notices when it is an edited one.
    platform::Result<> updateFile(const QString& name, FolderNotices& notices) const;
    // What has to be in the place of the copy; nothing when it was edited.
    std::optional<QByteArray> successor(const QByteArray& copy, const std::optional<QByteArray>& shipped,
                                        const QByteArray& next, bool isLanguage) const;

    QString m_installed;
    QString m_own;
    platform::CodePage m_codePage;
};
