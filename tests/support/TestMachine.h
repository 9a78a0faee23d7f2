#pragma once

#include "Context.h"
#include "FakeClock.h"
#include "Machine.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

// A scratch machine: C: is a temporary folder with the program folder C:\Vorlant (ini, Lang, Log) and the application
// data C:\Users\AppData.
struct TestMachine
{
    QTemporaryDir dir;
    FakeClock clock;
    platform::SystemColors colors;
    platform::Machine machine;
    Context context;

    TestMachine() : machine(makeMachine(dir, clock, colors)), context(machine) {}

    // The machine path of a desktop path, and the file there; one that is not there has no bytes.
    QString path(const QString& desktopPath) const { return machine.paths.toMachine(desktopPath); }
    bool put(const QString& desktopPath, const QByteArray& bytes) const
    {
        QFile file(path(desktopPath));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }
    QByteArray content(const QString& desktopPath) const
    {
        QFile file(path(desktopPath));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    static platform::Machine makeMachine(const QTemporaryDir& dir, platform::Clock& clock,
                                         const platform::SystemColors& colors)
    {
        const QString root = dir.path() + QStringLiteral("/c");
        for (const char* folder : {"/Vorlant/ini", "/Vorlant/Lang", "/Vorlant/Log", "/Users/AppData"})
            QDir().mkpath(root + QLatin1String(folder));
        platform::PathMap paths;
        paths.mount(u'C', root);
        const platform::Folders folders(paths, root + QStringLiteral("/Vorlant"),
                                        root + QStringLiteral("/Users/AppData"));
        return platform::Machine(platform::CodePage(), paths, folders, clock, colors);
    }
};
