#pragma once

#include <QString>

// One thing that is wrong with the definition of a model, in plain English.
struct DefinitionFinding
{
    QString file;    // bare name: screen or comm file, MultiSelect.ini, a language file or the main settings file
    QString section; // empty: the file as a whole
    QString key;     // empty: the section as a whole
    QString fault;   // what is wrong
    QString remedy;  // what to do
    bool operator==(const DefinitionFinding&) const = default;

    QString whatAndWhere() const; // "file [section] key: fault"
    QString text() const;         // the same with "; remedy"
};
