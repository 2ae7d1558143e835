/// Loads configuration documents into their dialogs: the first byte chooses the dialog, the rest is
/// the document. Then the dialog sends what it shows.

#include "config/outputcfgdlg.h"
#include "config/usercfgdlg.h"
#include "config/vendorcfgdlg.h"
#include "fuzz/harness.h"

namespace {

struct Rig
{
    QTextEdit log;
    ReplayClient client{&log};
    OutputCfgDlg output{&client, &log, nullptr};
    UserCfgDlg user{&client, &log, nullptr};
    vendorCfgDlg vendor{&client, &log, nullptr};
};

struct Buttons
{
    const char *load;
    const char *set;
};

constexpr Buttons ButtonsOf[] = {{"getBtnClickAct", "setBtnClickAct"},
                                 {"getBtnClickAct", "setBtnClickAct"},
                                 {"getCfgBtnClickAct", "setCfgBtnClickAct"}};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    harness::prepareApplication();
    static auto &rig = *new Rig;
    if (size == 0)
        return 0;
    const int chosen = data[0] % 3;
    const QDialog *const dialogs[] = {&rig.output, &rig.user, &rig.vendor};
    rig.log.clear();
    rig.client.setReply(harness::reply(data + 1, size - 1));
    harness::click(*dialogs[chosen], ButtonsOf[chosen].load);
    rig.client.setReply(harness::reply(nullptr, 0));
    harness::click(*dialogs[chosen], ButtonsOf[chosen].set);
    if (!rig.log.toPlainText().contains(QLatin1String("Cfg data issued")))
        abort();
    return 0;
}
