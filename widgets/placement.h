#pragma once

#include <QRect>

/// Where windows stand on a screen. All rectangles are global and include the window's frame.
namespace placement {

/// Moves a window by no more than is needed to be on the screen; one that is larger begins at its
/// left and its top.
QRect within(const QRect &window, const QRect &screen);

/// Where a dialog opens: over the pictures, beside the logs. Where the screen has no room for that,
/// it rather covers the messages than the hints. A log that is not shown is an empty rectangle.
QRect overPictures(QSize dialog, const QRect &pictures, const QRect &hints, const QRect &messages,
                   const QRect &screen);

} // namespace placement
