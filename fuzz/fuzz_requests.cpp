/// Feeds requests to the simulated terminal in pieces; the first byte sets the size of a piece.

#include "simulator/commands/command.h"

#include <QBuffer>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray stream(reinterpret_cast<const char *>(data) + 1, static_cast<int>(size) - 1);
    const int piece = data[0] + 1;
    sim::DeviceOptions options;
    options.maxUsers = 10;
    options.maxQrCodes = 5;
    sim::Device device(options);
    QBuffer arrived;
    arrived.open(QIODevice::ReadWrite);
    for (int from = 0; from < stream.size(); from += piece) {
        const qint64 place = arrived.pos();
        arrived.seek(arrived.size());
        arrived.write(stream.mid(from, piece));
        arrived.seek(place);
        sim::Request request;
        while (sim::takeRequest(arrived, &request) == sim::Arrival::Whole) {
            const sim::Command *command = sim::findCommand(request.code);
            if (sim::answerTo(command, device, request.payload).size() < 6)
                abort();
        }
    }
    return 0;
}
