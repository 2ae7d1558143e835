#include "data/frames.h"

#include "link/wire.h"

QByteArray sideBySide(const uint8_t *left, const uint8_t *right)
{
    QByteArray picture;
    picture.reserve(static_cast<int>(2 * wire::FrameSize));
    for (size_t row = 0; row < wire::FrameSize; row += wire::FrameWidth) {
        picture.append(reinterpret_cast<const char *>(left + row), wire::FrameWidth);
        picture.append(reinterpret_cast<const char *>(right + row), wire::FrameWidth);
    }
    return picture;
}
