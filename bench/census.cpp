#include "bench/census.h"

#include <QAbstractEventDispatcher>
#include <QAbstractSocket>
#include <QMutex>
#include <QSet>
#include <QTcpServer>
#include <QThreadPool>
#include <QTimer>

// Qt's hook for tools that follow objects. Its header is among Qt's private ones; these places have
// stayed the same since Qt 5.4.
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

/// Never destroyed: objects go until the program's very end.
Register &living()
{
    static auto *objects = new Register;
    return *objects;
}

void enroll(QObject *object)
{
    const QMutexLocker locker(&living().mutex);
    living().objects.insert(object);
}

void strike(QObject *object)
{
    const QMutexLocker locker(&living().mutex);
    living().objects.remove(object);
}

/// Its threads come with work and end after half a minute without.
bool isOfThreadPool(QObject *object)
{
    return qobject_cast<QAbstractEventDispatcher *>(object) ||
           qobject_cast<QThreadPool *>(object) || object->inherits("QThreadPoolThread");
}

} // namespace

void census::begin()
{
    qtHookData[AddObject] = reinterpret_cast<quintptr>(&enroll);
    qtHookData[RemoveObject] = reinterpret_cast<quintptr>(&strike);
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
