#pragma once

#include <QString>
#include <QStringList>

class clsLibrary;

// The installed languages as the main settings file lists them, and the one in use.
class LanguageChoice
{
public:
    static constexpr int kMaxLanguages = 1000;

    void load(const clsLibrary& library);

    QStringList texts() const { return m_texts; }         // "English  [EN.txt  Ver(1.0)]"
    int positionInUse() const { return m_positionInUse; } // from 0; -1: the file in use is not in the list
    // Bare file name; the one in use for a position outside the list.
    QString file(int position) const { return m_files.value(position, m_inUse); }

private:
    QStringList m_texts;
    QStringList m_files;
    QString m_inUse;
    int m_positionInUse = -1;
};
