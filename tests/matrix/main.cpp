/// Every command with every fault of a reply, against simulated terminals. Time-outs are sleep, so
/// the cases are shared among processes side by side.
///   fault-matrix [PROCESSES]

#include "tests/matrix/casebench.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QMap>
#include <QProcess>
#include <QTextStream>

#include <memory>
#include <vector>

namespace {

constexpr int DefaultProcesses = 48;
constexpr int LongestRun = 45 * 60 * 1000; // ms
const char Share[] = "--share";

/// Goes through every `processes`th case; a line for each: its number and what went wrong.
int runShare(size_t share, size_t processes)
{
    QTextStream out(stdout);
    CaseBench bench;
    const std::vector<FaultCase> cases = faultCases();
    for (size_t i = share; i < cases.size(); i += processes) {
        out << i << '\t' << bench.run(cases[i]).replace('\n', ' ') << '\n';
        out.flush();
    }
    return 0;
}

struct Tally
{
    int passed = 0;
    int all = 0;
};

/// Counts a share's lines; those that tell a failure are shown. Returns the last case that it told.
size_t count(const QByteArray &output, const std::vector<FaultCase> &cases,
             QMap<QByteArray, Tally> *tallies, QTextStream &out)
{
    size_t last = 0;
    for (const QByteArray &line : output.split('\n')) {
        const int tab = line.indexOf('\t');
        const size_t index = line.left(tab).toUInt();
        if (tab < 0 || index >= cases.size())
            continue;
        last = index;
        if (tab == line.size() - 1)
            ++(*tallies)[cases[index].kind].passed;
        else
            out << "FAILED  " << QString::fromUtf8(line.mid(tab + 1)) << '\n';
    }
    return last;
}

int runAll(int processes)
{
    std::vector<std::unique_ptr<QProcess>> shares;
    for (int i = 0; i < processes; ++i) {
        shares.push_back(std::make_unique<QProcess>());
        shares.back()->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        shares.back()->start(QCoreApplication::applicationFilePath(),
                             {Share, QString::number(i), QString::number(processes)});
    }

    const std::vector<FaultCase> cases = faultCases();
    QMap<QByteArray, Tally> tallies;
    for (const FaultCase &faultCase : cases)
        ++tallies[faultCase.kind].all;
    QTextStream out(stdout);
    bool sound = true;
    for (const auto &share : shares) {
        const bool ended = share->waitForFinished(LongestRun);
        sound =
            ended && share->exitStatus() == QProcess::NormalExit && share->exitCode() == 0 && sound;
        count(share->readAllStandardOutput(), cases, &tallies, out);
    }

    Tally total;
    for (auto row = tallies.cbegin(); row != tallies.cend(); ++row) {
        out << QString::fromLatin1(row.key()).leftJustified(30) << row->passed << " of " << row->all
            << '\n';
        total.passed += row->passed;
        total.all += row->all;
    }
    out << total.passed << " of " << total.all << " cases passed, " << manners().size()
        << " commands\n";
    return sound && total.passed == total.all ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "default.debug=false");
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 4 && arguments[1] == Share)
        return runShare(arguments[2].toUInt(), arguments[3].toUInt());
    return runAll(arguments.size() == 2 ? qMax(1, arguments[1].toInt()) : DefaultProcesses);
}
