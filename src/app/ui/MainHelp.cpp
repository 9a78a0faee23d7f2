#include "MainHelp.h"

#include "HelpFiles.h"
#include "ProgramContext.h"
#include "clsData.h"
#include "clsKX.h"
#include "vaSpread.h"

#include <QApplication>

namespace {

QString helpFileOf(ProgramContext& program)
{
    return platform::helpFile(program.machine().folders.program(), program.context().languageFile);
}

// Of the parameter in the current cell, or beside it, where its name and unit are. Nothing elsewhere.
HelpTopic topicOfCell(const clsKX& kx, const platform::vaSpread& grid)
{
    const QModelIndex at = grid.currentIndex();
    for (const int beside : {0, 1, -1}) {
        const clsData* item = at.isValid() ? kx.getDataByRC(at.row() + 1, at.column() + 1 + beside) : nullptr;
        if (item != nullptr)
            return parameterTopic(kx.ModelName(), item->Key());
    }
    return {};
}

} // namespace

MainHelp::MainHelp(ProgramContext& program, const clsKX& kx, const platform::vaSpread& grid)
    : m_key({program.machine().paths,
             program.library().translation(),
             [&program] { return helpFileOf(program); },
             {QStringLiteral("sprMain"), [&kx, &grid] { return topicOfCell(kx, grid); }}})
{}

void MainHelp::show()
{
    m_key.openFor(QApplication::focusWidget());
}
