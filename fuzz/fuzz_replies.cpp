/// Gives a reply to every command: the first byte chooses the command, the rest is the reply.

#include "testkit/commandcases.h"
#include "testkit/replayclient.h"

#include <QTextEdit>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static auto &log = *new QTextEdit;
    static auto &client = *new ReplayClient(&log);
    if (size == 0)
        return 0;
    log.clear();
    client.setReply(
        QByteArray(reinterpret_cast<const char *>(data) + 1, static_cast<int>(size) - 1));
    QByteArray result;
    const bool accepted = commandCases()[data[0] % commandCases().size()].call(client, &result);
    // A command that fails leaves its outputs unchanged; one that succeeds logs at most one line.
    if (accepted ? log.document()->blockCount() > 1 : !result.isEmpty())
        abort();
    return 0;
}
