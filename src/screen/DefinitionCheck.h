#pragma once

#include "DefinitionFindings.h"
#include "GridModel.h"
#include "ModelCatalogue.h"
#include "clsKX.h"

class clsLibrary;

// Reads a model's definition as the programs do and lists what is wrong with it: what a load itself notes, then the
// memory images, references between items, default values, limits under every input range, and the texts in every
// language file. Where blocks and labels stand is not looked at. No file is completed or changed.
//
// One run for each model string, since options decide what is built. Owns the model that it loads; the library is kept
// by reference.
class DefinitionCheck
{
public:
    explicit DefinitionCheck(clsLibrary& library);

    // Empty when all is well. modelString: code and options of the model that the entry describes.
    std::vector<DefinitionFinding> run(const ModelEntry& entry, const QString& modelString);

    // As the last run left it: loaded, with values that the check has tried.
    clsKX& model() { return m_kx; }

private:
    clsLibrary& m_library;
    platform::GridModel m_grid;
    clsKX m_kx;
};
