#include "RegisteredGrid.h"

namespace platform {

RegisteredGrid::RegisteredGrid(vaSpread& grid, const QString& name, std::optional<int> index)
    : RegisteredWidget(grid, name, index, ControlKind::Grid), m_grid(grid)
{}

void RegisteredGrid::applyFace()
{
    if (m_grid.grid() != nullptr)
        m_grid.grid()->setBaseFace(face().family);
}

} // namespace platform
