#include "link/wholefile.h"

#include <QSaveFile>

bool writeWholeFile(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::WriteOnly))
        return false;
    // What is still buffered at commit() can be lost on a full disk without a word.
    const bool written = file.write(content) == content.size() && file.flush();
    return written && file.commit();
}
