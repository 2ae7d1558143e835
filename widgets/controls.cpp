#include "widgets/controls.h"

namespace {

constexpr int ButtonPadding = 4;
constexpr int NarrowestLetters = 60; // per cent

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

} // namespace

QLabel *controls::label(const QString &text, QSize size, QWidget *buddy)
{
    auto *label = sized(new QLabel(text), size);
    label->setBuddy(buddy);
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
