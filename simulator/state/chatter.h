#pragma once

#include <QRandomGenerator>
#include <QString>

namespace sim {

class Device;

/// Makes up what the terminal tells about itself; lines without prefix and line end.
class Chatter
{
public:
    /// `device` must outlive the chatter.
    Chatter(const Device &device, quint32 seed);

    QString greeting() const;
    /// Tells of recognitions and passages in the recognition modes only.
    QString nextLine();

private:
    QString palmSeen();
    QString userRecognised();
    QString doorRelay();
    QString temperature();
    QString heartbeat();

    const Device &m_device;
    QRandomGenerator m_random;
};

} // namespace sim
