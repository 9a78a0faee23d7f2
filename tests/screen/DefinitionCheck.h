#pragma once

#include "clsKX.h"
#include "clsLibrary.h"

#include <QSet>
#include <QString>
#include <QStringList>

// Reads a model's definition as the program does and lists what is wrong with it: what the program itself notes while
// it loads, then the memory images, references between items, default values and the texts of both languages. Where
// blocks and labels stand is laid out by the generator and not looked at.
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
    void find(const QString& where, const QString& what) { m_findings << where + QStringLiteral(": ") + what; }
    QString path(const QString& definitionFile) const;
    QString key(const clsData& item, const char* name) const; // of the screen file
    void loadNoted(int number, const QString& modelString);
    void checkImage(const clsKXAdr& image);
    void checkRanges(clsData& range);
    void checkLimits(const QString& range);
    void checkReferences();
    void checkTag(const QString& where, const QString& tag);
    void checkNumber(const clsData& item);
    void checkChoice(clsData& item);
    void checkTexts(const clsData& item);
    void checkText(const QString& where, const QString& english);

    Context& m_context;
    clsLibrary& m_library;
    clsKX& m_kx;
    QString m_screen; // machine path of the model's file
    QSet<QString> m_tags;
    QStringList m_findings;
};
