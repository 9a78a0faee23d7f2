#pragma once

#include "ChangeCause.h"
#include "ParameterClass.h"
#include "Translator.h"

#include <QString>

#include <vector>

class clsData;
class clsKX;

// A parameter whose value is not the one that the controller held at the last read or good write.
struct ChangeRow
{
    QString tag;
    QString name;  // of the definition; the tag where there is none
    QString block; // empty for a parameter of no block
    QString held;  // stored text; empty when the controller's value is not known
    QString value; // stored text
    QString heldShown;
    QString valueShown;
    ParameterClass kind = ParameterClass::Setting;
    ChangeCause cause;
    QString causeName;     // of the parameter that the change followed from
    bool isAllowed = true; // within its limits, or a choice that exists
    bool hasWords = false; // the values shown are words of the definition
};

// The parameters of a model whose values differ from what it held, in item order; those that nobody read only when they
// were changed. Texts are those of the definition, not translated; held values are shown under the settings as they are
// now, decimal point included, so that they compare with the new ones.
std::vector<ChangeRow> changesOf(const clsKX& kx);
// One parameter as such a row, changed or not.
ChangeRow changeRow(const clsKX& kx, const clsData& item);

// Where a value comes from, for a person; empty for none. followed: what the parameter is called that it followed from.
QString causeText(const ChangeCause& cause, const QString& followed, const TranslateText& tran);
