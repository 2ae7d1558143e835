#include "widgets/controls.h"

namespace {

constexpr int ButtonPadding = 4;
constexpr int NarrowestLetters = 60; // per cent
constexpr double TwoLinesFrom = 1.4; // times the width that there is

void fitText(QWidget *widget, const QString &text, int width)
{
    QFont font = widget->font();
    for (int stretch = 100; stretch >= NarrowestLetters; stretch -= 2) {
        font.setStretch(stretch);
        if (QFontMetrics(font).horizontalAdvance(text) <= width)
            break;
    }
    widget->setFont(font);
}

/// For a label of several words that would be hard to read if narrowed.
void useTwoLines(QLabel *label)
{
    QFont font = label->font();
    font.setPixelSize(label->height() * 2 / 5);
    label->setFont(font);
    label->setWordWrap(true);
}

} // namespace

QLabel *controls::label(const QString &text, QSize size, QWidget *buddy)
{
    auto *label = sized(new QLabel(text), size);
    label->setBuddy(buddy);
    const int wanted = QFontMetrics(label->font()).horizontalAdvance(text);
    if (text.contains(QLatin1Char(' ')) && wanted > TwoLinesFrom * size.width())
        useTwoLines(label);
    else
        fitText(label, text, size.width());
    return label;
}

void controls::setCaption(QPushButton *button, const QString &text)
{
    button->setText(text);
    fitText(button, text, button->maximumWidth() - 2 * ButtonPadding);
}

QPushButton *controls::button(const QString &text, QSize size, const QObject *receiver,
                              const char *slot)
{
    auto *button = sized(new QPushButton, size);
    setCaption(button, text);
    const QString signature = QString::fromLatin1(slot + 1); // behind the digit that SLOT() adds
    button->setObjectName(signature.section(QLatin1Char('('), 0, 0));
    QObject::connect(button, SIGNAL(clicked()), receiver, slot);
    return button;
}
