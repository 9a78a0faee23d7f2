#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

// A folder of the test's own, gone with it. Names are relative to it.
struct ScratchFolder
{
    QTemporaryDir dir;

    QString path(const QString& name = {}) const { return dir.filePath(name); }
    QByteArray encoded(const QString& name = {}) const { return QFile::encodeName(path(name)); }

    // Writes a file, its folder included. False when it cannot.
    bool put(const QString& name, const QByteArray& bytes) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }
    QByteArray content(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
    }
    // What is in the folder, whatever it is.
    QStringList names(const QString& folder = {}) const
    {
        return QDir(path(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
};
