#pragma once

#include "simulator/state/device.h"
#include "simulator/wire/packets.h"

namespace sim {

/// What a reply carries behind its head.
enum class ReplyForm : quint8 {
    Plain,     ///< data only; such a command cannot be refused
    Status,    ///< a status byte, then data if there are any
    Exclusive, ///< like Status; busy while a person is being enrolled
};

struct Command
{
    wire::Command code;
    ReplyForm form;
    const char *name;
    QByteArray (*answer)(Device &, PayloadReader &); ///< returns the whole reply
};

/// Returns nullptr when there is no such command.
const Command *findCommand(quint8 code);

/// Carries out a request and returns the whole reply. `command` is nullptr if there is none.
QByteArray answerTo(const Command *command, Device &device, const QByteArray &payload);

/// Announces a change of the state and returns status Ok.
QByteArray changed(Device &device, const QString &event);
template <class Items> QByteArray cleared(Device &device, Items &items, const char *event)
{
    items.clear();
    return changed(device, event);
}

// The commands of each family, which are in a file of their own.
extern const QVector<Command> DeviceCommands;
extern const QVector<Command> EnrollCommands;
extern const QVector<Command> ImageCommands;
extern const QVector<Command> QrCommands;
extern const QVector<Command> RecordCommands;
extern const QVector<Command> UserCommands;

} // namespace sim
