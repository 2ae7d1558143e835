#include "simulator/state/store.h"

#include "simulator/state/json.h"
#include "simulator/state/statefile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace sim {
namespace {

constexpr int SaveDelayMs = 500;         // changes within this time are saved together
constexpr int RetryMs = 2000;            // after a save that failed
constexpr qint64 MostBytes = 64'000'000; // of a file; no state comes near

QString lockPath(const QString &path)
{
    return path + QStringLiteral(".lock");
}

/// Opening a pipe would wait for somebody at its other end.
bool isUsableFile(const QString &path, QString *error)
{
    const QFileInfo file(path);
    const bool regular = file.isFile() || !file.exists();
    if (regular && file.size() <= MostBytes)
        return true;
    *error =
        QStringLiteral("Cannot use %1: %2")
            .arg(path, regular ? QStringLiteral("too long") : QStringLiteral("not a regular file"));
    return false;
}

/// A full disk takes a part, and names the reason only when it is given the rest.
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

Store::Store(Device &device, const QString &path)
    : m_device(device),
      m_path(path),
      m_lock(lockPath(path))
{
    m_lock.setStaleLockTime(0); // held as long as its program runs
    m_timer.setSingleShot(true);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(save()));
    connect(&m_device, SIGNAL(stateChanged()), this, SLOT(noteChange()));
}

Store::~Store()
{
    if (m_unsaved)
        save();
    if (m_unsaved)
        qWarning("The last changes are not in %s", qPrintable(m_path));
}

bool Store::open(QString *error)
{
    m_open = isUsableFile(m_path, error) && isUsableFile(lockPath(m_path), error) && lock(error) &&
             (QFile::exists(m_path) ? load(error) : write(error));
    return m_open;
}

bool Store::lock(QString *error)
{
    if (m_lock.tryLock(0))
        return true;
    *error = m_lock.error() == QLockFile::LockFailedError
                 ? QStringLiteral("Cannot use %1: another program keeps its state there")
                 : QStringLiteral("Cannot write %1.lock");
    *error = error->arg(m_path);
    return false;
}

bool Store::load(QString *error)
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("Cannot read %1: %2").arg(m_path, file.errorString());
        return false;
    }
    Json::Value document;
    QString reason = QStringLiteral("not a JSON object");
    const bool object = parseObject(file.read(MostBytes), &document);
    if (object && readState(document, m_device.options(), &m_device.state, &reason))
        return true;
    *error = QStringLiteral("Cannot use %1: %2").arg(m_path, reason);
    return false;
}

bool Store::write(QString *error) const
{
    const QByteArray text = toText(stateDocument(m_device.state)) + '\n';
    QSaveFile file(m_path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(file, text) &&
        file.commit())
        return true;
    *error = QStringLiteral("Cannot write %1: %2").arg(m_path, file.errorString());
    return false;
}

void Store::noteChange()
{
    m_unsaved = m_open;
    if (m_open && !m_timer.isActive())
        m_timer.start(SaveDelayMs);
}

void Store::save()
{
    QString error;
    m_unsaved = !write(&error);
    if (m_unsaved)
        m_timer.start(RetryMs);
    if (error != m_saveError)
        qWarning("%s", qPrintable(m_unsaved ? error : QStringLiteral("Saved %1").arg(m_path)));
    m_saveError = error;
}

} // namespace sim
