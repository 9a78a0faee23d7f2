#pragma once

#include "GridModel.h"
#include "ScratchFiles.h"
#include "clsCfg.h"
#include "clsKX.h"
#include "clsLibrary.h"

#include <QDir>

// A scratch machine with the definition files that are shipped, and a catalogue whose only model is the KX410.
class RealModel
{
public:
    static inline const QString kModelString = QStringLiteral("KX41000000-10A");

    RealModel() : library(box.context)
    {
        settings.init(&library);
        box.context.settings = &settings;
        box.context.translates = false;
        const QDir data(QStringLiteral(VORLANT_DATA_DIR "/ini"));
        for (const QString& name :
             {QStringLiteral("KX410Screen.ini"), QStringLiteral("KX410Comm.ini"), QStringLiteral("MultiSelect.ini")}) {
            QFile file(data.filePath(name));
            require(file.open(QIODevice::ReadOnly), "the definition files are there", name);
            putFile(box, library.getIniFilePath(QString()) + u'\\' + name, file.readAll());
        }
        putFile(box, library.getIniFilePath(QStringLiteral("Main")) + QStringLiteral("\\Vorlant.ini"),
                "[KXInfos]\nKXMaxCount=1\nKXModel1=KX410\nKXName1=KX410\nKXScreenFile1=KX410Screen.ini\n"
                "KXCommFile1=KX410Comm.ini\n");
    }

    TestMachine box;
    clsLibrary library;
    clsCfg settings;
};
