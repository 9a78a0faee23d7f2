#pragma once

#include <QString>
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

    explicit ModelCatalogue(clsLibrary& library);

    // Writes the seven built-in models when "KXMaxCount" reads as exactly "0".
    void ensureBuiltIn();

    ModelEntry entry(int number); // empty texts for a number without entries
    std::vector<ModelEntry> all();
    int numberOf(const QString& code); // 0 when the catalogue lacks the code

private:
    clsLibrary& m_library;
};
