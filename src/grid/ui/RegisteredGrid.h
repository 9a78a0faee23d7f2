#pragma once

#include "RegisteredControls.h"
#include "vaSpread.h"

namespace platform {

// The parameter grid: its face is that of the cells.
class RegisteredGrid final : public RegisteredWidget
{
public:
    RegisteredGrid(vaSpread& grid, const QString& name, std::optional<int> index);

protected:
    void applyFace() override;

private:
    vaSpread& m_grid;
};

} // namespace platform
