#pragma once

#include <QByteArray>

#include <cstdint>

/// Two frames of wire::FrameSize bytes as one picture of double width: each row is the left
/// frame's, then the right one's.
QByteArray sideBySide(const uint8_t *left, const uint8_t *right);
