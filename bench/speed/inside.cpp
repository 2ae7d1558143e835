/// Measurements within one process: a list from the reply to its last shown line compared with
/// parsing alone, and a line appended to a long log compared with one appended to an empty log.

#include "app/documentlines.h"
#include "dialogs/qrcodedialog.h"
#include "testkit/bytes.h"
#include "testkit/drive.h"
#include "testkit/replayclient.h"
#include "widgets/textlog.h"

#include <QApplication>
#include <QTextEdit>

#include <benchmark/benchmark.h>
#include <json/reader.h>

#include <string>

namespace {

constexpr size_t UserListSize = 800000 - 6;
constexpr size_t QrListSize = 614400 - 6;
constexpr int LogLines = 50000;

/// Returns a list with as many entries as fit the size.
std::string listOf(const char *key, const std::string &entry, size_t size)
{
    std::string text = std::string("{\"") + key + "\":[" + entry;
    while (text.size() + entry.size() + 3 <= size)
        text += ',' + entry;
    return text + "]}";
}

const std::string &userList()
{
    static const std::string text = listOf(
        "user_list",
        R"({"card_id":"0","id":"12345","print_cnt":3,"user_name":"Anna Keller","vein_cnt":3})",
        UserListSize);
    return text;
}

const std::string &qrList()
{
    static const std::string text = listOf(
        "qrcode data",
        R"({"QR":"0123456789abcdef0123456789abcdef","et":"2027-01-01 00:00:00","name":"gate",)"
        R"("st":"2026-01-01 00:00:00"})",
        QrListSize);
    return text;
}

QTextEdit *shownLog()
{
    auto *log = new QTextEdit;
    textlog::prepare(log);
    log->setFixedSize(320, 200);
    log->show();
    QCoreApplication::processEvents();
    return log;
}

void parse(benchmark::State &state, const std::string &text)
{
    while (state.KeepRunning()) {
        Json::Value root;
        Json::Reader reader;
        if (!reader.parse(text.data(), text.data() + text.size(), root, false))
            state.SkipWithError("does not parse");
        benchmark::DoNotOptimize(root);
    }
}

void parseUsers(benchmark::State &state)
{
    parse(state, userList());
}

void parseCodes(benchmark::State &state)
{
    parse(state, qrList());
}

void showUsers(benchmark::State &state)
{
    const std::unique_ptr<QTextEdit> log(shownLog());
    while (state.KeepRunning()) {
        textlog::append(log.get(), userLines(*readUsers(QByteArray::fromStdString(userList()))));
        state.PauseTiming();
        log->clear();
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
}

void showCodes(benchmark::State &state)
{
    const std::unique_ptr<QTextEdit> log(shownLog());
    ReplayClient client(log.get());
    const QByteArray list = QByteArray::fromStdString(qrList());
    client.setReply(head(list.size() + 1) + '\0' + list);
    QRCodeDialog dialog(&client, log.get(), nullptr);
    while (state.KeepRunning()) {
        drive::click(&dialog, "readBtn");
        state.PauseTiming();
        log->clear();
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
}

/// Includes painting.
void appendLine(benchmark::State &state)
{
    const std::unique_ptr<QTextEdit> log(shownLog());
    QStringList lines;
    for (int i = 0; i < state.range(0); ++i)
        lines.append(QStringLiteral("UID:%1, username: somebody, feature count:6").arg(i));
    textlog::append(log.get(), lines);
    QCoreApplication::processEvents();
    while (state.KeepRunning()) {
        textlog::append(log.get(), QStringLiteral("Data reading succeeded：765"));
        QCoreApplication::processEvents();
    }
}

BENCHMARK(parseUsers)->Unit(benchmark::kMillisecond);
BENCHMARK(showUsers)->Unit(benchmark::kMillisecond);
BENCHMARK(parseCodes)->Unit(benchmark::kMillisecond);
BENCHMARK(showCodes)->Unit(benchmark::kMillisecond);
BENCHMARK(appendLine)->Arg(0)->Arg(LogLines)->Iterations(500)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char *argv[])
{
    drive::stayOffScreen();
    qputenv("QT_LOGGING_RULES", "default.debug=false");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
