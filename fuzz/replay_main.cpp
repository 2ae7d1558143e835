/// Runs a fuzz target on all files in the folders given as arguments: a test of the kept inputs,
/// for compilers without a fuzzer, too.

#include <QDir>
#include <QTextStream>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

int main(int argc, char *argv[])
{
    int inputs = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir folder(QString::fromLocal8Bit(argv[i]));
        for (const QString &name : folder.entryList(QDir::Files)) {
            QFile file(folder.filePath(name));
            if (!file.open(QIODevice::ReadOnly))
                return 1;
            const QByteArray input = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(input.constData()),
                                   static_cast<size_t>(input.size()));
            ++inputs;
        }
    }
    QTextStream(stdout) << inputs << " inputs\n";
    return inputs > 0 ? 0 : 1;
}
