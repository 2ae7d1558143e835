#include "simulator/state/store.h"

#include "simulator/state/documents.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace sim {
namespace {

constexpr int SaveDelay = 500;           // ms; changes within this time are saved together
constexpr int RetryDelay = 2000;         // ms, after a save that failed
constexpr qint64 MaxBytes = 900'000'000; // of a file: 10000 users with six imported blocks each

bool refuse(QString *error, const QString &reason)
{
    *error = reason;
    return false;
}

/// A pipe is refused because opening it would wait for a program at its other end.
bool isUsableFile(const QString &path, QString *error)
{
    const QFileInfo file(path);
    if (file.exists() && !file.isFile())
        return refuse(error, QStringLiteral("Cannot use %1: not a regular file").arg(path));
    return file.size() <= MaxBytes ||
           refuse(error, QStringLiteral("Cannot use %1: too long").arg(path));
}

/// A full disk takes a part of the data, and returns the error only for the rest.
bool writeAll(QSaveFile &file, const QByteArray &text)
{
    qint64 done = 0;
    while (done < text.size()) {
        const qint64 written = file.write(text.constData() + done, text.size() - done);
        if (written <= 0)
            return false;
        done += written;
    }
    return true;
}

} // namespace

Store::Store(Device &keptDevice, const QString &file)
    : device(keptDevice),
      path(file),
      lock(file + ".lock")
{
    lock.setStaleLockTime(0); // held until its program ends
    timer.setSingleShot(true);
    connect(&timer, SIGNAL(timeout()), this, SLOT(save()));
    connect(&device, SIGNAL(stateChanged()), this, SLOT(noteChange()));
}

Store::~Store()
{
    if (isUnsaved)
        save();
    if (isUnsaved)
        qWarning("The last changes are not in %s", qPrintable(path));
}

bool Store::open(QString *error)
{
    isOpen = isUsableFile(path, error) && isUsableFile(path + ".lock", error) &&
             acquireLock(error) && (QFile::exists(path) ? load(error) : write(error));
    return isOpen;
}

bool Store::acquireLock(QString *error)
{
    if (lock.tryLock(0))
        return true;
    const bool isHeld = lock.error() == QLockFile::LockFailedError;
    const QString used = QStringLiteral("Cannot use %1: another program keeps its state there");
    return refuse(error, (isHeld ? used : QStringLiteral("Cannot write %1.lock")).arg(path));
}

bool Store::load(QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return refuse(error, QStringLiteral("Cannot read %1: %2").arg(path, file.errorString()));
    Json::Value document;
    QString reason = QStringLiteral("not a JSON object");
    return (parseObject(file.read(MaxBytes), &document) &&
            readState(std::move(document), device.options(), &device.state, &reason)) ||
           refuse(error, QStringLiteral("Cannot use %1: %2").arg(path, reason));
}

bool Store::write(QString *error) const
{
    const QByteArray text = toText(stateDocument(device.options(), device.state)) + '\n';
    QSaveFile file(path);
    return (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(file, text) &&
            file.commit()) ||
           refuse(error, QStringLiteral("Cannot write %1: %2").arg(path, file.errorString()));
}

void Store::noteChange()
{
    isUnsaved = isOpen;
    if (isOpen && !timer.isActive())
        timer.start(SaveDelay);
}

void Store::save()
{
    QString error;
    isUnsaved = !write(&error);
    if (isUnsaved)
        timer.start(RetryDelay);
    if (error != saveError)
        qWarning("%s", qPrintable(isUnsaved ? error : QStringLiteral("Saved %1").arg(path)));
    saveError = error;
}

} // namespace sim
