#pragma once

#include <QByteArray>
#include <QString>

/// Writes a file that appears whole under its name, or not at all: an older one then stays as it
/// is. False when that cannot be.
bool writeWholeFile(const QString &path, const QByteArray &content);
