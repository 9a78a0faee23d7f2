#pragma once

#include "MultiSelectOwner.h"
#include "OptionsFixture.h"
#include "RecordingMessages.h"

// A table file of our own or the shipped one, and an owner that notes what is set.
class SelectionFixture : public OptionsFixture, public MultiSelectOwner
{
protected:
    SelectionFixture() { box.context.messages = messages; }

    void setData(const QString& sTag, const QString& sData, bool bCheck) override
    {
        set << sTag + u'=' + sData + (bCheck ? QString() : QStringLiteral(" unchecked"));
    }
    void setVData(const QString& sTag, const QString& VData, bool bCheck) override
    {
        set << sTag + QStringLiteral(" shows ") + VData + (bCheck ? QString() : QStringLiteral(" unchecked"));
    }

    void takeEntry(const std::vector<EntrySetting>& entry) override
    {
        for (const EntrySetting& setting : entry) {
            if (setting.isDisplayValue)
                setVData(setting.tag, setting.value, true);
            else
                setData(setting.tag, setting.value, true);
        }
    }

    void tables(const QByteArray& text) { ASSERT_TRUE(soundController::writeFile(tablesPath(), text)); }
    void shippedTables()
    {
        ASSERT_TRUE(QFile::copy(QStringLiteral(VORLANT_DATA_DIR "/ini/MultiSelect.ini"), tablesPath()));
        for (const char* name : {"EN.txt", "JP.txt"}) {
            const QString file = QStringLiteral("/Lang/") + QLatin1String(name);
            ASSERT_TRUE(QFile::copy(QStringLiteral(VORLANT_DATA_DIR) + file,
                                    box.dir.path() + QStringLiteral("/c/Vorlant") + file));
        }
    }
    QString tablesPath() const { return box.path(QStringLiteral("C:\\Vorlant\\ini\\MultiSelect.ini")); }
    QByteArray tablesFile() const { return contentOf(tablesPath()); }
    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    RecordingMessages::Record told;
    RecordingMessages messages{told};
    QStringList set;
};
