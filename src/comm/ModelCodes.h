#pragma once

#include "Translator.h"

#include <QString>
#include <QStringList>

// What a model string says before its definition is known: its first five characters are a model code.
namespace modelcodes {

// Where a controller holds its model string, and where else it may be.
constexpr int kModelAddress = 0xFBC0;
constexpr int kOtherModelAddress = 0xFBC8;
constexpr int kModelStringLength = 14;
constexpr int kCodeLength = 5;

// What every model string begins with.
bool isOfFamily(const QString& modelString);

// Shown in place of a model string when the controller did not answer.
inline const QString kNothing = QStringLiteral("Nothing");

enum class Match { Found, NotFound, NoAnswer };

struct Selection
{
    Match match = Match::NotFound;
    int position = -1; // in the list, from 0; -1 unless found
};

// An address of the memory as definition files and people write it: "FBC0".
QString memoryText(int address);

// The first of the catalogue's codes that begins as the model string does. A text shorter than a model string finds
// none.
Selection select(const QString& modelString, const QStringList& codes);

// The model string of a controller without options: what a bare code stands for, and a model that is chosen by hand.
QString handPicked(const QString& code);

// "Model number is different.", and below it both strings; found: of the controller or the file, empty when not known.
QString differenceText(const QString& expected, const QString& found, const TranslateText& tran);

} // namespace modelcodes
