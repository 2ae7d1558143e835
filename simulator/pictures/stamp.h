#pragma once

#include <QtGlobal>

#include <cstddef>

namespace sim {

/// Writes text over the frame's bottom left corner, white on black, each dot 2 x 2 pixels. Knows
/// the letters of "SIMULATED", digits and the blank; any other character stays blank.
/// `frame` holds wire::FrameSize bytes; text that reaches beyond the right edge is cut off.
void stampText(quint8 *frame, const char *text);

} // namespace sim
