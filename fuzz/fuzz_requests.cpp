/// The simulated terminal's requests: a stream that arrives in pieces, whose size the first byte
/// tells.

#include "fuzz/harness.h"
#include "simulator/commands/commands.h"
#include "simulator/state/device.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    harness::prepareApplication();
    if (size == 0)
        return 0;
    const QByteArray stream(reinterpret_cast<const char *>(data) + 1, static_cast<int>(size) - 1);
    const int piece = data[0] + 1;
    sim::DeviceOptions options;
    options.maxUsers = 10;
    options.maxQrCodes = 5;
    sim::Device device(options);
    sim::RequestSplitter splitter;
    for (int from = 0; from < stream.size(); from += piece) {
        splitter.append(stream.mid(from, piece));
        sim::Request request;
        while (splitter.next(&request) == sim::RequestSplitter::Result::Request) {
            const sim::Command *command = sim::findCommand(request.code);
            if (command && command->answer(device, request).size() < 6)
                abort();
        }
    }
    return 0;
}
