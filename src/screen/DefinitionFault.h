#pragma once

#include "ModelCatalogue.h"

#include <QString>

class clsLibrary;

// Why the definition files that the catalogue names for a model are neither read nor completed: a name that is no file
// name, or a file of the other kind, which defaults would be written into. In the user's language; empty when there is
// nothing against them. Files that are missing are no fault.
QString definitionFault(clsLibrary& library, const ModelEntry& entry);
