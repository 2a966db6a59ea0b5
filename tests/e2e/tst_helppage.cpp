#include "HudRecorder.h"
#include "InProcessStore.h"
#include "TestEnvironment.h"
#include "tst_detailsupport.h"
#include "tst_signin_support.h"

#include "app/AppLaunch.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/UrlOpener.h"
#include "screens/account/AboutTarvelViewController.h"
#include "screens/account/HelpAndFeedbackViewController.h"
#include "screens/store/NewsDetailViewController.h"

#include <QImage>
#include <QQmlExtensionPlugin>
#include <QTcpServer>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using platform::Hud;
using platform::WebView;

namespace {

// An address on this machine where nothing answers.
QString unansweredBaseUrl()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    const quint16 port = probe.serverPort();
    probe.close();
    return QStringLiteral("http://127.0.0.1:%1").arg(port);
}

} // namespace

// The web pages in the real web view: the store's help page loads with "正在加载" and shows, an
// address that does not answer ends in "加载失败", an HTML text shows without any address; and the
// news page, which shows its page the same way.
class TestHelpPage : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<tarvel::test::InProcessStore> m_store;
    std::unique_ptr<platform::Window> m_window;
    std::unique_ptr<tarvel::test::PhoneWindow> m_phone;

    // Whether the page's text has been drawn: the band under the bar, above where the HUD shows,
    // holds more than one colour.
    bool webPagePainted() const
    {
        const QImage shot = m_phone->window()->grabWindow();
        const QRect middle(0, 80, shot.width(), shot.height() / 3 - 80);
        const QRgb first = shot.pixel(middle.topLeft());
        for (int y = middle.top(); y < middle.bottom(); y += 3) {
            for (int x = middle.left(); x < middle.right(); x += 3) {
                if (shot.pixel(x, y) != first)
                    return true;
            }
        }
        return false;
    }
    platform::NavigationController *m_navigation = nullptr;

    void showStack()
    {
        m_window = std::make_unique<platform::Window>();
        auto *home = new platform::ViewController;
        home->setTitle(QStringLiteral("我的Tarvel"));
        m_navigation = new platform::NavigationController(home);
        m_window->setRootViewController(m_navigation);
        m_phone = std::make_unique<tarvel::test::PhoneWindow>();
        QVERIFY(m_phone->show(m_window.get()));
    }

private slots:
    void initTestCase()
    {
        tarvel::test::QmlWarnings::install();
        m_store = std::make_unique<tarvel::test::InProcessStore>();
        QVERIFY(m_store->isRunning());
        platform::UrlOpener::shared().setHandler([](const QUrl &) { return true; });
    }

    void init()
    {
        Hud::shared().dismiss();
        HudRecorder::shared().clear();
        tarvel::test::QmlWarnings::clear();
    }

    void cleanup()
    {
        // The drawn pages (and their web views) go first, while their QML engine still stands.
        if (m_phone)
            delete m_phone->root();
        tarvel::test::settle();
        m_phone.reset();
        m_window.reset();
        tarvel::test::settle();
    }

    void helpPageShowsTheStoreHelp()
    {
        qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8());
        showStack();
        auto *help = new HelpAndFeedbackViewController;
        m_navigation->pushViewController(help, false);
        QCOMPARE(help->title(), QStringLiteral("帮助与反馈"));
        QCOMPARE(help->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        QTRY_COMPARE(help->webView()->url(), QUrl(m_store->baseUrl() + QStringLiteral("/help")));
        QTRY_COMPARE_WITH_TIMEOUT(help->webView()->loadState(), WebView::Loaded, 60000);
        QCOMPARE(help->webView()->title(), QStringLiteral("帮助与反馈"));
        QVERIFY(HudRecorder::shared().history().contains(QStringLiteral("正在加载")));
        QVERIFY(!Hud::shared().isVisible());
        QVERIFY(!tarvel::test::findNamed(m_phone->root(), "webPageFailed"));
        // The engine paints a loaded page a moment after it says so.
        QTRY_VERIFY_WITH_TIMEOUT(webPagePainted(), 15000);
        QVERIFY(m_phone->screenshot(QStringLiteral("help.png")));
    }

    void unansweredAddressFails()
    {
        qputenv("TARVEL_API_BASE_URL", unansweredBaseUrl().toUtf8());
        showStack();
        auto *help = new HelpAndFeedbackViewController;
        m_navigation->pushViewController(help, false);
        QTRY_COMPARE_WITH_TIMEOUT(help->webView()->loadState(), WebView::Failed, 60000);
        QCOMPARE(Hud::shared().kind(), Hud::Error);
        QCOMPARE(Hud::shared().text(), QStringLiteral("加载失败"));
        QVERIFY(HudRecorder::shared().history().contains(QStringLiteral("正在加载")));
        QTRY_VERIFY(tarvel::test::findNamed(m_phone->root(), "webPageFailed"));
    }

    void htmlTextShowsWithoutAddress()
    {
        showStack();
        auto *about = new AboutTarvelViewController;
        m_navigation->pushViewController(about, false);
        QTRY_COMPARE_WITH_TIMEOUT(about->webView()->loadState(), WebView::Loaded, 60000);
        QCOMPARE(about->webView()->title(), QStringLiteral("这是一个web页,尚未开发"));
        QVERIFY(!Hud::shared().isVisible());
    }

    void newsPageShowsThePage()
    {
        NewsDetailViewController::setDefaultPageAddress(QUrl(m_store->baseUrl() + "/"));
        showStack();
        auto *page = new NewsDetailViewController;
        m_navigation->pushViewController(page, false);
        QCOMPARE(page->title(), QStringLiteral("资讯详情"));
        QCOMPARE(page->leftBarItem()->imageName(), QStringLiteral("common_navBackBlack"));
        QCOMPARE(page->rightBarItem()->imageName(), QStringLiteral("common_share"));
        QTRY_COMPARE_WITH_TIMEOUT(page->loadState(), NewsDetailViewController::Loaded, 60000);
        QCOMPARE(page->pageTitle(), QStringLiteral("Tarvel 游戏商城 - Tarvel"));
        QCOMPARE(HudRecorder::shared().records().first(),
                 (HudRecorder::Record{Hud::Progress, QStringLiteral("正在加载"), false}));
        QVERIFY(!Hud::shared().isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(webPagePainted(), 15000);
        QVERIFY(m_phone->screenshot(QStringLiteral("news_detail.png")));

        // Share: the fixed title (written unlike the list's), content and the page's address.
        QVERIFY(page->rightBarItem()->tap());
        QVERIFY(page->shareView()->isShown());
        QCOMPARE(page->shareView()->StrTitle(), QStringLiteral("咨询公告"));
        QCOMPARE(page->shareView()->StrContent(), QStringLiteral("内容"));
        QCOMPARE(page->shareView()->StrUrl(), m_store->baseUrl() + "/");
        page->shareView()->hideView();

        page->openInBrowser();
        QCOMPARE(platform::UrlOpener::shared().lastOpenedURL(), QUrl(m_store->baseUrl() + "/"));
        QVERIFY(page->leftBarItem()->tap());
        QTRY_COMPARE(m_navigation->depth(), 1);
    }

    void newsPageThatFailsStaysBlank()
    {
        NewsDetailViewController::setDefaultPageAddress(QUrl(unansweredBaseUrl() + "/news"));
        showStack();
        auto *page = new NewsDetailViewController;
        m_navigation->pushViewController(page, false);
        QTRY_COMPARE_WITH_TIMEOUT(page->loadState(), NewsDetailViewController::Failed, 60000);
        QCOMPARE(Hud::shared().kind(), Hud::Error);
        QCOMPARE(Hud::shared().text(), QStringLiteral("加载失败"));
        QVERIFY(page->pageTitle().isEmpty());
        QTRY_VERIFY(!tarvel::test::findNamed(m_phone->root(), "webView"));
    }
};

int main(int argc, char *argv[])
{
    tarvel::test::TestEnvironment environment;
    AppLaunch::prepare();
    QGuiApplication app(argc, argv);
    TestHelpPage test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_helppage.moc"
