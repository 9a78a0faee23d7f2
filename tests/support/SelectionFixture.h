#pragma once

#include "MultiSelectOwner.h"
#include "OptionsFixture.h"
#include "RecordingMessages.h"

// A table file of our own or the shipped one, and an owner that notes what is set.
class SelectionFixture : public OptionsFixture, public MultiSelectOwner
{
protected:
    SelectionFixture() { box.context.messages = messages; }

    void setData(const QString& sTag, const QString& sData, bool) override { set << sTag + '=' + sData; }
    void setVData(const QString& sTag, const QString& VData, bool) override { set << sTag + " shows " + VData; }
    void setEntry(const std::vector<EntrySetting>& entry) override
    {
        for (const EntrySetting& setting : entry)
            set << setting.tag + (setting.isDisplayValue ? " shows " : "=") + setting.value;
    }

    void tables(const QByteArray& text) { ASSERT_TRUE(soundController::writeFile(tablesPath(), text)); }
    void shippedTables()
    {
        for (const QString name : {"ini/MultiSelect.ini", "Lang/EN.txt", "Lang/JP.txt"})
            ASSERT_TRUE(QFile::copy(QString(VORLANT_DATA_DIR "/") + name, box.dir.path() + "/c/Vorlant/" + name));
    }
    QByteArray contentOf(const QString& name) const // in the program folder
    {
        QFile file(box.dir.path() + "/c/Vorlant/" + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QString tablesPath() const { return box.path("C:\\Vorlant\\ini\\MultiSelect.ini"); }

    RecordingMessages::Record told;
    RecordingMessages messages{told};
    QStringList set;
};
