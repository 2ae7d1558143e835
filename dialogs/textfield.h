#pragma once

#include "widgets/controls.h"

#include <cstring>

/// Copies an edit's text as UTF-8 into a field of fixed width, padded with zeros. Returns false and
/// copies nothing when the text is too long.
template <size_t Width> bool fillField(char (&field)[Width], const QLineEdit *edit)
{
    const QByteArray bytes = controls::wholeText(edit).toUtf8();
    if (bytes.size() > static_cast<int>(Width))
        return false;
    std::memset(field, 0, Width);
    std::memcpy(field, bytes.constData(), static_cast<size_t>(bytes.size()));
    return true;
}
