#pragma once

#include "OptionValues.h"
#include "SoundController.h"
#include "TestMachine.h"
#include "clsCfg.h"
#include "clsLibrary.h"

#include <gtest/gtest.h>

// Settings with two languages, the second one in use.
class OptionsFixture : public ::testing::Test
{
protected:
    OptionsFixture() : library(box.context)
    {
        settings.init(&library);
        box.context.settings = settings;
    }

    void load(const QByteArray& setting = {}, const QByteArray& languages = kTwoLanguages)
    {
        library.getIniFilePath(QStringLiteral("Main"));
        ASSERT_TRUE(box.put(kSettings, languages + "[Setting]\n" + setting));
        box.context.languageFile = QStringLiteral("JP.txt");
        settings.load();
    }

    QByteArray settingsFile() const { return box.content(kSettings); }

    inline static const QString kSettings = QStringLiteral("C:\\Users\\AppData\\Vorlan\\Vorlant.ini");
    inline static const QString kPlaces = QStringLiteral("C:\\Users\\AppData\\Vorlan\\VorlantPos.ini"); // of windows
    inline static const QByteArray kTwoLanguages =
        "[Language]\nLanguageMax=2\nLanguage1=English  [EN.txt  Ver(1.0)]\nLanguageFile1=EN.txt\n"
        "Language2=Japanese  [JP.txt  Ver(1.0)]\nLanguageFile2=JP.txt\n";

    TestMachine box;
    clsLibrary library;
    clsCfg settings;
};
