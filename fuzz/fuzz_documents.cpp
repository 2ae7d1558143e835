/// Shows documents, pages of records and messages: everything that reads one of them gets the
/// input.

#include "app/documentlines.h"
#include "app/watchserver.h"
#include "config/outputcfgdlg.h"
#include "config/usercfgdlg.h"
#include "config/vendorcfgdlg.h"
#include "dialogs/accessrecorddlg.h"
#include "dialogs/qrcodedialog.h"
#include "testkit/bytes.h"
#include "testkit/replayclient.h"
#include "widgets/textlog.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QTextBlock>
#include <QTextEdit>

namespace {

struct Console
{
    QTextEdit log;
    ReplayClient client{&log};
    OutputCfgDlg output{&client, &log, nullptr};
    UserCfgDlg user{&client, &log, nullptr};
    vendorCfgDlg vendor{&client, &log, nullptr};
    QRCodeDialog qrCodes{&client, &log, nullptr};
    AccessRecordDlg records{&client, &log, nullptr};
};

/// Clicks a button whose request gets this data as the reply.
void click(Console &console, const QDialog &dialog, const char *button, const QByteArray &data)
{
    console.client.setReply(head(data.size() + 1) + '\0' + data);
    dialog.findChild<QPushButton *>(QLatin1String(button))->click();
    QCoreApplication::sendPostedEvents(); // which would accumulate
}

/// Loads a document and sends what the dialog then shows.
void configure(Console &console, const QDialog &dialog, const char *load, const char *set,
               const QByteArray &document)
{
    click(console, dialog, load, document);
    click(console, dialog, set, QByteArray());
    if (!console.log.document()->lastBlock().text().startsWith(QLatin1String("Cfg data issued")))
        abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static auto &console = *new Console;
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<int>(size));
    console.log.clear();
    configure(console, console.output, "getBtnClickAct", "setBtnClickAct", input);
    configure(console, console.user, "getBtnClickAct", "setBtnClickAct", input);
    configure(console, console.vendor, "getCfgBtnClickAct", "setCfgBtnClickAct", input);
    click(console, console.qrCodes, "readBtn", input);
    click(console, console.records, "getRecordFilesBtnClickAct", input);
    click(console, console.records, "readRecordBtnClickAct", input);
    if (const auto users = readUsers(input))
        textlog::append(&console.log, userLines(*users));
    if (const auto info = readSystemInfo(input))
        textlog::append(&console.log, systemInfoLines(*info));
    textlog::append(&console.log, WatchServer::entry(input));
    for (QTextBlock line = console.log.document()->begin(); line.isValid(); line = line.next()) {
        if (line.length() > textlog::MaxLineLength + 2) // the ellipsis and the line's end
            abort();
    }
    return 0;
}
