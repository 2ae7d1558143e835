#include "data/json.h"

#include <QtTest>

class TestJson : public QObject
{
    Q_OBJECT

private slots:
    void parses_data();
    void parses();
    void readsMembers_data();
    void readsMembers();
    void findsNoMemberOutsideObjects();
};

namespace {

bool parse(const QByteArray &text, Json::Value *root)
{
    return json::parse(text.constData(), static_cast<size_t>(text.size()), root);
}

} // namespace

void TestJson::parses_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("parsed");

    QTest::newRow("object") << QByteArray(R"({"a": [1, {}]})") << true;
    QTest::newRow("nested-modestly") << QByteArray(100, '[') + QByteArray(100, ']') << true;
    QTest::newRow("nested-too-deeply")
        << QByteArray(100000, '[') + QByteArray(100000, ']') << false;
    QTest::newRow("nested-objects") << QByteArray(R"({"a":)").repeated(100000) << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("ends-before-the-bytes-do") << QByteArray::fromRawData("[12]", 3) << false;
}

void TestJson::parses()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, parsed);
    Json::Value root("what was there before");
    QCOMPARE(parse(text, &root), parsed);
    QVERIFY(parsed ? root.isArray() || root.isObject() : root.isNull());
}

void TestJson::readsMembers_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QVariant>("text"); // invalid if it cannot be read as this type
    QTest::addColumn<QVariant>("number");

    const auto row = [](const char *name, const char *value, const QVariant &text,
                        const QVariant &number) {
        QTest::newRow(name) << QByteArray(value) << text << number;
    };
    const QVariant none;
    row("text", R"("ab c")", "ab c", none);
    row("chinese-escaped", R"("\u5f20\u4e09")", "张三", none);
    row("zero-byte", R"("a\u0000b")", QString::fromLatin1("a\0b", 3), none);
    row("integer", "-7", "-7", -7);
    row("greatest", "2147483647", "2147483647", 2147483647);
    row("past-greatest", "2147483648", "2147483648", none);
    row("least", "-2147483648", "-2147483648", -2147483647 - 1);
    row("past-least", "-2147483649", "-2147483649", none);
    row("real", "-1.5", "-1.5", -1);
    row("large-real", "1e10", "10000000000.0", none);
    row("null", "null", "", 0);
    row("array", "[1]", none, none);
    row("object", R"({"key": 1})", none, none);
}

void TestJson::readsMembers()
{
    QFETCH(QByteArray, value);
    Json::Value root;
    QVERIFY(parse("{\"key\": " + value + "}", &root));
    const auto text = json::text(root, "key");
    const auto number = json::number(root, "key");
    QTEST(text ? QVariant(*text) : QVariant(), "text");
    QTEST(number ? QVariant(*number) : QVariant(), "number");
}

void TestJson::findsNoMemberOutsideObjects()
{
    const Json::Value roots[] = {Json::Value(), 5, "key", Json::arrayValue, Json::objectValue};
    for (const Json::Value &root : roots) {
        QVERIFY(!json::text(root, "key"));
        QVERIFY(!json::number(root, "key"));
    }
}

QTEST_GUILESS_MAIN(TestJson)
#include "tst_json.moc"
