#pragma once

#include "simulator/pictures/camera.h"
#include "simulator/state/state.h"

#include <QHostAddress>
#include <QRandomGenerator>
#include <QTimer>

namespace sim {

/// What the simulated terminal holds and senses. The commands change the state directly and call
/// changed() after each change; whatever needs a rule is a function of this class.
class Device : public QObject
{
    Q_OBJECT
public:
    static constexpr int EnrolledFeatures = 3; ///< of each kind, that an enrollment adds
    static constexpr int EnrollImages = 5;     ///< palm images, evenly spread over its time

    /// The same seed gives the same users, codes, records and features.
    explicit Device(const DeviceOptions &options, QObject *parent = nullptr);

    const DeviceOptions &options() const { return settings; }

    DeviceMode mode() const { return enrolling() ? enrollMode : state.mode; }
    /// Ends an enrollment without a result. Returns false, with nothing changed, when there is no
    /// such mode or when it is an enrollment, which needs a user.
    bool setMode(quint8 code);

    bool enrolling() const { return enrollTimer.isActive(); }
    /// Returns true when this user is being enrolled at the terminal itself.
    bool enrollingLocally(quint32 userId) const
    {
        return mode() == DeviceMode::Enroll && enrollUser == userId;
    }
    /// `mode` is one of the two enrollments. An enrollment that is under way begins anew.
    void startEnrollment(DeviceMode mode, quint32 userId);
    // The results of the last remote enrollment of that user: the two frames of a pair, one after
    // the other, and features. Empty when there are none.
    QByteArray enrolledPair(quint32 userId, int index) const;
    QByteArray enrolledFeatures(quint32 userId) const;

    /// Stops at the first and the last year that the protocol carries.
    QDateTime clock() const;
    void setClock(const QDateTime &time)
    {
        state.clockOffset = QDateTime::currentDateTime().msecsTo(time);
    }

    /// Palm height in mm with the bias; moves smoothly.
    quint16 palmHeight() const;
    qint64 uptimeSeconds() const { return uptime.elapsed() / 1000; }

    /// See Cameras::capture(). A capture after a pause is announced as the start of a preview.
    void capture(quint8 *palmprint, quint8 *vein);

    void announce(const QString &event) { emit happened(event); }
    /// Announces the event and reports that the state has changed.
    void changed(const QString &event);

    /// Asks the owner of the connections for a reboot; the owner calls restart() after it.
    void reboot();
    void restart();
    /// Returns true until restart(). No request is carried out during a reboot.
    bool rebooting() const { return isRebooting; }

    State state;

signals:
    /// One line without its end.
    void happened(const QString &event);
    void stateChanged();
    /// Messages are to be pushed to this address from now on.
    void debugAddressSet(const QHostAddress &address, quint16 port);
    void rebootAsked();

private slots:
    void takeImage();
    void recordPassages();

private:
    void cancelEnrollment();
    void finishEnrollment();
    bool hasEnrolled(quint32 userId) const
    {
        return enrolledUser == userId && enrolledPairs.size() == EnrollImages;
    }

    DeviceOptions settings;
    Cameras cameras;
    QTimer enrollTimer; ///< fires for each palm image of an enrollment
    DeviceMode enrollMode = DeviceMode::Enroll;
    quint32 enrollUser = 0;
    int enrollImages = 0;
    QVector<QByteArray> enrolledPairs; ///< complete when a remote enrollment is done
    quint32 enrolledUser = 0;          ///< the user of these pairs
    bool isRebooting = false;
    QElapsedTimer uptime;
    QElapsedTimer sinceCapture;
    QTimer passageTimer;
    QElapsedTimer passageClock;
    double nextPassage = 0; ///< ms on the passage clock
    QRandomGenerator random;
};

} // namespace sim
