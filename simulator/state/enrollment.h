#pragma once

#include "link/wire.h"

#include <QObject>
#include <QTimer>

namespace sim {

/// The course of one enrollment: five looks at the palm, evenly spread over its time, then done.
/// Each step is told as it happens.
class Enrollment : public QObject
{
    Q_OBJECT
public:
    static constexpr int Looks = 5;

    explicit Enrollment(int durationMs); ///< 0 or more

    bool active() const { return m_timer.isActive(); }
    /// Of the one under way or, when there is none, of the last one.
    DeviceMode mode() const { return m_mode; }
    quint32 userId() const { return m_userId; }

    /// Begins anew when one is under way.
    void start(DeviceMode mode, quint32 userId);
    /// Does nothing when none is under way.
    void cancel();

signals:
    void said(const QString &event);
    void looked();
    void done();

private slots:
    void look();

private:
    QTimer m_timer;
    DeviceMode m_mode = DeviceMode::Enroll;
    quint32 m_userId = 0;
    int m_looks = 0;
};

} // namespace sim
