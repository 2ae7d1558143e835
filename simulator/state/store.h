#pragma once

#include "simulator/state/device.h"

#include <QLockFile>
#include <QObject>
#include <QTimer>

namespace sim {

/// Keeps a device's state in a file: writes it a moment after a change and, at the latest, when
/// this object goes. The file is replaced as a whole, so that there is always a whole one. A save
/// that failed is tried again every few seconds.
class Store : public QObject
{
    Q_OBJECT
public:
    /// `device` must outlive the store.
    Store(Device &device, const QString &path);
    ~Store() override;

    /// Takes over what the file holds; without a file, writes one. False, with the reason, when
    /// the file is none of ours, another program's or cannot be used; it is never written to then.
    bool open(QString *error);

private slots:
    void noteChange();
    void save();

private:
    bool lock(QString *error);
    bool load(QString *error);
    bool write(QString *error) const;

    Device &m_device;
    QString m_path;
    QLockFile m_lock; ///< beside the file
    QTimer m_timer;
    bool m_open = false;
    bool m_unsaved = false;
    QString m_saveError; ///< of the last save; empty when it succeeded
};

} // namespace sim
