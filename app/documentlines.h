#pragma once

#include <QStringList>

#include <cstddef>
#include <optional>

/// What the window says of the terminal's documents, line by line; none when the text is no
/// document that can be walked.
std::optional<QStringList> userLines(const char *text, size_t length);
std::optional<QStringList> systemInfoLines(const char *text, size_t length);
