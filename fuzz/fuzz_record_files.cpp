/// Reads the list of record files.

#include "dialogs/accessrecorddlg.h"
#include "fuzz/harness.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    harness::receive<AccessRecordDlg>("getRecordFilesBtnClickAct", data, size);
    return 0;
}
