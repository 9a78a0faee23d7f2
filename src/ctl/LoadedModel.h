#pragma once

#include "CommandResult.h"
#include "GridModel.h"
#include "ModelChoice.h"
#include "clsKX.h"

#include <QString>

class ProgramContext;

// A model of the catalogue with its parameters. load once; then kx holds the definition's defaults until a read or a
// parameter file brings values. The program is kept by reference.
class LoadedModel
{
public:
    explicit LoadedModel(ProgramContext& program);

    // wanted: as for chooseModel. Fails when the definition files cannot be used.
    CommandResult load(const QString& wanted);

    clsKX& kx() { return m_kx; }
    const clsKX& kx() const { return m_kx; }
    QString modelString() const { return m_model.modelString; }
    QString screenFile() const; // as a person finds them
    QString commFile() const;

private:
    CommandResult checkDefinition() const;
    CommandResult checkFile(const QString& name) const;
    CommandResult loadDefinition();

    ProgramContext& m_program;
    ModelChoice m_model;
    platform::GridModel m_grid;
    clsKX m_kx;
};
