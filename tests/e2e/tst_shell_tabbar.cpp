#include "InProcessStore.h"
#include "TestEnvironment.h"
#include "tst_shell_support.h"

#include "app/ICTabBarItem.h"
#include "app/ICTabBarView.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Label.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TextField.h"
#include "screens/account/NavRootViewController.h"

#include <QSignalSpy>

using shelltest::launchedTabBar;
using shelltest::settle;

namespace {

const QString DemoPhone = QStringLiteral("13800138000");
const QString DemoPassword = QStringLiteral("tarvel2024");

// The sign-in screen the window presents, if any.
NavRootViewController *presentedSignIn()
{
    platform::Window *window = AppDelegate::shared()->window();
    if (window->presentedCount() != 1)
        return nullptr;
    auto *stack
            = qobject_cast<platform::NavigationController *>(window->presentedViewControllerAt(0));
    if (!stack || stack->depth() != 1)
        return nullptr;
    return qobject_cast<NavRootViewController *>(stack->viewControllers().constFirst());
}

QList<int> selectedButtons(const ICTabBarController *tabBar)
{
    QList<int> selected;
    for (const ICTabBarItem *button : tabBar->arrayButton()) {
        if (button->isSelected())
            selected.append(button->tag());
    }
    return selected;
}

} // namespace

// The drawn strip of the main tab bar: its buttons, the sign-in gate of the cart and my-page
// tabs (against a running store), push tags, the cart badge and hiding the strip.
class TestShellTabBar : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<tarvel::test::InProcessStore> m_store;

    ICTabBarController *launch()
    {
        AppDelegate::shared()->application_didFinishLaunchingWithOptions({});
        settle();
        return launchedTabBar();
    }

private slots:
    void initTestCase()
    {
        m_store = std::make_unique<tarvel::test::InProcessStore>();
        QVERIFY(m_store->isRunning());
        qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8());
        platform::Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
    }

    void init() { shelltest::resetApplication(); }

    void cleanupTestCase()
    {
        shelltest::resetApplication();
        m_store.reset();
    }

    void stripButtons()
    {
        ICTabBarController *tabBar = launch();
        QVERIFY(tabBar);
        const QList<ICTabBarItem *> buttons = tabBar->arrayButton();
        QCOMPARE(buttons.size(), 4);
        const QStringList names = {"tabOne", "tabThree", "tabFour", "tabFive"};
        for (int i = 0; i < 4; ++i) {
            ICTabBarItem *button = buttons[i];
            QCOMPARE(button->tag(), i);
            QCOMPARE(button->imageName(), names[i] + QStringLiteral("_Default"));
            QCOMPARE(button->selectedImageName(), names[i] + QStringLiteral("_select"));
            QVERIFY(button->title().isEmpty()); // pictures only
            QCOMPARE(button->titleColor(), QColor(Qt::white));
            QCOMPARE(button->selectedTitleColor(), QColor(249, 145, 45));
            QCOMPARE(button->frame(), QRectF(i * 375.0 / 4, 0, 375.0 / 4, 49));
            QCOMPARE(button->imageRect(), QRectF(0, 0, 375.0 / 4, 49));
            QVERIFY(button->titleRect().isEmpty());
        }
        QCOMPARE(selectedButtons(tabBar), QList<int>{0});
        QCOMPARE(buttons[0]->currentImageName(), QStringLiteral("tabOne_select"));
        QCOMPARE(buttons[1]->currentImageName(), QStringLiteral("tabThree_Default"));
        QVERIFY(!tabBar->isHide());
    }

    void stripLook()
    {
        ICTabBarController *tabBar = launch();
        ICTabBarView *strip = tabBar->tabBarView();
        QCOMPARE(strip->height(), 49.0);
        QCOMPARE(strip->topLineColor(), QColor(149, 149, 149));
        QCOMPARE(strip->topLineWidth(), 0.5);
        // Upper right of the cart tab: 3/8 of the width plus 4, three points down.
        QCOMPARE(strip->badgeRect(), QRectF(375.0 * 3 / 8 + 4, 3, 15, 15));

        // A narrower screen lays the buttons and the badge out again.
        strip->setWidth(320);
        QCOMPARE(strip->badgeRect(), QRectF(124, 3, 15, 15));
        QCOMPARE(tabBar->arrayButton()[3]->frame(), QRectF(240, 0, 80, 49));
    }

    void tappingATab_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<bool>("signedIn");
        QTest::addColumn<bool>("asksToSignIn");
        QTest::addColumn<qint64>("viewFather");

        QTest::newRow("cart, signed out") << 1 << false << true << qint64(0);
        QTest::newRow("my page, signed out") << 2 << false << true << qint64(1);
        QTest::newRow("messages, signed out") << 3 << false << false << qint64(0);
        QTest::newRow("home, signed out") << 0 << false << false << qint64(0);
        QTest::newRow("cart, signed in") << 1 << true << false << qint64(0);
        QTest::newRow("my page, signed in") << 2 << true << false << qint64(0);
    }

    void tappingATab()
    {
        QFETCH(int, tab);
        QFETCH(bool, signedIn);
        QFETCH(bool, asksToSignIn);
        QFETCH(qint64, viewFather);

        ICTabBarController *tabBar = launch();
        tabBar->selectViewControllerAtIndex(3);
        tabBar->selectViewControllerAtIndex(0);
        if (signedIn)
            AppDelegate::shared()->setUserLogin(shelltest::userWithPhone(DemoPhone));

        QVERIFY(tabBar->arrayButton()[tab]->tap());
        settle();
        if (asksToSignIn) {
            NavRootViewController *signIn = presentedSignIn();
            QVERIFY(signIn);
            QCOMPARE(signIn->viewFather(), viewFather);
            QVERIFY(signIn->myLoginSuccess());
            QCOMPARE(tabBar->selectedIndex(), 0);
            QCOMPARE(selectedButtons(tabBar), QList<int>{0});
        } else {
            QCOMPARE(AppDelegate::shared()->window()->presentedCount(), 0);
            QCOMPARE(tabBar->selectedIndex(), tab);
            QCOMPARE(selectedButtons(tabBar), QList<int>{tab});
        }
    }

    // Signing in on the presented screen lands on the tab that asked for it and tags the device
    // with the user's phone number.
    void signingInLandsOnTheTab_data()
    {
        QTest::addColumn<int>("tab");
        QTest::newRow("cart") << 1;
        QTest::newRow("my page") << 2;
    }

    void signingInLandsOnTheTab()
    {
        QFETCH(int, tab);
        ICTabBarController *tabBar = launch();
        QVERIFY(tabBar->arrayButton()[tab]->tap());
        NavRootViewController *signIn = presentedSignIn();
        QVERIFY(signIn);
        QVERIFY(AppDelegate::shared()->pushTags().isEmpty());

        signIn->loadViewIfNeeded();
        settle();
        signIn->fieldUser()->setText(DemoPhone);
        signIn->fieldPassword()->setText(DemoPassword);
        QVERIFY(signIn->buttonLogin()->tap());
        QTRY_VERIFY_WITH_TIMEOUT(AppDelegate::shared()->isSignedIn(), 10000);
        QCOMPARE(tabBar->selectedIndex(), tab);
        QCOMPARE(selectedButtons(tabBar), QList<int>{tab});
        QTRY_COMPARE(AppDelegate::shared()->window()->presentedCount(), 0);
        QCOMPARE(AppDelegate::shared()->pushTags(), QStringList{DemoPhone});
    }

    // Leaving the sign-in screen without signing in stays on the home tab.
    void closingTheSignInStaysHome()
    {
        ICTabBarController *tabBar = launch();
        QVERIFY(tabBar->arrayButton()[1]->tap());
        NavRootViewController *signIn = presentedSignIn();
        QVERIFY(signIn);
        signIn->loadViewIfNeeded();
        settle();
        QVERIFY(signIn->leftBarItem()->tap());
        settle();
        QCOMPARE(AppDelegate::shared()->window()->presentedCount(), 0);
        QCOMPARE(tabBar->selectedIndex(), 0);
        QVERIFY(!AppDelegate::shared()->isSignedIn());
    }

    void pushTagForPhoneNumbers_data()
    {
        QTest::addColumn<QString>("phone");
        QTest::addColumn<QStringList>("tags");
        QTest::newRow("11 digits") << DemoPhone << QStringList{DemoPhone};
        QTest::newRow("10 digits") << QStringLiteral("1380013800") << QStringList();
        QTest::newRow("12 digits") << QStringLiteral("138001380001") << QStringList();
        QTest::newRow("no phone (e-mail account)") << QString() << QStringList();
    }

    // The tag is set when a tab bar loads with a signed-in user.
    void pushTagForPhoneNumbers()
    {
        QFETCH(QString, phone);
        QFETCH(QStringList, tags);
        AppDelegate *delegate = AppDelegate::shared();
        delegate->setTags({});
        QStringList sent;
        delegate->setTagsSender([&](const QStringList &list, QString *) {
            sent = list;
            return true;
        });
        delegate->setUserLogin(shelltest::userWithPhone(phone));
        launch();
        delegate->setTagsSender({});
        QCOMPARE(delegate->pushTags(), tags);
        QCOMPARE(sent, tags);
    }

    void badge_data()
    {
        QTest::addColumn<QVariant>("cartnum");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("hidden");
        QTest::newRow("three") << QVariant(QStringLiteral("3")) << "3" << false;
        QTest::newRow("zero") << QVariant(QStringLiteral("0")) << "0" << true;
        QTest::newRow("empty") << QVariant(QStringLiteral("")) << "" << true;
        QTest::newRow("twelve") << QVariant(QStringLiteral("12")) << "12" << false;
        QTest::newRow("removed") << QVariant() << "" << true;
    }

    void badge()
    {
        QFETCH(QVariant, cartnum);
        QFETCH(QString, text);
        QFETCH(bool, hidden);
        launch();
        platform::Label badge;
        badge.setText(QStringLiteral("7"));
        AppDelegate::shared()->setLabelRedDot(&badge);
        auto &defaults = platform::UserDefaults::standard();
        defaults.setObject(QStringLiteral("7"), QStringLiteral("cartnum"));
        defaults.setObject(cartnum, QStringLiteral("cartnum"));
        QCOMPARE(badge.text(), text);
        QCOMPARE(badge.isHidden(), hidden);
        AppDelegate::shared()->setLabelRedDot(nullptr);
    }

    // Before the home screen has made its badge, a change of "cartnum" goes nowhere.
    void cartNumWithoutBadge()
    {
        launch();
        AppDelegate::shared()->setLabelRedDot(nullptr); // the home page made one; take it away
        platform::UserDefaults::standard().setObject(QStringLiteral("4"),
                                                     QStringLiteral("cartnum"));
        QVERIFY(!AppDelegate::shared()->labelRedDot());
    }

    void hideTabBar()
    {
        ICTabBarController *tabBar = launch();
        QSignalSpy slides(tabBar, &ICTabBarController::hideAnimationStarted);

        tabBar->hideTabBar(false); // already shown: nothing moves
        QCOMPARE(slides.count(), 0);
        QVERIFY(!tabBar->isHideAnimationRunning());

        tabBar->hideTabBar(true);
        QCOMPARE(slides.count(), 1);
        QCOMPARE(slides.takeFirst().value(0).toBool(), true);
        QVERIFY(tabBar->isHide());
        // The content keeps its room until the strip has slid away.
        QVERIFY(!tabBar->isTabBarHidden());
        QTRY_VERIFY(tabBar->isTabBarHidden());

        tabBar->hideTabBar(true);
        QCOMPARE(slides.count(), 0);

        tabBar->hideTabBar(false);
        QCOMPARE(slides.count(), 1);
        QVERIFY(!tabBar->isHide());
        QVERIFY(!tabBar->isTabBarHidden()); // back at once, to slide in
        QVERIFY(tabBar->isHideAnimationRunning());
        QTRY_VERIFY(!tabBar->isHideAnimationRunning());
        QVERIFY(!tabBar->isTabBarHidden());
    }

    // Hiding and showing again within the slide leaves the strip shown.
    void showingDuringTheHideSlide()
    {
        ICTabBarController *tabBar = launch();
        tabBar->hideTabBar(true);
        tabBar->hideTabBar(false);
        QTRY_VERIFY(!tabBar->isHideAnimationRunning());
        QVERIFY(!tabBar->isHide());
        QVERIFY(!tabBar->isTabBarHidden());
    }

    void selectViewControllerAtIndex_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("selected");
        QTest::newRow("cart, even signed out") << 1 << 1;
        QTest::newRow("messages") << 3 << 3;
        QTest::newRow("past the last tab") << 4 << 0;
        QTest::newRow("negative") << -1 << 0;
    }

    void selectViewControllerAtIndex()
    {
        QFETCH(int, index);
        QFETCH(int, selected);
        ICTabBarController *tabBar = launch();
        tabBar->selectViewControllerAtIndex(index);
        QCOMPARE(tabBar->selectedIndex(), selected);
        QCOMPARE(selectedButtons(tabBar), QList<int>{selected});
        QCOMPARE(AppDelegate::shared()->window()->presentedCount(), 0);
    }
};

TARVEL_TEST_MAIN(TestShellTabBar)
#include "tst_shell_tabbar.moc"
