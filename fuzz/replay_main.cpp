/// Runs a fuzz target on files: all those in the folders given as arguments. For compilers without
/// a fuzzer, and for the inputs that are kept.

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
