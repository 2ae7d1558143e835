#include "data/json.h"

#include <QtTest>

class TestJson : public QObject
{
    Q_OBJECT

private slots:
    void reads();
};

namespace {

/// Returns the member "key" of a document as a text and as a number.
QString read(const QByteArray &document)
{
    Json::Value root("what was there before");
    if (!json::parse(document.constData(), static_cast<size_t>(document.size()), &root))
        return root.isNull() ? "refused" : "refused, but changed";
    const auto text = json::text(root, "key");
    const auto number = json::number(root, "key");
    return text.value_or("none") + ", " + (number ? QString::number(*number) : "none");
}

} // namespace

void TestJson::reads()
{
    QCOMPARE(read(QByteArray(100000, '[') + QByteArray(100000, ']')), QString("refused"));
    QCOMPARE(read(QByteArray(R"({"key":)").repeated(100000)), QString("refused"));
    QCOMPARE(read(QByteArray::fromRawData("[12]", 3)), QString("refused"));
    for (const char *document : {"\xEF\xBB\xBF{\"key\":1}", R"({"key":1e400})",
                                 R"({"key":"\uD800"})", "{\"key\":1", "/*{\"key\":1}"})
        QCOMPARE(read(document), QString("refused"));
    QCOMPARE(read("{\"key\":" + QByteArray(400, '9') + '}'), QString("refused"));
    QCOMPARE(read(QByteArray("{\"key\":1}\0}]x", 13)), QString("1, 1"));
    QCOMPARE(read(R"({"key":1,"key":2})"), QString("2, 2"));
    QCOMPARE(read("[[[[[[[[[[]]]]]]]]]]"), QString("none, none"));
    QCOMPARE(read(R"({"key": "a\u0000b"})"), QString::fromLatin1("a\0b, none", 9));
    QCOMPARE(read(R"({"key": "\u5f20三"})"), QString("张三, none"));
    QCOMPARE(read(R"({"key": -2147483648})"), QString("-2147483648, -2147483648"));
    QCOMPARE(read(R"({"key": 2147483648})"), QString("2147483648, none"));
    QCOMPARE(read(R"({"key": -1.5})"), QString("-1.5, -1"));
    QCOMPARE(read(R"({"key": null})"), QString(", 0"));
    QCOMPARE(read(R"({"key": [1]})"), QString("none, none"));
}

QTEST_GUILESS_MAIN(TestJson)
#include "tst_json.moc"
