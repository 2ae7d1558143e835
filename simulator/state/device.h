#pragma once

#include "simulator/pictures/camera.h"
#include "simulator/state/enrollment.h"
#include "simulator/state/state.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QObject>

#include <vector>

namespace sim {

/// What the simulated terminal holds and senses. The state is free to the command answers, which
/// call changed() behind each change; what needs a rule goes through a function.
class Device : public QObject
{
    Q_OBJECT
public:
    static constexpr int EnrolledFeatures = 3; ///< of each kind, that an enrollment adds

    /// The same seed gives the same pictures, users, codes and course of records.
    explicit Device(const DeviceOptions &options, QObject *parent = nullptr);

    const DeviceOptions &options() const { return m_options; }

    DeviceMode mode() const;
    /// Ends an enrollment without result. False, and nothing changed, when there is no such mode
    /// or when it is an enrollment, which needs a user.
    bool setMode(quint8 code);

    bool enrolling() const { return m_enrollment.active(); }
    /// Whether this user is being enrolled at the terminal itself.
    bool enrollingLocally(quint32 userId) const;
    /// `mode` is one of the two enrollments. One that is under way is begun anew.
    void startEnrollment(DeviceMode mode, quint32 userId);
    /// What the last remote enrollment of that user brought in: the two frames of a pair, one
    /// behind the other, and features. Empty when there was none, or no such pair.
    QByteArray enrolledPair(quint32 userId, int index) const;
    QByteArray enrolledFeatures(quint32 userId) const;

    /// Stands still where the years that the wire carries end.
    QDateTime clock() const;
    void setClock(const QDateTime &time);

    /// Palm height in mm, bias included; moves smoothly.
    quint16 palmHeight() const;
    qint64 uptimeSeconds() const;

    /// See Cameras::capture; a capture after a pause is announced as the start of a preview.
    void capture(quint8 *palmprint, quint8 *vein);

    /// From now on messages are to be pushed there.
    void setDebugAddress(const QHostAddress &address, quint16 port);

    void announce(const QString &event);
    /// Announces, and tells that the state is another now.
    void changed(const QString &event);

    /// Asks for a reboot; whoever owns the connections carries it out and calls restart().
    void reboot();
    void restart();
    /// Asked for and not over yet: no request is carried out meanwhile.
    bool rebooting() const { return m_rebooting; }

    State state;

signals:
    /// One line without its end.
    void happened(const QString &event);
    void stateChanged();
    void debugAddressSet(const QHostAddress &address, quint16 port);
    void rebootAsked();

private slots:
    void keepLook();
    void finishEnrollment();

private:
    bool hasEnrolled(quint32 userId) const;

    DeviceOptions m_options;
    Cameras m_cameras;
    Enrollment m_enrollment;
    std::vector<QByteArray> m_enrolledPairs; ///< all of them, once a remote enrollment is done
    quint32 m_enrolledUser = 0;              ///< whose pairs they are
    bool m_rebooting = false;
    QElapsedTimer m_uptime;
    QElapsedTimer m_sinceCapture;
};

} // namespace sim
