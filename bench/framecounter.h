#pragma once

#include <QHash>
#include <QObject>

/// Counts the camera pictures that are painted.
class FrameCounter : public QObject
{
    Q_OBJECT

public:
    /// Counts the pictures of all windows that exist now.
    FrameCounter();

    int total() const { return count; }
    void mark() { marked = count; }
    int sinceMark() const { return count - marked; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QHash<QObject *, qint64> shown; ///< the key of each label's last picture
    int count = 0;
    int marked = 0;
};
