#include "widgets/controls.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionComboBox>

namespace {

constexpr int ButtonPadding = 4;
constexpr int ComboPadding = 1;        // left empty by the styles
constexpr int MinStretch = 60;         // per cent
constexpr double TwoLinesFactor = 1.4; // a label whose text is wider by more gets two lines

int widestText(const QFont &font, const QStringList &texts)
{
    const QFontMetrics metrics(font);
    int widest = 0;
    for (const QString &text : texts)
        widest = qMax(widest, metrics.horizontalAdvance(text));
    return widest;
}

/// Narrows the widget's font until the texts fit. Each stretch loads another font, so the search
/// begins near the result.
void fitTexts(QWidget *widget, const QStringList &texts, int width)
{
    QFont font = widget->font();
    font.setStretch(QFont::AnyStretch);
    const int textWidth = widestText(font, texts);
    if (textWidth > width) {
        int stretch = qMax(MinStretch, QFont::Unstretched * width / textWidth);
        do
            font.setStretch(stretch);
        while (widestText(font, texts) > width && --stretch >= MinStretch);
    }
    if (font != widget->font())
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
    const int textWidth = QFontMetrics(label->font()).horizontalAdvance(text);
    if (text.contains(QLatin1Char(' ')) && textWidth > TwoLinesFactor * size.width())
        useTwoLines(label);
    else
        fitTexts(label, {text}, size.width());
    return label;
}

void controls::setCaption(QPushButton *button, const QString &text)
{
    button->setText(text);
    fitTexts(button, {text}, button->maximumWidth() - 2 * ButtonPadding);
}

void controls::fitItems(QComboBox *combo)
{
    QStyleOptionComboBox option;
    option.initFrom(combo);
    option.rect = QRect(QPoint(), combo->maximumSize());
    const QRect field = combo->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                       QStyle::SC_ComboBoxEditField, combo);
    QStringList items;
    for (int i = 0; i < combo->count(); ++i)
        items.append(combo->itemText(i));
    fitTexts(combo, items, field.width() - 2 * ComboPadding);
}

QPushButton *controls::button(const QString &text, QSize size, const QObject *receiver,
                              const char *slot)
{
    auto *button = sized(new QPushButton, size);
    setCaption(button, text);
    const QString signature = QString::fromLatin1(slot + 1); // SLOT() prepends a digit
    button->setObjectName(signature.section(QLatin1Char('('), 0, 0));
    QObject::connect(button, SIGNAL(clicked()), receiver, slot);
    return button;
}

QGridLayout *controls::buttonGrid(std::initializer_list<ButtonRow> buttons, int columns, QSize size,
                                  const QObject *receiver)
{
    auto *grid = new QGridLayout;
    int cell = 0;
    for (const ButtonRow &row : buttons) {
        grid->addWidget(button(row.text, size, receiver, row.slot), cell / columns, cell % columns);
        ++cell;
    }
    return grid;
}

void controls::addField(QGridLayout *grid, int row, int column, const QString &text,
                        QSize labelSize, QWidget *field)
{
    grid->addWidget(label(text, labelSize, field), row, column);
    grid->addWidget(field, row, column + 1);
}

void controls::keepEnterFromButtons(QWidget *window)
{
    for (QPushButton *button : window->findChildren<QPushButton *>())
        button->setAutoDefault(false);
}

QString controls::wholeText(const QLineEdit *edit)
{
    const QString text = edit->text();
    const bool cut = !text.isEmpty() && text.back().isHighSurrogate();
    return cut ? text.chopped(1) : text;
}
