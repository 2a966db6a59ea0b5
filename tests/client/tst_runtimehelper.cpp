#include "TestEnvironment.h"

#include "models/Object_CartList.h"
#include "util/ICFrameHelper.h"
#include "util/ICRuntimeHelper.h"
#include "util/UIAlertViewBlock.h"

#include <QFontMetricsF>
#include <QJsonDocument>
#include <QTest>

class TestRuntimeHelper : public QObject
{
    Q_OBJECT

private slots:
    void mapsArrays_data();
    void mapsArrays();
    void dismissesAlerts_data();
    void dismissesAlerts();
    void copiesRects();
    void measuresText();
};

void TestRuntimeHelper::mapsArrays_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QStringList>("ids");

    const auto json = [](const char *text) { return QJsonDocument::fromJson(text).toVariant(); };
    QTest::newRow("dictionaries in order")
            << json(R"([{"id":"3"},{"id":1},{"id":"2"}])") << QStringList{"3", "1", "2"};
    QTest::newRow("other elements skipped")
            << json(R"([1,{"id":"a"},"x",null,[{"id":"z"}],{}])") << QStringList{"a", QString()};
    QTest::newRow("empty list") << json("[]") << QStringList{};
    QTest::newRow("dictionary") << json(R"({"id":"1"})") << QStringList{};
    QTest::newRow("text") << QVariant(QStringLiteral("[{\"id\":\"1\"}]")) << QStringList{};
    QTest::newRow("null") << QVariant::fromValue(nullptr) << QStringList{};
    QTest::newRow("nil") << QVariant() << QStringList{};
}

void TestRuntimeHelper::mapsArrays()
{
    QFETCH(QVariant, value);
    QFETCH(QStringList, ids);
    QStringList mapped;
    for (const Object_CartList &line : ICRuntimeHelper::analysArrayData<Object_CartList>(value))
        mapped << line.id;
    QCOMPARE(mapped, ids);
}

void TestRuntimeHelper::dismissesAlerts_data()
{
    QTest::addColumn<QString>("cancelTitle");
    QTest::addColumn<int>("clicked");
    QTest::addColumn<bool>("cancelled");
    QTest::addColumn<int>("dismissedWith"); // -1: the dismiss block did not run

    QTest::newRow("cancel button") << "取消" << 0 << true << -1;
    QTest::newRow("first other button") << "取消" << 1 << false << 0;
    QTest::newRow("second other button") << "取消" << 2 << false << 1;
    QTest::newRow("past the last button") << "取消" << 3 << false << -1;
    QTest::newRow("negative index") << "取消" << -1 << false << -1;
    QTest::newRow("no cancel button, first") << QString() << 0 << false << 0;
    QTest::newRow("no cancel button, second") << QString() << 1 << false << 1;
}

void TestRuntimeHelper::dismissesAlerts()
{
    QFETCH(QString, cancelTitle);
    QFETCH(int, clicked);
    QFETCH(bool, cancelled);
    QFETCH(int, dismissedWith);

    bool cancelRan = false;
    int dismissIndex = -1;
    const UIAlertViewBlock alert = UIAlertViewBlock::alertViewWithTitle(
            QStringLiteral("提示"), QStringLiteral("确定删除吗？"), cancelTitle,
            {QStringLiteral("确定"), QStringLiteral("稍后")},
            [&](int index) { dismissIndex = index; }, [&] { cancelRan = true; });
    QCOMPARE(alert.buttonTitles().size(), cancelTitle.isEmpty() ? 2 : 3);
    QCOMPARE(alert.buttonTitles().last(), QStringLiteral("稍后"));

    alert.dismissWithClickedButtonIndex(clicked);
    QCOMPARE(cancelRan, cancelled);
    QCOMPARE(dismissIndex, dismissedWith);

    // Without blocks nothing runs and nothing breaks.
    const UIAlertViewBlock bare = UIAlertViewBlock::alertViewWithTitle(
            QString(), QString(), cancelTitle, {QStringLiteral("确定")}, {}, {});
    bare.dismissWithClickedButtonIndex(clicked);
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
