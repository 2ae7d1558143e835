#include "widgets/placement.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace {

int area(const QRect &rect)
{
    return rect.width() * rect.height();
}

} // namespace

QRect placement::within(const QRect &window, const QRect &screen)
{
    const QPoint last = screen.bottomRight() - QPoint(window.width() - 1, window.height() - 1);
    return {QPoint(qMax(screen.left(), qMin(window.left(), last.x())),
                   qMax(screen.top(), qMin(window.top(), last.y()))),
            window.size()};
}

QRect placement::overPictures(QSize dialog, const QRect &pictures, const QRect &hints,
                              const QRect &messages, const QRect &screen)
{
    QRect place({}, dialog);
    place.moveCenter(pictures.center());
    const QRect logs = hints | messages;
    if (!logs.isEmpty())
        place.moveRight(qMin(place.right(), logs.left() - 1));
    const auto at = [&](int top) { return within({{place.left(), top}, dialog}, screen); };
    const auto covered = [&](const QRect &rect) {
        return std::pair(area(rect & hints), area(rect & messages));
    };
    return std::min(
        {at(place.top()), at(hints.top() - dialog.height()), at(logs.bottom() + 1)},
        [&](const QRect &one, const QRect &other) { return covered(one) < covered(other); });
}
