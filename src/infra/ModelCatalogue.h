#pragma once

#include <QString>
#include <QStringList>
#include <vector>

class clsLibrary;

// One model of the catalogue in the main settings file: code and name, and the bare names of its definition files.
struct ModelEntry
{
    int number = 0; // catalogue number, from 1
    QString code;
    QString name;
    QString screenFile;
    QString commFile;
};

// The model catalogue, section "KXInfos" of the main settings file.
class ModelCatalogue
{
public:
    static constexpr int kMaxModels = 1000;

    explicit ModelCatalogue(const clsLibrary& library);

    // Writes the seven built-in models when "KXMaxCount" reads as exactly "0".
    void ensureBuiltIn();

    ModelEntry entry(int number);      // empty texts for a number without entries
    std::vector<ModelEntry> all();     // the built-in ones where settings cannot be kept
    QStringList codes();               // of all, in order; a missing code reads as "KX" and its number
    int numberOf(const QString& code); // 0 when the catalogue lacks the code

private:
    const clsLibrary& m_library;
};
