#pragma once

#include "link/wire.h"

#include <QImage>

#include <cstdint>

/// Two thirds of a frame.
constexpr QSize ShownFrameSize(wire::FrameWidth * 2 / 3, wire::FrameHeight * 2 / 3);

/// A camera's frame, wire::FrameSize bytes, at the size in which it is shown, each pixel being the
/// nearest of the frame: the same as QImage::scaled with FastTransformation gives, but in pixels
/// that are painted without another conversion, and without the threads that Qt sets to work.
QImage shownFrame(const uint8_t *frame);
