#pragma once

#include <QByteArray>
#include <QString>

class QSaveFile;

/// Writes a file that appears under its name only when it is complete. Returns false if that
/// fails; an older file is unchanged then.
bool writeWholeFile(const QString &path, const QByteArray &content);

/// Gives a file that was written piece by piece its name, if all of it was written. Returns false
/// if that fails.
bool commitWhole(QSaveFile *file);

/// Like commitWhole(), but if the file replaces a longer one, keeps that one with ".bak" added to
/// its name. Returns false if that fails; the older file is unchanged then.
bool commitKeepingLonger(QSaveFile *file);

/// Reads at most `maxLength` bytes of a regular file; with one byte more than the allowed length a
/// caller recognises a file that is too long. Returns false if the file cannot be read or is not a
/// regular file: reading a FIFO could block forever.
bool readFile(const QString &path, qint64 maxLength, QByteArray *content);
