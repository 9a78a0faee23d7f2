#pragma once

struct Context;

namespace platform {
class FormPlacement;
}

// Position and size of the windows, kept in the layout file between two runs: one section per form, twips.
namespace windowlayout {

// Brings the form where it was. The first time, and whenever what is stored would leave it out of reach, it comes up in
// the middle of the primary screen's width and a fifth down its free height; a size that cannot be used becomes the
// designed one, one larger than the desktop the desktop's. Missing keys are written with their defaults.
void load(Context& context, platform::FormPlacement& form);

// A minimised or maximised form saves nothing.
void save(Context& context, const platform::FormPlacement& form);

} // namespace windowlayout
