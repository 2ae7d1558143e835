/// Reads the list of QR codes.

#include "dialogs/qrcodedialog.h"
#include "fuzz/harness.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    harness::receive<QRCodeDialog>("readBtn", data, size);
    return 0;
}
