#pragma once

#include "TestMachine.h"
#include "clsCfg.h"
#include "clsLibrary.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

// A scratch machine with the definition files that are shipped, and a catalogue whose only model is the KX410.
class RealModel
{
public:
    static inline const QString kModelString = QStringLiteral("KX41000000-10A");

    RealModel() : library(box.context)
    {
        settings.init(&library);
        box.context.settings = settings;
        box.context.translates = false;
        const QString definitions = library.getIniFilePath(QString()) + u'\\';
        const QDir data(QStringLiteral(VORLANT_DATA_DIR "/ini"));
        for (const char* name : {"KX410Screen.ini", "KX410Comm.ini", "MultiSelect.ini"}) {
            QFile file(data.filePath(QLatin1String(name)));
            if (!file.open(QIODevice::ReadOnly))
                throw std::runtime_error("no definition files");
            put(definitions + QLatin1String(name), file.readAll());
        }
        put(library.getIniFilePath(QStringLiteral("Main")) + QStringLiteral("\\Vorlant.ini"),
            "[KXInfos]\nKXMaxCount=1\nKXModel1=KX410\nKXName1=KX410\nKXScreenFile1=KX410Screen.ini\n"
            "KXCommFile1=KX410Comm.ini\n");
    }

    TestMachine box;
    clsLibrary library;
    clsCfg settings;

private:
    void put(const QString& desktopPath, const QByteArray& bytes) const
    {
        QFile file(box.path(desktopPath));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            throw std::runtime_error("the scratch folder takes no files");
    }
};
