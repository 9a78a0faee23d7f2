#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace platform {

// Translates between the program's own path texts (drive letter, backslashes, no difference between upper and lower
// case) and paths of this machine. Drive Z: is the root of the file system; other letters exist only when mounted.
// A text without a drive letter, or a network path, has no machine path (empty result).
class PathMap
{
public:
    // Types of a drive root, as the desktop platform numbers them.
    enum class DriveType { Unknown = 0, NoRoot = 1, Removable = 2, Fixed = 3, Remote = 4, CdRom = 5, RamDisk = 6 };

    PathMap();

    // Makes letter ("C".."Y") stand for the machine folder.
    void mount(QChar letter, const QString& machineFolder);

    // The machine path of a desktop path. Each part is looked up without regard to case; parts that do not exist are
    // taken as written. Empty when the drive is not there.
    QString toMachine(const QString& desktopPath) const;

    // The machine path of a file that is to be made or replaced: only its folder is looked up without regard to case,
    // so that a new name never stands for another file.
    QString toMachineForSaving(const QString& desktopPath) const;

    // The desktop path of an absolute machine path, by the longest mounted folder.
    QString toDesktop(const QString& machinePath) const;

    bool fileExists(const QString& desktopPath) const;       // exists and is not a folder
    qint64 fileSize(const QString& desktopPath) const;       // bytes; 0 for what is no file
    QDateTime lastChanged(const QString& desktopPath) const; // not valid for what is not there
    bool isReadable(const QString& desktopPath) const;
    bool dirExists(const QString& desktopPath) const;
    [[nodiscard]] bool
    makeOneDir(const QString& desktopPath) const; // creates one level; true when it exists afterwards
    void removeFile(const QString& desktopPath) const;
    QStringList filesIn(const QString& desktopFolder) const; // names of plain files, in name order; no hidden ones

    // Whether a desktop path can say the name of this machine file: it has none of \ : * ? " < > | in it.
    static bool hasDesktopName(const QString& machinePath);

    // root: a letter and a colon, with or without a backslash.
    DriveType driveType(const QString& root) const;

    struct DiskSpace
    {
        qint64 totalBytes;
        qint64 freeBytes; // for the caller
    };
    // Nothing when the path has no machine path or cannot be asked.
    std::optional<DiskSpace> diskSpace(const QString& desktopPath) const;

private:
    QHash<QChar, QString> m_drives;
};

} // namespace platform
