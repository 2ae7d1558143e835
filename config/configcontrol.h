#pragma once

#include <QStringList>
#include <QTime>
#include <QVector>

#include <json/value.h>

#include <functional>
#include <optional>

class QWidget;

/// The control of one key of a configuration document, and how the key's value gets into it and out
/// of it. The widget belongs to the window that it is put into.
struct ConfigControl
{
    QWidget *widget; ///< null for a key that is only written
    /// Shows the key's value; false, with nothing changed, when that is not acceptable.
    std::function<bool(const Json::Value &object, const char *key)> show;
    /// The value to send; none when the key is to be left out.
    std::function<std::optional<Json::Value>()> value;
};

namespace control {

/// The numbers that a key accepts, which may be more than its control can show. They are compared
/// as unsigned ones, so that a negative number is above every limit.
struct Accepted
{
    quint32 least = 0;
    quint32 most = 0xFFFFFFFF;
};

/// What a spin box can show, and what it shows first.
struct Limits
{
    int least;
    int most;
    int start;
};

struct CodedItem
{
    QString text;
    int value;
};

enum class Typing : quint8 { Anything, DigitsAndDots, ShortDigitsAndDots };

/// A combo box whose index is the value. A value that has no item selects none, which is -1.
ConfigControl choice(const QStringList &items, Accepted accepted, int start = 0);
/// A combo box whose items have values of their own, the only ones that are accepted.
ConfigControl codedChoice(const QVector<CodedItem> &items);
/// A combo box of two items: the first for 0, the second for any other value, sent as 1.
ConfigControl onOff(const QStringList &items);
/// A spin box; it takes the nearest number that it can show.
ConfigControl number(Limits limits, Accepted accepted = {});
/// The same, but not to be changed by the operator: shown and sent back.
ConfigControl shownNumber(Limits limits, Accepted accepted = {});
/// A time edit; the value counts minutes since midnight.
ConfigControl timeOfDay(QTime start);
/// A line edit; a longer text is cut.
ConfigControl text(int maxLength);
/// A line edit. Shows any text; one that is no dotted quad is left out of the document. Short
/// digits and dots are 15 at most, and a longer text is cut.
ConfigControl address(Typing typing);
/// A key that is sent as null.
ConfigControl null();

} // namespace control
