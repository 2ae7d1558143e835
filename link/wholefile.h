#pragma once

#include <QByteArray>
#include <QString>

class QSaveFile;

/// Writes a file that appears whole under its name, or not at all: an older one then stays as it
/// is. False when that cannot be.
bool writeWholeFile(const QString &path, const QByteArray &content);

/// The same for a file that was written piece by piece: gives it its name if all of it was written.
bool commitWhole(QSaveFile *file);
