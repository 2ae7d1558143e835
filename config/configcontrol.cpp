#include "config/configcontrol.h"

#include "data/dottedquad.h"
#include "data/json.h"
#include "widgets/controls.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRegExpValidator>
#include <QSpinBox>
#include <QTimeEdit>

namespace {

using control::Accepted;

constexpr int MaxAddressLength = 15;
constexpr int MinutesPerHour = 60;
constexpr Accepted MinutesOfDay{0, 24 * MinutesPerHour - 1};

using Show = std::function<bool(const Json::Value &, const char *)>;

Show showNumber(Accepted accepted, const std::function<void(int)> &show)
{
    return [accepted, show](const Json::Value &object, const char *key) {
        const std::optional<int> number = json::number(object, key);
        if (!number)
            return false;
        const auto compared = static_cast<quint32>(*number);
        if (compared < accepted.min || compared > accepted.max)
            return false;
        show(*number);
        return true;
    };
}

Show showText(QLineEdit *edit)
{
    return [edit](const Json::Value &object, const char *key) {
        const std::optional<QString> text = json::text(object, key);
        if (text)
            edit->setText(*text);
        return text.has_value();
    };
}

Json::Value utf8(const QString &text)
{
    return text.toStdString();
}

} // namespace

ConfigControl control::choice(const QStringList &items, Accepted accepted, int start)
{
    auto *combo = new QComboBox;
    combo->addItems(items);
    combo->setCurrentIndex(start);
    return {combo, showNumber(accepted, [combo](int value) { combo->setCurrentIndex(value); }),
            [combo] { return combo->currentIndex(); }};
}

ConfigControl control::codedChoice(const QVector<CodedItem> &items)
{
    auto *combo = new QComboBox;
    for (const CodedItem &item : items)
        combo->addItem(item.text, item.value);
    return {combo,
            [combo](const Json::Value &object, const char *key) {
                const std::optional<int> value = json::number(object, key);
                const int index = value ? combo->findData(*value) : -1;
                if (index >= 0)
                    combo->setCurrentIndex(index);
                return index >= 0;
            },
            [combo] { return combo->currentData().toInt(); }};
}

ConfigControl control::onOff(const QStringList &items)
{
    auto *combo = new QComboBox;
    combo->addItems(items);
    return {combo, showNumber({}, [combo](int value) { combo->setCurrentIndex(value ? 1 : 0); }),
            [combo] { return combo->currentIndex(); }};
}

ConfigControl control::number(Limits limits, Accepted accepted)
{
    auto *box = new QSpinBox;
    box->setRange(limits.min, limits.max);
    box->setValue(limits.start);
    return {box, showNumber(accepted, [box](int value) { box->setValue(value); }),
            [box] { return box->value(); }};
}

ConfigControl control::shownNumber(Limits limits, Accepted accepted)
{
    ConfigControl shown = number(limits, accepted);
    static_cast<QSpinBox *>(shown.widget)->setReadOnly(true);
    return shown;
}

ConfigControl control::timeOfDay(QTime start)
{
    auto *edit = new QTimeEdit(start);
    edit->setDisplayFormat(QStringLiteral("HH:mm"));
    return {edit,
            showNumber(MinutesOfDay,
                       [edit](int value) {
                           edit->setTime(QTime(value / MinutesPerHour, value % MinutesPerHour));
                       }),
            [edit] { return edit->time().hour() * MinutesPerHour + edit->time().minute(); }};
}

ConfigControl control::text(int maxLength)
{
    auto *edit = new QLineEdit;
    edit->setMaxLength(maxLength);
    return {edit, showText(edit), [edit] { return utf8(controls::wholeText(edit)); }};
}

ConfigControl control::address(Typing typing)
{
    auto *edit = new QLineEdit;
    if (typing != Typing::Anything)
        edit->setValidator(new QRegExpValidator(QRegExp(QStringLiteral("[0-9.]*")), edit));
    if (typing == Typing::ShortDigitsAndDots)
        edit->setMaxLength(MaxAddressLength);
    return {edit, showText(edit), [edit] {
                return isDottedQuad(edit->text()) ? std::make_optional(utf8(edit->text()))
                                                  : std::nullopt;
            }};
}

ConfigControl control::null()
{
    return {nullptr, [](const Json::Value &, const char *) { return true; },
            [] { return Json::Value(); }};
}
