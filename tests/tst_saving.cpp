#include "boxuser.h"
#include "link/wholefile.h"
#include "windowrig.h"

#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

#include <filesystem>
#include <memory>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

class TestSaving : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(QDir(QCoreApplication::applicationDirPath()).mkdir("img")); }
    void cleanup() { pictures().removeRecursively(); }
    void savesPng_data();
    void savesPng();
    void savesRaw_data();
    void savesRaw();
    void savesTheFrameOfTheMoment();
    void savesRawUnderAnyName_data();
    void savesRawUnderAnyName();
    void savesNoRaw_data();
    void savesNoRaw();
    void replacesOnlyByAWholeFile_data();
    void replacesOnlyByAWholeFile();

private:
    static QDir pictures() { return QCoreApplication::applicationDirPath() + "/img"; }
};

namespace {

/// A frame in which every column and every row differs from its neighbours.
QByteArray frame(int shift)
{
    QByteArray bytes(388800, '\0');
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i % 251 + shift);
    return bytes;
}

struct Console : WindowRig
{
    /// Runs the preview of this button, if any, until a picture has come.
    explicit Console(const QByteArray &preview)
    {
        peer.serve(hex("EAC5 000001 01"), head(388800) + frame(1));
        peer.serve(hex("EAC5 000001 02"), head(388800) + frame(2));
        peer.serve(hex("EAC5 000001 03"), head(777600) + frame(1) + frame(2));
        connectToPeer();
        if (preview.isEmpty())
            return;
        click(preview);
        QTRY_VERIFY(peer.servedCount() >= 2); // so the first one has been shown
        click(preview);
    }
};

/// While it lives no file can grow beyond so many bytes, as on a full disk.
class FullDisk
{
public:
#ifdef Q_OS_UNIX
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &former);
        const rlimit limit{bytes, former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &former);
    }

private:
    rlimit former;
#else
    explicit FullDisk(int)
    {
        QSKIP("no such limit here");
    }
#endif
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "no file";
}

} // namespace

void TestSaving::savesPng_data()
{
    QTest::addColumn<QByteArray>("preview");
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("outcome"); ///< the refusal, or the start of the name logged
    QTest::addColumn<bool>("written");

    const auto row = [](const char *name, const char *preview, const char *button,
                        const char *outcome, bool written) {
        QTest::newRow(name) << QByteArray(preview) << QByteArray(button) << QString(outcome)
                            << written;
    };
    const char palmprint[] = "saveRgbPngBtnClickAct";
    const char vein[] = "saveIrPngBtnClickAct";
    const char joint[] = "saveMixPngBtnClickAct";
    row("palmprint-unseen", "", palmprint, "rgb_", false);
    row("palmprint-seen", "showRgbBtnClickAct", palmprint,
        "Empty palmprint image, fail to save it.", false);
    row("palmprint-with-vein-seen", "showIrBtnClickAct", palmprint, "rgb_", false);
    row("vein-unseen", "", vein, "ir_", false);
    row("vein-seen", "showMixBtnClickAct", vein, "Empty palm vein image, fail to save it.", false);
    row("joint-unseen", "", joint, "ir_", false);
    row("joint-with-palmprint-seen", "showRgbBtnClickAct", joint, "ir_", false);
    row("joint-seen", "showMixBtnClickAct", joint, "ir_", true);
}

void TestSaving::savesPng()
{
    QFETCH(QByteArray, preview);
    QFETCH(QByteArray, button);
    QFETCH(QString, outcome);
    QFETCH(bool, written);

    const Console console(preview);
    const QString before = QDateTime::currentDateTime().toString("yyMMddHHmmss");
    console.click(button);
    const QString after = QDateTime::currentDateTime().toString("yyMMddHHmmss");

    const QStringList lines = console.lines("infoText");
    QCOMPARE(lines.size(), 1);
    const QString start =
        "Image saved: " + QCoreApplication::applicationDirPath() + "\\img\\" + outcome;
    const QRegularExpression pattern('^' + QRegularExpression::escape(start) + "(\\d{12})\\.png$");
    const QString time = pattern.match(lines[0]).captured(1);
    if (outcome.endsWith('_'))
        QVERIFY2(before <= time && time <= after, qPrintable(lines[0]));
    else
        QCOMPARE(lines[0], outcome);
    QCOMPARE(pictures().entryList(QDir::Files),
             written ? QStringList(outcome + time + ".png") : QStringList());
    if (written) {
        const QByteArray vein = frame(2);
        const QImage expected(reinterpret_cast<const uchar *>(vein.constData()), 540, 720, 540,
                              QImage::Format_Grayscale8);
        const QImage saved(pictures().filePath(outcome + time + ".png"), "PNG");
        QCOMPARE(saved.convertToFormat(QImage::Format_Grayscale8), expected);
    }
}

void TestSaving::savesRaw_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QByteArray>("content");

    const QByteArray palmprint = frame(1);
    const QByteArray vein = frame(2);
    QByteArray joint;
    for (int row = 0; row < 720; ++row)
        joint += palmprint.mid(540 * row, 540) + vein.mid(540 * row, 540);
    QTest::newRow("palmprint") << QByteArray("saveRgbRawBtnClickAct") << "save palmprint RAW image"
                               << frame(1);
    QTest::newRow("vein") << QByteArray("saveIrRawBtnClickAct") << "save palm vein RAW image"
                          << vein;
    QTest::newRow("joint") << QByteArray("saveMixRawBtnClickAct") << "save joint RAW image"
                           << joint;
}

void TestSaving::savesRaw()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, caption);
    QFETCH(QByteArray, content);

    const Console console("showMixBtnClickAct");
    const QString path = pictures().filePath("palm"); // no suffix is added
    BoxUser user([&](QWidget *box) {
        const auto *files = qobject_cast<QFileDialog *>(box);
        QVERIFY(files);
        QCOMPARE(files->windowTitle(), caption);
        QCOMPARE(files->directory().path(), pictures().path());
        QCOMPARE(files->nameFilters(), QStringList("Text files (*.bin)"));
        QCOMPARE(files->acceptMode(), QFileDialog::AcceptSave);
        BoxUser::choose(path)(box);
    });
    console.click(button);
    QCOMPARE(console.lines("infoText"), QStringList("Image saved：" + path));
    QVERIFY(contentOf(path) == content);

    user.then([](QWidget *box) { box->close(); });
    console.click(button);
    QCOMPARE(console.lines("infoText").value(1), QString("Fail to save the image."));
}

// A preview may go on behind the box.
void TestSaving::savesTheFrameOfTheMoment()
{
    const Console console("");
    const QString path = pictures().filePath("palm");
    const BoxUser user([&](QWidget *box) {
        console.click("showRgbBtnClickAct");
        QTRY_VERIFY(console.peer.servedCount() >= 2);
        console.click("showRgbBtnClickAct");
        box->findChild<QLineEdit *>("fileNameEdit")->setText(path);
        static_cast<QDialog *>(qobject_cast<QFileDialog *>(box))->accept();
    });
    console.click("saveRgbRawBtnClickAct");
    QCOMPARE(console.lines("infoText"), QStringList("Image saved：" + path));
    QVERIFY(contentOf(path) == frame(1));
}

void TestSaving::savesRawUnderAnyName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("umlauts") << "Hände.bin";
    QTest::newRow("Chinese") << "手掌 1.bin";
    QTest::newRow("beyond-16-bits") << QString::fromUtf8("\xF0\x9F\x96\x90.bin");
    QTest::newRow("placeholder") << "%1.bin";
}

// Frames that never came are saved as they are; the name on the disk is UTF-8.
void TestSaving::savesRawUnderAnyName()
{
    QFETCH(QString, name);
    const Console console("");
    const QString path = pictures().filePath(name);
    const BoxUser user(BoxUser::choose(path));
    console.click("saveRgbRawBtnClickAct");
    QCOMPARE(console.lines("infoText"), QStringList("Image saved：" + path));
    const auto onDisk = std::filesystem::u8path(path.toStdString());
    QVERIFY(std::filesystem::exists(onDisk));
    QCOMPARE(std::filesystem::file_size(onDisk), std::uintmax_t{388800});
}

void TestSaving::savesNoRaw_data()
{
    QTest::addColumn<bool>("vanished");
    QTest::newRow("full-disk") << false;
    QTest::newRow("vanished-folder") << true;
}

void TestSaving::savesNoRaw()
{
    QFETCH(bool, vanished);
    const Console console("");
    QVERIFY(writeWholeFile(pictures().filePath("palm.bin"), "old"));
    std::unique_ptr<FullDisk> disk;
    BoxUser user([&](QWidget *box) {
        BoxUser::choose(pictures().filePath("palm.bin"))(box);
        if (vanished)
            cleanup();
        else
            disk = std::make_unique<FullDisk>(4096);
    });
    user.then(BoxUser::press("Yes")); // to the question whether to replace the file
    console.click("saveRgbRawBtnClickAct");
    disk.reset();
    QCOMPARE(console.lines("infoText"), QStringList("Fail to save the image."));
    QCOMPARE(pictures().exists(), !vanished);
    if (!vanished) {
        QCOMPARE(pictures().entryList(QDir::Files), QStringList("palm.bin"));
        QCOMPARE(contentOf(pictures().filePath("palm.bin")), QByteArray("old"));
    }
}

void TestSaving::replacesOnlyByAWholeFile_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("limit");
    QTest::addColumn<bool>("written");
    QTest::newRow("room") << 4096 << 4096 << true;
    QTest::newRow("empty-file") << 0 << 0 << true;
    QTest::newRow("one-byte-too-many") << 4097 << 4096 << false;
    QTest::newRow("small-file-without-room") << 100 << 0 << false;
    QTest::newRow("larger-than-a-buffer") << 100000 << 50000 << false;
}

void TestSaving::replacesOnlyByAWholeFile()
{
    QFETCH(int, size);
    QFETCH(int, limit);
    QFETCH(bool, written);

    const QString path = pictures().filePath("some.bin");
    QVERIFY(writeWholeFile(path, "old"));
    bool result = false;
    {
        const FullDisk disk(static_cast<unsigned>(limit));
        result = writeWholeFile(path, QByteArray(size, 'n'));
    }
    QCOMPARE(result, written);
    QCOMPARE(contentOf(path), written ? QByteArray(size, 'n') : QByteArray("old"));
    QCOMPARE(pictures().entryList(QDir::Files), QStringList("some.bin"));
}

QTEST_MAIN(TestSaving)
#include "tst_saving.moc"
