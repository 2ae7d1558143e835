/// The list of QR codes, as text.

#include "dialogs/qrcodedialog.h"
#include "fuzz/harness.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    harness::prepareApplication();
    static auto &log = *new QTextEdit;
    static auto &client = *new ReplayClient(&log);
    static auto &dialog = *new QRCodeDialog(&client, &log, nullptr);
    log.clear();
    client.setReply(harness::reply(data, size));
    harness::click(dialog, "readBtn");
    return 0;
}
