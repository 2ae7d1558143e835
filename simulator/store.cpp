#include "simulator/store.h"

#include "simulator/json.h"
#include "simulator/statefile.h"

#include <QFile>
#include <QSaveFile>

namespace sim {
namespace {

constexpr int SaveDelayMs = 500; // changes within this time are saved together

} // namespace

Store::Store(Device &device, const QString &path)
    : m_device(device),
      m_path(path)
{
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
    m_open = QFile::exists(m_path) ? load(error) : write(error);
    return m_open;
}

bool Store::load(QString *error)
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("Cannot read %1: %2").arg(m_path, file.errorString());
        return false;
    }
    Json::Value document;
    QString member;
    const bool object = parseObject(file.readAll(), &document);
    if (object && readState(document, m_device.options(), &m_device.state, &member))
        return true;
    *error = object ? QStringLiteral("Cannot use %1: bad value of \"%2\"").arg(m_path, member)
                    : QStringLiteral("Cannot use %1: not a JSON object").arg(m_path);
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
