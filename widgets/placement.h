#pragma once

#include <QRect>

/// Positions of windows on a screen. All rectangles are in global coordinates and include the
/// window's frame.
namespace placement {

/// Moves a window onto the screen, by no more than necessary. A window that is larger than the
/// screen is aligned with its left and top edges.
QRect within(const QRect &window, const QRect &screen);

/// Returns where a dialog opens: over the pictures, beside the logs. Without enough room it covers
/// the messages rather than the hints. A hidden log is passed as an empty rectangle.
QRect overPictures(QSize dialog, const QRect &pictures, const QRect &hints, const QRect &messages,
                   const QRect &screen);

} // namespace placement
