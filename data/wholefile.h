#pragma once

#include <QByteArray>
#include <QString>

class QSaveFile;

/// Writes a file that appears whole under its name, or not at all: an older one then stays as it
/// is. False when that cannot be.
bool writeWholeFile(const QString &path, const QByteArray &content);

/// The same for a file that was written piece by piece: gives it its name if all of it was written.
bool commitWhole(QSaveFile *file);

/// The same, but keeps a longer file that would be replaced beside the new one, with ".bak" added
/// to its name; an older such file is replaced. False, with the file as it was, when that fails.
bool commitKeepingLonger(QSaveFile *file);

/// Reads a regular file, but no more than `most` bytes of it: one more than is wanted tells a file
/// that is too long. False, with nothing read, when it cannot be read, or is something else: a FIFO
/// could let the reader wait for ever.
bool readFile(const QString &path, qint64 most, QByteArray *content);
