#pragma once

#include "FuzzInput.h"
#include "TestMachine.h"

#include <QFile>

// Files of the scratch machine, by desktop path.

inline void putFile(const TestMachine& box, const QString& desktopPath, const QByteArray& bytes)
{
    QFile file(box.path(desktopPath));
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "the scratch folder takes files");
}

inline QByteArray fileBytes(const TestMachine& box, const QString& desktopPath)
{
    QFile file(box.path(desktopPath));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
