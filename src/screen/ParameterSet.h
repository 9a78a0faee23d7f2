#pragma once

#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

struct ModelData;

// One complete parameter set of one controller: stored values by tag, in item order.
struct ParameterSet
{
    QString modelString;
    QVector<QPair<QString, QString>> values;
};

// All items; what was never read or set has an empty value.
ParameterSet currentSet(const ModelData& model);

// The items take these values, in the order in which they decide each other: what a selection table sets comes before
// the values of the set, which hold over it. An empty value leaves an item without one; the unit then stays as it is.
// Returns the tags of items whose value has changed, which are marked. Tags must exist.
QStringList setValues(ModelData& model, const QVector<QPair<QString, QString>>& values);
