/// Shows a page of access records; the input follows the status.

#include "dialogs/accessrecorddlg.h"
#include "fuzz/harness.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    harness::receive<AccessRecordDlg>("readRecordBtnClickAct", data, size);
    return 0;
}
