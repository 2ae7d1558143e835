#pragma once

#include "link/wire.h"

#include <QImage>

#include <cstdint>

/// Two thirds of the frame's width and height.
constexpr QSize ShownFrameSize(wire::FrameWidth * 2 / 3, wire::FrameHeight * 2 / 3);

/// Scales a camera's frame (wire::FrameSize bytes) to the size in which it is shown. The pixels are
/// those of QImage::scaled() with FastTransformation, but in a format that is painted without
/// another conversion, and made without Qt's worker threads.
QImage shownFrame(const uint8_t *frame);
