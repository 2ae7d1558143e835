#pragma once

#include <QImage>

#include <cstdint>

/// A camera's frame as it is shown: scaled to fit the size with its proportions kept, each pixel
/// being the nearest of the frame. At the labels' size the same as QImage::scaled with
/// FastTransformation gives, but in pixels that are painted without another conversion, and without
/// the threads that Qt sets to work.
QImage shownFrame(const uint8_t *frame, QSize size);
