#pragma once

#include <QStringList>

struct FrameFields;
struct ModelData;

// The names, in the language in use, of the parameters that a frame of the line brings or carries, in item order: by
// the memory that it moves, or by the entries of the comm file that name its reference numbers. Empty for a frame
// without an address.
QStringList parametersOf(const ModelData& model, const FrameFields& fields);
