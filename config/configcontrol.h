#pragma once

#include <QStringList>
#include <QTime>
#include <QVector>

#include <json/value.h>

#include <functional>
#include <optional>

class QWidget;

/// The control of one key of a configuration document, with the functions that read and write the
/// key's value. The widget belongs to the window that it is put into.
struct ConfigControl
{
    QWidget *widget; ///< null for a key that is only sent
    /// Shows the key's value. Returns false and changes nothing when the value is not accepted.
    std::function<bool(const Json::Value &object, const char *key)> show;
    /// Returns the value to send, or nothing when the key is to be left out.
    std::function<std::optional<Json::Value>()> value;
};

namespace control {

/// The numbers that a key accepts, possibly more than its control can show. Numbers are compared as
/// unsigned, so that a negative number exceeds every maximum.
struct Accepted
{
    quint32 min = 0;
    quint32 max = 0xFFFFFFFF;
};

/// The range of a spin box, and the value that it shows first.
struct Limits
{
    int min;
    int max;
    int start;
};

struct CodedItem
{
    QString text;
    int value;
};

enum class Typing : quint8 { Anything, DigitsAndDots, ShortDigitsAndDots };

/// A combo box whose index is the value. A value without an item selects no item, which is -1.
ConfigControl choice(const QStringList &items, Accepted accepted, int start = 0);
/// A combo box whose items have their own values. Only these values are accepted.
ConfigControl codedChoice(const QVector<CodedItem> &items);
/// A combo box of two items: the first for 0, the second for any other value, sent as 1.
ConfigControl onOff(const QStringList &items);
/// A spin box; it shows the nearest number in its range.
ConfigControl number(Limits limits, Accepted accepted = {});
/// A read-only spin box; its value is sent back.
ConfigControl shownNumber(Limits limits, Accepted accepted = {});
/// A time edit; the value counts minutes since midnight.
ConfigControl timeOfDay(QTime start);
/// A line edit; a longer text is cut.
ConfigControl text(int maxLength);
/// A line edit that shows any text. A text that is not a dotted quad is not sent. With
/// ShortDigitsAndDots a text is cut to 15 characters.
ConfigControl address(Typing typing);
/// A key that is sent as null.
ConfigControl null();

} // namespace control
