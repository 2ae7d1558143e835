#include "data/wholefile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

bool writeWholeFile(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::WriteOnly))
        return false;
    return file.write(content) == content.size() && commitWhole(&file);
}

bool commitWhole(QSaveFile *file)
{
    // On a full disk, commit() can lose buffered bytes without an error.
    return file->flush() && file->commit();
}

bool commitKeepingLonger(QSaveFile *file)
{
    const QFileInfo old(file->fileName());
    if (!file->flush() || !old.exists() || old.size() <= file->size())
        return commitWhole(file);
    const QString path = old.canonicalFilePath(); // the target, if it is a symbolic link
    const QString kept = path + QStringLiteral(".bak");
    QFile::remove(kept);
    if (!QFile::rename(path, kept))
        return false;
    if (commitWhole(file))
        return true;
    QFile::rename(kept, path);
    return false;
}

bool readFile(const QString &path, qint64 maxLength, QByteArray *content)
{
    QFile file(path);
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray read = file.read(maxLength);
    if (file.error() != QFileDevice::NoError)
        return false;
    *content = read;
    return true;
}
