#include "TestEnvironment.h"
#include "tst_signin_support.h"

#include "app/ICTabBarController.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/RowModel.h"
#include "platform/ui/UrlOpener.h"
#include "platform/ui/Window.h"
#include "screens/account/MyMessageDetailViewController.h"
#include "screens/account/MyMessageViewController.h"
#include "screens/store/GoodsDetailViewController.h"
#include "service/ICDataHelper.h"

#include <QFile>
#include <QPointer>
#include <QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using platform::NavigationController;
using platform::UrlOpener;

namespace {

const QString StoreBase = QStringLiteral("http://127.0.0.1:8080");

QVariantMap message(const QString &title, const QString &date, const QString &content,
                    const QString &url = QString())
{
    QVariantMap values{{QStringLiteral("title"), title},
                       {QStringLiteral("date"), date},
                       {QStringLiteral("content"), content}};
    if (!url.isNull())
        values.insert(QStringLiteral("url"), url);
    return values;
}

QVariantList sampleMessages()
{
    return {
            message(QStringLiteral("夏日特惠开启"), QStringLiteral("2024-07-01 10:00"),
                    QStringLiteral("全场游戏低至五折，活动持续到7月15日。"),
                    QStringLiteral("/products/12")),
            message(QStringLiteral("您的订单已完成"), QStringLiteral("2024-07-02 21:35"),
                    QStringLiteral("订单中的激活码已发放到“我的游戏”，请及时查看。")),
            message(QStringLiteral("新作预售：星际远征2"), QStringLiteral("2024-07-05 09:12"),
                    QStringLiteral("预购即送限定皮肤与原声音乐。"),
                    QStringLiteral("https://www.example.com/tarvel/presale")),
            message(QStringLiteral("账号安全提醒"), QStringLiteral("2024-07-08 18:40"),
                    QStringLiteral("您的账号于今日在新设备上登录，如非本人操作请及时修改密码。")),
    };
}

QString messagesPath()
{
    return ICDataHelper::docPath() + QLatin1Char('/') + MyMessageViewController::messagesFileName;
}

} // namespace

// The message list and the message detail: what they show of GTMessage.plist, where a tap
// leads, reloading when the push handling says so, and their views.
class TestMessages : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<platform::Window> m_window;

    // The messages tab as the tab bar holds it, shown in a window, with its hooks run.
    MyMessageViewController *showList(ICTabBarController **tabsOut = nullptr)
    {
        m_window = std::make_unique<platform::Window>();
        auto *list = new MyMessageViewController;
        auto *tabs = new ICTabBarController;
        tabs->setViewControllers({new NavigationController(list)});
        m_window->setRootViewController(tabs);
        m_window->makeKeyAndVisible();
        tarvel::test::settle();
        if (tabsOut)
            *tabsOut = tabs;
        return list;
    }

    // The game the screen on top of `stack` shows, when it is a game page pushed over its root.
    static QString gameOnTop(NavigationController *stack)
    {
        if (stack->depth() < 2)
            return {};
        platform::ViewController *top = stack->topViewController();
        if (!qobject_cast<GoodsDetailViewController *>(top))
            return {};
        return top->property("gameId").toString();
    }

    static QStringList titles(const MyMessageViewController *list)
    {
        QStringList result;
        for (const QVariantMap &row : list->tableMain()->rows())
            result.append(row.value(QStringLiteral("title")).toString());
        return result;
    }

private slots:
    void initTestCase()
    {
        tarvel::test::QmlWarnings::install();
        qputenv("TARVEL_API_BASE_URL", StoreBase.toUtf8());
        UrlOpener::shared().setHandler([](const QUrl &) { return true; });
    }

    void init()
    {
        QFile::remove(messagesPath());
        UrlOpener::shared().clearHistory();
        tarvel::test::QmlWarnings::clear();
    }

    void cleanup()
    {
        m_window.reset();
        tarvel::test::settle();
    }

    void listsStoredMessagesInOrder()
    {
        QVERIFY(ICDataHelper::SaveFileWithName(MyMessageViewController::messagesFileName,
                                               sampleMessages()));
        MyMessageViewController *list = showList();
        QCOMPARE(list->title(), QStringLiteral("我的消息"));
        QVERIFY(list->leftBarItem()->isHidden());
        QVERIFY(list->rightBarItem()->isHidden());
        QVERIFY(list->isNavigationBarTransparent());
        QCOMPARE(list->arraySource(), sampleMessages());

        const QList<QVariantMap> rows = list->tableMain()->rows();
        QCOMPARE(rows.size(), 4);
        QCOMPARE(titles(list), (QStringList{"夏日特惠开启", "您的订单已完成", "新作预售：星际远征2",
                                            "账号安全提醒"}));
        QCOMPARE(rows.at(0).value("time").toString(), QStringLiteral("07-01 10:00"));
        QCOMPARE(rows.at(3).value("time").toString(), QStringLiteral("07-08 18:40"));
        for (const QVariantMap &row : rows)
            QCOMPARE(row.value("imageName").toString(), QStringLiteral("mes_noRead"));
    }

    void nothingStoredGivesAnEmptyList_data()
    {
        QTest::addColumn<QByteArray>("fileContent");
        QTest::addColumn<bool>("writeFile");
        QTest::newRow("no file") << QByteArray() << false;
        QTest::newRow("empty list")
                << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist "
                              "version=\"1.0\"><array/></plist>\n")
                << true;
        QTest::newRow("a dictionary, not a list")
                << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist "
                              "version=\"1.0\"><dict><key>title</key><string>x</string></dict>"
                              "</plist>\n")
                << true;
        QTest::newRow("damaged file") << QByteArray("<plist><array><dict>") << true;
        QTest::newRow("empty file") << QByteArray() << true;
    }

    void nothingStoredGivesAnEmptyList()
    {
        QFETCH(QByteArray, fileContent);
        QFETCH(bool, writeFile);
        if (writeFile) {
            QFile file(messagesPath());
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(fileContent);
        }
        MyMessageViewController *list = showList();
        QVERIFY(list->arraySource().isEmpty());
        QCOMPARE(list->tableMain()->count(), 0);
        list->didSelectRowAtIndex(0); // nothing there to open
        QCOMPARE(list->navigationController()->depth(), 1);
    }

    void dateLosesItsYear_data()
    {
        QTest::addColumn<QVariant>("date");
        QTest::addColumn<QString>("shown");
        QTest::newRow("minute") << QVariant("2024-07-01 10:00") << "07-01 10:00";
        QTest::newRow("seconds") << QVariant("2025-12-31 23:59:59") << "12-31 23:59:59";
        QTest::newRow("only a year") << QVariant("2024-") << "";
        QTest::newRow("shorter than a year") << QVariant("7/1") << "";
        QTest::newRow("missing") << QVariant() << "";
    }

    void dateLosesItsYear()
    {
        QFETCH(QVariant, date);
        QFETCH(QString, shown);
        QVariantMap stored{{QStringLiteral("title"), QStringLiteral("通知")}};
        if (date.isValid())
            stored.insert(QStringLiteral("date"), date);
        const QVariantMap row = MyMessageViewController::rowForMessage(stored);
        QCOMPARE(row.value("time").toString(), shown);
        QCOMPARE(row.value("title").toString(), QStringLiteral("通知"));
    }

    void tapsFollowTheLinkRule_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("gameId");
        QTest::addColumn<QString>("browserUrl");
        QTest::newRow("store path") << "/products/12"
                                    << "12"
                                    << "";
        QTest::newRow("relative path") << "products/12"
                                       << "12"
                                       << "";
        QTest::newRow("full address") << StoreBase + "/products/34"
                                      << "34"
                                      << "";
        QTest::newRow("not a number") << "products/abc"
                                      << "" << StoreBase + "/products/abc";
        QTest::newRow("outside address") << "https://www.example.com/tarvel/summer-sale"
                                         << ""
                                         << "https://www.example.com/tarvel/summer-sale";
        QTest::newRow("number alone") << "12"
                                      << "" << StoreBase + "/12";
        QTest::newRow("trailing slash") << "/products/12/"
                                        << "" << StoreBase + "/products/12/";
        QTest::newRow("other list") << "/news/12"
                                    << "" << StoreBase + "/news/12";
        // A relative address opens under the store, as a carousel entry does.
        QTest::newRow("a relative page without its slash") << "news/12"
                                                           << "" << StoreBase + "/news/12";
    }

    void tapsFollowTheLinkRule()
    {
        QFETCH(QString, url);
        QFETCH(QString, gameId);
        QFETCH(QString, browserUrl);
        QVERIFY(ICDataHelper::SaveFileWithName(
                MyMessageViewController::messagesFileName,
                {message(QStringLiteral("活动"), QStringLiteral("2024-07-01 10:00"),
                         QStringLiteral("点击查看"), url)}));
        MyMessageViewController *list = showList();
        NavigationController *stack = list->navigationController();
        list->didSelectRowAtIndex(0);
        QCOMPARE(gameOnTop(stack), gameId);
        if (gameId.isEmpty()) {
            QCOMPARE(stack->depth(), 1); // no screen of the app for an address
            QCOMPARE(UrlOpener::shared().openedURLs(), QList<QUrl>{QUrl(browserUrl)});
        } else {
            QCOMPARE(stack->depth(), 2);
            QVERIFY(UrlOpener::shared().openedURLs().isEmpty());
        }

        // The detail screen of the same message follows the same rule.
        UrlOpener::shared().clearHistory();
        auto *detail = new MyMessageDetailViewController(list->arraySource().constFirst().toMap());
        const std::unique_ptr<NavigationController> detailStack(new NavigationController(detail));
        detail->clickButtonBg();
        QCOMPARE(gameOnTop(detailStack.get()), gameId);
        QCOMPARE(UrlOpener::shared().openedURLs().size(), gameId.isEmpty() ? 1 : 0);
    }

    void messageWithoutLinkOpensItsDetail()
    {
        QVERIFY(ICDataHelper::SaveFileWithName(MyMessageViewController::messagesFileName,
                                               sampleMessages()));
        ICTabBarController *tabs = nullptr;
        MyMessageViewController *list = showList(&tabs);
        QTRY_VERIFY(!tabs->isHide());
        list->didSelectRowAtIndex(1);
        NavigationController *stack = list->navigationController();
        QCOMPARE(stack->depth(), 2);
        auto *detail = qobject_cast<MyMessageDetailViewController *>(stack->topViewController());
        QVERIFY(detail);
        QCOMPARE(detail->sourceDic(), sampleMessages().at(1).toMap());
        QCOMPARE(detail->messageTitle(), QStringLiteral("您的订单已完成"));
        QCOMPARE(detail->messageDate(), QStringLiteral("2024-07-02 21:35"));
        QCOMPARE(detail->messageContent(),
                 QStringLiteral("订单中的激活码已发放到“我的游戏”，请及时查看。"));
        QVERIFY(!detail->hasLink());
        QTRY_COMPARE(detail->title(), QStringLiteral("消息"));
        QTRY_VERIFY(tabs->isHide());

        detail->clickButtonBg(); // nothing to follow
        QVERIFY(UrlOpener::shared().openedURLs().isEmpty());
        QCOMPARE(stack->depth(), 2);

        QVERIFY(detail->leftBarItem()->tap());
        QCOMPARE(stack->depth(), 1);
        QTRY_VERIFY(!tabs->isHide()); // the list shows the strip again
    }

    void refreshDataReloadsTheFile()
    {
        QVariantList messages = sampleMessages().mid(0, 2);
        QVERIFY(ICDataHelper::SaveFileWithName(MyMessageViewController::messagesFileName,
                                               messages));
        MyMessageViewController *list = showList();
        QCOMPARE(list->tableMain()->count(), 2);

        const QVariantMap arrived = sampleMessages().at(3).toMap();
        QVERIFY(ICDataHelper::DataSaveDictWith(arrived, MyMessageViewController::messagesFileName));
        QCOMPARE(list->tableMain()->count(), 2); // until someone says so
        // The push handling reaches the top screen by name.
        QVERIFY(QMetaObject::invokeMethod(list, "refreshData"));
        QCOMPARE(list->tableMain()->count(), 3);
        QCOMPARE(titles(list).constLast(), QStringLiteral("账号安全提醒"));

        QFile::remove(messagesPath());
        QVERIFY(QMetaObject::invokeMethod(list, "refreshData"));
        QCOMPARE(list->tableMain()->count(), 0);
    }

    void listViewShowsMessagesAndOpensThem()
    {
        QVERIFY(ICDataHelper::SaveFileWithName(MyMessageViewController::messagesFileName,
                                               sampleMessages()));
        MyMessageViewController *list = showList();
        tarvel::test::PhoneWindow phone;
        QVERIFY(phone.show(m_window.get()));
        QTRY_VERIFY(phone.findText(QStringLiteral("账号安全提醒")));
        QVERIFY(phone.findText(QStringLiteral("我的消息")));
        QVERIFY(phone.findText(QStringLiteral("07-02 21:35")));
        QVERIFY(!phone.findItem(QStringLiteral("emptyNote")));
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("messages.png")));

        QQuickItem *row = phone.findText(QStringLiteral("您的订单已完成"));
        QVERIFY(row);
        phone.click(row);
        NavigationController *stack = list->navigationController();
        QTRY_COMPARE(stack->depth(), 2);
        QTRY_VERIFY(phone.findText(QStringLiteral("消息")));
        QTRY_VERIFY(phone.findText(QStringLiteral("2024-07-02 21:35")));
        QVERIFY(tarvel::test::waitForStillScene(phone.window())); // the push slide
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("message-detail.png")));

        // A message arriving while the list is shown appears at its end.
        stack->popViewController(false);
        QVERIFY(ICDataHelper::DataSaveDictWith(
                message(QStringLiteral("周末限时折扣"), QStringLiteral("2024-07-09 08:00"),
                        QStringLiteral("本周末精选游戏三折起。"), QStringLiteral("/products/7")),
                MyMessageViewController::messagesFileName));
        QVERIFY(QMetaObject::invokeMethod(list, "refreshData"));
        QTRY_VERIFY(phone.findText(QStringLiteral("周末限时折扣")));
        phone.click(phone.findText(QStringLiteral("周末限时折扣")));
        QTRY_COMPARE(gameOnTop(stack), QStringLiteral("7"));
        QVERIFY2(tarvel::test::QmlWarnings::messages().isEmpty(),
                 qPrintable(tarvel::test::QmlWarnings::text()));
    }

    void emptyListViewSaysSo()
    {
        showList();
        tarvel::test::PhoneWindow phone;
        QVERIFY(phone.show(m_window.get()));
        QTRY_VERIFY(phone.findItem(QStringLiteral("emptyNote")));
        QVERIFY(phone.findText(QStringLiteral("暂无消息")));
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("messages-empty.png")));
        QVERIFY2(tarvel::test::QmlWarnings::messages().isEmpty(),
                 qPrintable(tarvel::test::QmlWarnings::text()));
    }
};

TARVEL_TEST_MAIN(TestMessages)
#include "tst_messages.moc"
