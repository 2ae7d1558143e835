#pragma once

#include <QByteArray>

#include <cstdint>

/// Puts two frames of wire::FrameSize bytes side by side: each row of the result is a row of the
/// left frame followed by one of the right frame.
QByteArray sideBySide(const uint8_t *left, const uint8_t *right);
