#pragma once

#include "clsKX.h"
#include "clsLibrary.h"

#include <QRect>
#include <QSet>
#include <QString>
#include <QStringList>
#include <vector>

// Reads a model's definition as the program does and lists what is wrong with it: what the program itself notes while
// it loads, then the grid, the memory images, references between items, default values and the texts of both languages.
//
// One run for each model string, since options decide what is built. Owner: a test with a scratch program folder.
class DefinitionCheck
{
public:
    DefinitionCheck(Context& context, clsLibrary& library, clsKX& kx) : m_context(context), m_library(library), m_kx(kx)
    {}

    // One line for each finding, empty when all is well. number: of the model in the catalogue.
    QStringList run(int number, const QString& modelString);

private:
    struct Label
    {
        QString section;
        int row = 0;
        int col = 0;
        QString caption;
    };

    void find(const QString& where, const QString& what) { m_findings << where + QStringLiteral(": ") + what; }
    QString path(const QString& definitionFile) const;
    QString key(const QString& section, const QString& name) const; // of the screen file
    bool isBuilt(const QString& section) const;
    void checkSections();
    void loadNoted(int number, const QString& modelString);
    std::vector<Label> builtLabels() const;

    void checkGrid();
    void checkLabels(const QHash<int, QRect>& areas);
    void checkMemory();
    void checkImage(const clsKXAdr& image);
    void checkRegister(const clsKXAdr& image);
    void checkItemReferences();
    void checkBlockReferences();
    void checkCommTags();
    void checkSetTags();
    void checkTag(const QString& where, const QString& tag);
    void checkValues();
    void checkNumber(const clsData& item);
    void checkChoice(clsData& item);
    void checkTexts();
    void checkText(const QString& where, const QString& english);
    QStringList tableNames(const QString& section) const;

    Context& m_context;
    clsLibrary& m_library;
    clsKX& m_kx;
    QString m_screen; // machine paths of the model's files
    QString m_comm;
    QString m_selections;
    QSet<QString> m_tags;
    QStringList m_findings;
};
