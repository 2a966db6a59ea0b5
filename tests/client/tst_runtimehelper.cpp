#include "TestEnvironment.h"

#include "models/Object_CartList.h"
#include "util/ICFrameHelper.h"
#include "util/ICRuntimeHelper.h"

#include <QFontMetricsF>
#include <QJsonDocument>
#include <QTest>

class TestRuntimeHelper : public QObject
{
    Q_OBJECT

private slots:
    void mapsArrays_data();
    void mapsArrays();
    void copiesRects();
    void measuresText();
};

void TestRuntimeHelper::mapsArrays_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("isList");
    QTest::addColumn<QStringList>("ids");

    const auto json = [](const char *text) { return QJsonDocument::fromJson(text).toVariant(); };
    QTest::newRow("dictionaries in order")
            << json(R"([{"id":"3"},{"id":1},{"id":"2"}])") << true << QStringList{"3", "1", "2"};
    QTest::newRow("other elements skipped") << json(R"([1,{"id":"a"},"x",null,[{"id":"z"}],{}])")
                                            << true << QStringList{"a", QString()};
    QTest::newRow("empty list") << json("[]") << true << QStringList{};
    QTest::newRow("dictionary") << json(R"({"id":"1"})") << false << QStringList{};
    QTest::newRow("text") << QVariant(QStringLiteral("[{\"id\":\"1\"}]")) << false << QStringList{};
    QTest::newRow("null") << QVariant::fromValue(nullptr) << false << QStringList{};
    QTest::newRow("nil") << QVariant() << false << QStringList{};
}

void TestRuntimeHelper::mapsArrays()
{
    QFETCH(QVariant, value);
    QFETCH(bool, isList);
    QFETCH(QStringList, ids);
    const std::optional<QList<Object_CartList>> lines
            = ICRuntimeHelper::analysArrayData<Object_CartList>(value);
    // Not a list: nothing at all, which is not the same as an empty list.
    QCOMPARE(lines.has_value(), isList);
    QStringList mapped;
    for (const Object_CartList &line : lines.value_or(QList<Object_CartList>()))
        mapped << line.id;
    QCOMPARE(mapped, ids);
}

void TestRuntimeHelper::copiesRects()
{
    const QRectF rect(10, 20, 30, 40);
    QCOMPARE(ICFrameHelper::bottomOf(rect), 60.0);
    QCOMPARE(ICFrameHelper::rectWithHeight(rect, 5), QRectF(10, 20, 30, 5));
    QCOMPARE(ICFrameHelper::rectWithWidth(rect, 5), QRectF(10, 20, 5, 40));
    QCOMPARE(ICFrameHelper::rectWithX(rect, 5), QRectF(5, 20, 30, 40));
    QCOMPARE(ICFrameHelper::rectWithY(rect, 5), QRectF(10, 5, 30, 40));
}

void TestRuntimeHelper::measuresText()
{
    QFont font;
    font.setPixelSize(16);
    const QFontMetricsF metrics(font);
    const QString text = QStringLiteral("购买后可在我的游戏中查看激活码，请妥善保管。").repeated(2);

    const qreal wide = ICFrameHelper::heightOfText(text, font, 2000);
    const qreal narrow = ICFrameHelper::heightOfText(text, font, 80);
    QVERIFY(wide < 2 * metrics.lineSpacing());
    QVERIFY(narrow > 3 * metrics.lineSpacing());

    const qreal oneLine = ICFrameHelper::widthOfText(text, font, metrics.height());
    QVERIFY(qAbs(oneLine - metrics.horizontalAdvance(text)) <= 1);
    const qreal widest = ICFrameHelper::widthOfText(QStringLiteral("短\n长一些的一行"), font, 100);
    QVERIFY(qAbs(widest - metrics.horizontalAdvance(QStringLiteral("长一些的一行"))) <= 1);
}

TARVEL_TEST_MAIN(TestRuntimeHelper)
#include "tst_runtimehelper.moc"
