#include "data/json.h"

#include <QtTest>

class TestJson : public QObject
{
    Q_OBJECT

private slots:
    void reads_data();
    void reads();
};

void TestJson::reads_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<bool>("parsed");
    QTest::addColumn<QVariant>("text"); // invalid if the member cannot be read as this type
    QTest::addColumn<QVariant>("number");

    const auto unparsed = [](const char *name, const QByteArray &document) {
        QTest::newRow(name) << document << false << QVariant() << QVariant();
    };
    unparsed("nested-arrays", QByteArray(100000, '[') + QByteArray(100000, ']'));
    unparsed("nested-objects", QByteArray(R"({"a":)").repeated(100000));
    unparsed("ends-before-the-bytes-do", QByteArray::fromRawData("[12]", 3));

    const auto row = [](const char *document, const QVariant &text, const QVariant &number) {
        QTest::newRow(document) << QByteArray(document) << true << text << number;
    };
    const QVariant none;
    row("[[[[[[[[[[]]]]]]]]]]", none, none);
    row(R"({"key": "a\u0000b"})", QString::fromLatin1("a\0b", 3), none);
    row(R"({"key": "\u5f20三"})", "张三", none);
    row(R"({"key": -2147483648})", "-2147483648", -2147483647 - 1);
    row(R"({"key": 2147483648})", "2147483648", none);
    row(R"({"key": -1.5})", "-1.5", -1);
    row(R"({"key": null})", "", 0);
    row(R"({"key": [1]})", none, none);
}

void TestJson::reads()
{
    QFETCH(QByteArray, document);
    Json::Value root("what was there before");
    QTEST(json::parse(document.constData(), static_cast<size_t>(document.size()), &root), "parsed");
    QVERIFY(!root.isString());
    const auto text = json::text(root, "key");
    const auto number = json::number(root, "key");
    QTEST(text ? QVariant(*text) : QVariant(), "text");
    QTEST(number ? QVariant(*number) : QVariant(), "number");
}

QTEST_GUILESS_MAIN(TestJson)
#include "tst_json.moc"
