#include "bench/census.h"

#include <QAbstractEventDispatcher>
#include <QAbstractSocket>
#include <QMutex>
#include <QSet>
#include <QTcpServer>
#include <QThreadPool>
#include <QTimer>

// Qt's hook for tools that track objects. Its header is private; the indexes have not changed since
// Qt 5.4.
QT_BEGIN_NAMESPACE
extern quintptr Q_CORE_EXPORT qtHookData[];
QT_END_NAMESPACE

namespace {

enum HookIndex { AddObject = 3, RemoveObject = 4 };

struct Register
{
    QMutex mutex;
    QSet<QObject *> objects;
};

/// The register is never destroyed, since objects are destroyed until the very end of the program.
Register &living()
{
    static auto *objects = new Register;
    return *objects;
}

void addObject(QObject *object)
{
    const QMutexLocker locker(&living().mutex);
    living().objects.insert(object);
}

void removeObject(QObject *object)
{
    const QMutexLocker locker(&living().mutex);
    living().objects.remove(object);
}

/// A thread pool starts threads as needed and ends them after half a minute without work.
bool isOfThreadPool(QObject *object)
{
    return qobject_cast<QAbstractEventDispatcher *>(object) ||
           qobject_cast<QThreadPool *>(object) || object->inherits("QThreadPoolThread");
}

} // namespace

void census::begin()
{
    qtHookData[AddObject] = reinterpret_cast<quintptr>(&addObject);
    qtHookData[RemoveObject] = reinterpret_cast<quintptr>(&removeObject);
}

QMap<QByteArray, int> census::byClass()
{
    const QMutexLocker locker(&living().mutex);
    QMap<QByteArray, int> counts;
    for (const QObject *object : qAsConst(living().objects))
        ++counts[object->metaObject()->className()];
    return counts;
}

census::Count census::count()
{
    const QMutexLocker locker(&living().mutex);
    Count found;
    for (QObject *object : qAsConst(living().objects)) {
        if (qobject_cast<QAbstractEventDispatcher *>(object))
            ++found.dispatchers;
        if (isOfThreadPool(object))
            continue;
        ++found.objects;
        if (qobject_cast<QTimer *>(object))
            ++found.timers;
        if (qobject_cast<QAbstractSocket *>(object) || qobject_cast<QTcpServer *>(object))
            ++found.sockets;
    }
    return found;
}
