#include "simulator/commands/command.h"

namespace sim {

const Command *findCommand(quint8 code)
{
    for (const auto *family : {&DeviceCommands, &EnrollCommands, &ImageCommands, &QrCommands,
                               &RecordCommands, &UserCommands})
        for (const Command &command : *family)
            if (static_cast<quint8>(command.code) == code)
                return &command;
    return nullptr;
}

QByteArray answerTo(const Command *command, Device &device, const QByteArray &payload)
{
    if (!command)
        return statusReply(Status::WrongParameter);
    if (command->form == ReplyForm::Exclusive && device.enrolling())
        return statusReply(Status::Busy);
    PayloadReader reader(payload);
    return command->answer(device, reader);
}

QByteArray changed(Device &device, const QString &event)
{
    device.changed(event);
    return statusReply(Status::Ok);
}

} // namespace sim
