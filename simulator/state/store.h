#pragma once

#include "simulator/state/device.h"

#include <QLockFile>

namespace sim {

/// Returns the state as it is kept in a file.
Json::Value stateDocument(const DeviceOptions &options, State state);

/// Reads an object. Returns false, with `state` untouched and `error` set, unless the object holds
/// a whole state whose values a terminal with these options can have. Never throws.
bool readState(Json::Value document, const DeviceOptions &options, State *state, QString *error);

/// Keeps a device's state in a file. Writes it a moment after a change and, at the latest, in the
/// destructor. The file is replaced as a whole, so that a complete one is always there. A save that
/// failed is retried every few seconds.
class Store : public QObject
{
    Q_OBJECT
public:
    /// `keptDevice` must outlive the store.
    Store(Device &keptDevice, const QString &file);
    ~Store() override;

    /// Reads the state from the file, or writes a file when there is none. Returns false, with the
    /// reason, when the file has another format, belongs to another program or cannot be used; it
    /// is never written to then.
    bool open(QString *error);

private slots:
    void noteChange();
    void save();

private:
    bool acquireLock(QString *error);
    bool load(QString *error);
    bool write(QString *error) const;

    Device &device;
    QString path;
    QLockFile lock; ///< beside the file
    QTimer timer;
    bool isOpen = false;
    bool isUnsaved = false;
    QString saveError; ///< of the last save; empty when it succeeded
};

} // namespace sim
