#include "simulator/store.h"

#include "simulator/json.h"
#include "simulator/statefile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace sim {
namespace {

constexpr int SaveDelayMs = 500;         // changes within this time are saved together
constexpr qint64 MostBytes = 64'000'000; // of a file; no state comes near

} // namespace

Store::Store(Device &device, const QString &path)
    : m_device(device),
      m_path(path),
      m_lock(path + QStringLiteral(".lock"))
{
    m_lock.setStaleLockTime(0); // held as long as its program runs
    m_timer.setSingleShot(true);
    m_timer.setInterval(SaveDelayMs);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(save()));
    connect(&m_device, SIGNAL(stateChanged()), this, SLOT(noteChange()));
}

Store::~Store()
{
    if (m_unsaved)
        save();
}

bool Store::open(QString *error)
{
    const QFileInfo file(m_path);
    if (file.exists() && (!file.isFile() || file.size() > MostBytes)) {
        *error = QStringLiteral("Cannot use %1: %2")
                     .arg(m_path, file.isFile() ? QStringLiteral("too long")
                                                : QStringLiteral("not a regular file"));
        return false;
    }
    m_open = lock(error) && (QFile::exists(m_path) ? load(error) : write(error));
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
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush() &&
        file.commit())
        return true;
    *error = QStringLiteral("Cannot write %1: %2").arg(m_path, file.errorString());
    return false;
}

void Store::noteChange()
{
    m_unsaved = m_open;
    if (m_open && !m_timer.isActive())
        m_timer.start();
}

void Store::save()
{
    QString error;
    m_unsaved = !write(&error);
    if (m_unsaved)
        qWarning("%s", qPrintable(error));
}

} // namespace sim
