#include "app/appearance.h"
#include "configrig.h"
#include "simulator/terminal.h"
#include "testkit/modaldriver.h"

#include <QFileDialog>

#include <sys/stat.h>

/// Export and import of the configuration documents.
class TestConfigFiles : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareAppearance(); }
    void cleanup() { removeExports(); }
    void exportsAndImports_data();
    void exportsAndImports();
    void restoresTheTerminalsDocument();
};

namespace {

void spoil(Json::Value *value)
{
    for (Json::Value &member : *value) {
        if (member.isObject())
            spoil(&member);
        else if (!member.isNull())
            member = member.isString() ? Json::Value("9.9.9.9") : Json::Value(member.asInt() + 1);
    }
}

} // namespace

void TestConfigFiles::exportsAndImports_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("line"); ///< log line of the import
    for (const auto &words : Words) {
        const auto row = [&](const char *obstacle, const QByteArray &content, const QString &line) {
            const QByteArray tag = words[Name] + ('-' + QByteArray(obstacle));
            QTest::newRow(tag.constData()) << obstacle << content << line;
        };
        row("none", hex("00FF0D0A257B"), "Cfg file issued.");
        row("no-bytes", "", "Cfg file issued.");
        row("many-bytes", QByteArray(65530, 'x'), "Cfg file issued.");
        row("too-many-bytes", QByteArray(65531, 'x'), "The data is too long for one packet.");
        row("refused", "{}", "Unknown error.");
        row("cancelled", "{}", "");
        row("gone", "{}", words[NotOpened]);
        row("pipe", "{}", words[NotOpened]);
        row("folder", "{}", "");
    }
}

// A longer file with the name of the exported file exists before.
void TestConfigFiles::exportsAndImports()
{
    QFETCH(QString, obstacle);
    QFETCH(QByteArray, content);
    QFETCH(QString, line);
    ConfigRig rig(dialogOfRow());
    QFile file(rig.path);
    const bool isFolder = obstacle == "folder";
    QVERIFY(isFolder ? QDir().mkpath(rig.path) : file.open(QIODevice::WriteOnly));
    if (!isFolder)
        file.write(content + QByteArray(content.size() < 100 ? 100 : 0, 'o'));
    file.close();
    if (content.size() < 100) { // a terminal's document
        const QString end = QString(rig.words[isFolder ? NotSaved : Saved]).arg(rig.path);
        QCOMPARE(rig.get("Export", content), QString("File loaded：%1|").arg(content.size()) + end);
    }
    if (isFolder)
        return;
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll() == content);

    const ModalDriver driver([&](QWidget *box) {
        const auto *files = qobject_cast<QFileDialog *>(box);
        QVERIFY(files);
        QCOMPARE(files->windowTitle(), QString("select fw"));
        QCOMPARE(files->directory().path(), QCoreApplication::applicationDirPath());
        QCOMPARE(files->nameFilters(), QStringList("*.cfg"));
        (obstacle == "cancelled" ? answer::close() : answer::file(rig.path))(box);
        if (obstacle == "gone" || obstacle == "pipe")
            QVERIFY(file.remove());
        if (obstacle == "pipe") // a pipe without a writer
            QCOMPARE(mkfifo(qPrintable(rig.path), S_IRUSR), 0);
    });
    const bool isRefused = obstacle == "refused";
    const bool isSent = isRefused || line == "Cfg file issued.";
    QCOMPARE(isSent ? rig.send("Import", content, isRefused ? Refusal : Ok) : rig.press("Import"),
             line.replace("%1", rig.path));
}

// Set and Import restore every value that was loaded or exported.
void TestConfigFiles::restoresTheTerminalsDocument()
{
    sim::Terminal terminal;
    QVERIFY(terminal.listen(QHostAddress::LocalHost, 0));
    sim::Documents &documents = terminal.device().state.documents;
    Json::Value *const ofDialog[] = {&documents.output, &documents.user, &documents.vendor};
    for (const Dialog dialog : All) {
        ConfigRig rig(dialog);
        QVERIFY(rig.client.connectToDevice("127.0.0.1", terminal.port()));
        const QString exported = rig.press("Export");
        const QString size = QString::number(QFile(rig.path).size());
        QVERIFY2(exported.startsWith("File loaded：" + size + '|'), qPrintable(exported));
        QCOMPARE(rig.press("Load"), QString(rig.words[Loaded]).arg(size));

        const ModalDriver driver(answer::file(rig.path));
        const Json::Value before = *ofDialog[dialog];
        for (const char *button : {"Set", "Import"}) {
            spoil(ofDialog[dialog]);
            QVERIFY(*ofDialog[dialog] != before);
            rig.press(button);
            QVERIFY2(*ofDialog[dialog] == before, ofDialog[dialog]->toStyledString().c_str());
        }
    }
}

QTEST_MAIN(TestConfigFiles)
#include "tst_configfiles.moc"
