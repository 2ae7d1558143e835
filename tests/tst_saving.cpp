#include "app/language.h"
#include "data/wholefile.h"
#include "testkit/modaldriver.h"
#include "testkit/windowrig.h"

#include <QFileDialog>
#include <QtTest>

#include <filesystem>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

class TestSaving : public QObject
{
    Q_OBJECT

public:
    static void initMain() { qputenv("LC_ALL", "fa_IR.UTF-8"); } // a locale with other digits

private slots:
    void initTestCase() { useLanguage(); }
    void init() { QVERIFY(QDir(QCoreApplication::applicationDirPath()).mkdir("img")); }
    void cleanup() { pictures().removeRecursively(); }
    void savesPng_data();
    void savesPng();
    void savesRaw_data();
    void savesRaw();
    void savesTheCurrentFrame();
    void replacesAFileOnlyAsAWhole();

private:
    static QDir pictures() { return QCoreApplication::applicationDirPath() + "/img"; }
};

namespace {

struct PreviewedWindow : WindowRig
{
    /// Runs the preview of this button, if it has one, until a picture is shown.
    explicit PreviewedWindow(const QByteArray &preview)
    {
        servePictures();
        connectToPeer();
        if (preview.isEmpty())
            return;
        click(preview);
        QTRY_VERIFY(peer.servedCount() >= 2); // the first picture is shown by now
        click(preview);
    }
};

/// Limits the size of files, like a full disk, until it is destroyed.
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

} // namespace

void TestSaving::savesPng_data()
{
    QTest::addColumn<QByteArray>("preview");
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("outcome"); ///< error line, or beginning of the logged file name
    QTest::addColumn<bool>("written");

    const auto row = [](const char *name, const char *preview, const char *button,
                        const char *outcome, bool written = false) {
        QTest::newRow(name) << QByteArray(preview) << QByteArray(button) << QString(outcome)
                            << written;
    };
    const char palmprint[] = "saveRgbPngBtnClickAct";
    const char vein[] = "saveIrPngBtnClickAct";
    const char joint[] = "saveMixPngBtnClickAct";
    row("palmprint-seen", "showRgbBtnClickAct", palmprint,
        "Empty palmprint image, fail to save it.");
    row("palmprint-with-vein-seen", "showIrBtnClickAct", palmprint, "rgb_");
    row("vein-unseen", "", vein, "ir_");
    row("vein-seen", "showMixBtnClickAct", vein, "Empty palm vein image, fail to save it.");
    row("joint-with-palmprint-seen", "showRgbBtnClickAct", joint, "ir_");
    row("joint-seen", "showMixBtnClickAct", joint, "ir_", true);
}

void TestSaving::savesPng()
{
    QFETCH(QByteArray, preview);
    QFETCH(QByteArray, button);
    QFETCH(QString, outcome);
    QFETCH(bool, written);

    const PreviewedWindow console(preview);
    const auto now = [] {
        return QLocale::c().toString(QDateTime::currentDateTime(), "yyMMddHHmmss");
    };
    const QString before = now();
    console.click(button);
    const QString after = now();

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
        const QByteArray vein = frame(4);
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
    const QByteArray vein = frame(4);
    QByteArray joint;
    for (int row = 0; row < 720; ++row)
        joint += palmprint.mid(540 * row, 540) + vein.mid(540 * row, 540);
    const auto row = [](const char *button, const char *caption, const QByteArray &content) {
        QTest::newRow(button) << QByteArray(button) << QString(caption) << content;
    };
    row("saveRgbRawBtnClickAct", "save palmprint RAW image", palmprint);
    row("saveIrRawBtnClickAct", "save palm vein RAW image", vein);
    row("saveMixRawBtnClickAct", "save joint RAW image", joint);
}

// The file name is encoded in UTF-8, and no suffix is added.
void TestSaving::savesRaw()
{
    QFETCH(QByteArray, button);
    QFETCH(QString, caption);
    QFETCH(QByteArray, content);

    const PreviewedWindow console("showMixBtnClickAct");
    const QString path = pictures().filePath("Hände 手掌 \U0001F590 %1");
    ModalDriver driver([&](QWidget *box) {
        const auto *files = qobject_cast<QFileDialog *>(box);
        QVERIFY(files);
        QCOMPARE(files->windowTitle(), caption);
        QCOMPARE(files->directory().path(), pictures().path());
        QCOMPARE(files->nameFilters(), QStringList("Text files (*.bin)"));
        QCOMPARE(files->acceptMode(), QFileDialog::AcceptSave);
        answer::file(path)(box);
    });
    console.click(button);
    QCOMPARE(console.lines("infoText"), QStringList("Image saved：" + path));
    QVERIFY(contentOf(path) == content);
    QVERIFY(std::filesystem::exists(std::filesystem::u8path(path.toStdString())));

    driver.then(answer::close());
    console.click(button);
    QCOMPARE(console.lines("infoText").value(1), QString("Fail to save the image."));
}

// A preview may run while the file dialog is open.
void TestSaving::savesTheCurrentFrame()
{
    const PreviewedWindow console("");
    const QString path = pictures().filePath("palm");
    const ModalDriver driver([&](QWidget *box) {
        console.click("showRgbBtnClickAct");
        QTRY_VERIFY(console.peer.servedCount() >= 2);
        console.click("showRgbBtnClickAct");
        answer::file(path)(box);
    });
    console.click("saveRgbRawBtnClickAct");
    QCOMPARE(console.lines("infoText"), QStringList("Image saved：" + path));
    QVERIFY(contentOf(path) == frame(1));
}

void TestSaving::replacesAFileOnlyAsAWhole()
{
    const QString path = pictures().filePath("some.bin");
    const auto replaces = [&](int size, int limit) {
        QVERIFY(writeWholeFile(path, "old"));
        bool written = false;
        {
            const FullDisk disk(static_cast<unsigned>(limit));
            written = writeWholeFile(path, QByteArray(size, 'n'));
        }
        QCOMPARE(written, size <= limit);
        QCOMPARE(contentOf(path), written ? QByteArray(size, 'n') : QByteArray("old"));
        QCOMPARE(pictures().entryList(QDir::Files), QStringList("some.bin"));
    };
    replaces(4096, 4096);
    replaces(0, 0);
    replaces(4097, 4096);
    replaces(100, 0); // fits the file's buffer
    replaces(100000, 50000);
}

QTEST_MAIN(TestSaving)
#include "tst_saving.moc"
