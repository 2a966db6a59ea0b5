#include "QuickTestItems.h"
#include "TestEnvironment.h"

#include "app/AppLaunch.h"
#include "platform/ui/AlertCenter.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/Switch.h"
#include "platform/ui/TabBarController.h"
#include "platform/ui/TextField.h"
#include "platform/ui/ViewController.h"
#include "platform/ui/Window.h"

#include <QDir>
#include <QPainter>
#include <QPointer>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using namespace platform;
using tarvel::test::findText;
using tarvel::test::QmlWarnings;

namespace {

class Screen : public ViewController
{
public:
    explicit Screen(const QString &title) { setTitle(title); }
};

void click(QQuickWindow *window, QQuickItem *item)
{
    const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(window, Qt::LeftButton, {}, centre.toPoint());
}

// One small use of each shared component, by file name.
QList<std::pair<QString, QByteArray>> componentSamples()
{
    return {
            {"NavigationBar", "NavigationBar { title: \"我的订单\" }"},
            {"BarButton", "BarButton {}"},
            {"HudOverlay", "HudOverlay {}"},
            {"AlertDialog", "AlertDialog {}"},
            {"ActionSheet", "ActionSheet {}"},
            {"ControllerPage", "ControllerPage {}"},
            {"PlaceholderPage", "PlaceholderPage {}"},
            {"ControllerStack", "ControllerStack {}"},
            {"TabContainer", "TabContainer {}"},
            {"ControllerView", "ControllerView {}"},
            {"ModalLayer", "ModalLayer {}"},
            {"WindowView", "WindowView {}"},
            {"PriceLabel", "PriceLabel { price: \"68\"; listPrice: \"98\" }"},
            {"OwnedBadge", "OwnedBadge { outlined: true }"},
            {"RefreshHeader",
             "ListView { id: list; RefreshHeader { target: list; header: RefreshHeaderState {} "
             "} }"},
            {"LoadMoreFooter",
             "ListView { id: list; model: 3; delegate: Text { text: index } footer: "
             "LoadMoreFooter { target: list; footer: RefreshFooterState {} } }"},
            {"RemoteImage", "RemoteImage {}"},
            {"BoundLabel", "BoundLabel { state: LabelState { text: \"已完成\" } }"},
            {"BoundButton", "BoundButton { state: ButtonState { title: \"注册\" } }"},
            {"BoundTextField", "BoundTextField { state: TextFieldState { placeholder: \"密码\"; "
                               "secureTextEntry: true } }"},
            {"BoundTextView", "BoundTextView { state: TextViewState {} }"},
            {"BoundSwitch", "BoundSwitch { state: SwitchState { on: true } }"},
            {"Theme", "Rectangle { color: Theme.navigationBar }"},
            {"WeChatPaySheet", "WeChatPaySheet {}"},
            {"ShareQrSheet", "ShareQrSheet {}"},
            // No page asked for: the web engine is not started.
            {"WebPage", "WebPage {}"},
    };
}

} // namespace

// The shared QML components: each loads without a QML warning, the shell pieces follow the
// controllers they show, the bound controls write the user's input back, and the gallery is
// written out as screenshots for review.
class TestQmlComponents : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;

    // Creates `qml` (a document importing Tarvel) in a fresh phone-sized window.
    QQuickItem *create(const QByteArray &qml, const QVariantMap &properties = {})
    {
        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(375, 667);
        QQmlComponent component(m_engine.get());
        component.setData(qml, QUrl(QStringLiteral("qrc:/tests/Harness.qml")));
        if (component.isError()) {
            qWarning() << component.errors();
            return nullptr;
        }
        QObject *object = component.createWithInitialProperties(properties);
        auto *item = qobject_cast<QQuickItem *>(object);
        if (!item) {
            delete object;
            return nullptr;
        }
        item->setParentItem(m_window->contentItem());
        item->setSize(QSizeF(375, 667));
        item->setParent(m_window.get()); // lives as long as the window, whatever the collector does
        m_window->show();
        if (!QTest::qWaitForWindowExposed(m_window.get()) || !waitForFrame())
            return nullptr;
        return item;
    }

    // Lets the window lay out and draw once, so that items sit where a user would tap them.
    bool waitForFrame()
    {
        QSignalSpy swapped(m_window.get(), &QQuickWindow::frameSwapped);
        m_window->update();
        return swapped.wait(5000);
    }

    static QByteArray document(const QByteArray &body)
    {
        return "import QtQuick\nimport QtQuick.Controls\nimport Tarvel\n" + body;
    }

    void settle()
    {
        for (int i = 0; i < 5; ++i) {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    static QString artifact(const QString &name)
    {
        return QDir(tarvel::test::TestEnvironment::artifactsDir()).filePath(name);
    }

private slots:
    void initTestCase()
    {
        QmlWarnings::install();
        Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
    }

    void init()
    {
        QmlWarnings::clear();
        m_engine = std::make_unique<QQmlEngine>();
        m_engine->addImportPath(QStringLiteral("qrc:/"));
        Hud::shared().dismiss();
        AlertCenter::shared().clear();
    }

    void cleanup()
    {
        m_window.reset();
        settle();
        m_engine.reset();
        QVERIFY2(QmlWarnings::messages().isEmpty(), qPrintable(QmlWarnings::text()));
    }

    void everyComponentLoads_data()
    {
        QTest::addColumn<QByteArray>("body");
        for (const auto &[name, body] : componentSamples())
            QTest::newRow(qPrintable(name)) << body;
    }

    void everyComponentLoads()
    {
        QFETCH(QByteArray, body);
        QQuickItem *root = create(document("Item {\n" + body + "\n}"));
        QVERIFY(root);
        QVERIFY(!root->childItems().isEmpty());
        settle();
    }

    // A new component without a sample above would go untested.
    void everyComponentHasASample()
    {
        QStringList sampled;
        for (const auto &[name, body] : componentSamples())
            sampled.append(name + QStringLiteral(".qml"));
        sampled << QStringLiteral("Main.qml") << QStringLiteral("Gallery.qml"); // windows
        const QStringList files = QDir(QStringLiteral(":/Tarvel/qml"))
                                          .entryList({QStringLiteral("*.qml")}, QDir::Files);
        QVERIFY(files.contains(QStringLiteral("HudOverlay.qml")));
        for (const QString &file : files)
            QVERIFY2(sampled.contains(file), qPrintable(file + " has no load sample"));
    }

    void mainWindowLoads()
    {
        QQmlApplicationEngine engine;
        QVERIFY(AppLaunch::loadMainWindow(engine));
        QCOMPARE(engine.rootObjects().size(), 1);
        settle();
    }

    void stackFollowsTheNavigationController()
    {
        Window window;
        auto *navigation = new NavigationController(new Screen(QStringLiteral("首页")));
        window.setRootViewController(navigation);
        window.makeKeyAndVisible();
        QQuickItem *root
                = create(document("WindowView {}"), {{"window", QVariant::fromValue(&window)}});
        QVERIFY(root);
        auto *stack = root->findChild<QQuickItem *>(QStringLiteral("controllerStack"));
        QVERIFY(stack);
        QCOMPARE(stack->property("depth").toInt(), 1);
        QVERIFY(navigation->transitionsDrivenByView());
        QVERIFY(findText(root, QStringLiteral("首页")));

        auto *detail = new Screen(QStringLiteral("游戏详情"));
        QPointer<Screen> guard = detail;
        navigation->pushViewController(detail, true);
        QCOMPARE(stack->property("depth").toInt(), 2);
        // The controller waits for the slide before calling the screen appeared.
        QCOMPARE(detail->appearance(), ViewController::Appearing);
        QTRY_COMPARE(detail->appearance(), ViewController::Appeared);
        QVERIFY(findText(root, QStringLiteral("游戏详情")));

        navigation->popViewController(true);
        QTRY_COMPARE(stack->property("depth").toInt(), 1);
        QTRY_VERIFY(!guard); // deleted after its page slid away
        QTRY_COMPARE(navigation->topViewController()->appearance(), ViewController::Appeared);

        // A pushed screen without a left item of its own gets a working back button.
        navigation->pushViewController(new Screen(QStringLiteral("搜索")), false);
        QTRY_VERIFY(!stack->property("busy").toBool());
        QVERIFY(waitForFrame());
        const QPoint backButton = stack->mapToScene(QPointF(22, 20 + 22)).toPoint();
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, backButton);
        QTRY_COMPARE(navigation->depth(), 1);
        QTRY_COMPARE(stack->property("depth").toInt(), 1);

        // Tapping the bar's left item reaches the controller (once the stack takes touches).
        QTRY_VERIFY(!stack->property("busy").toBool());
        auto *home = navigation->topViewController();
        home->leftBarItem()->configure(QStringLiteral("navLeftImageIcon"), QString());
        QSignalSpy triggered(home->leftBarItem(), &BarButtonItem::triggered);
        QVERIFY(waitForFrame());
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, backButton);
        QCOMPARE(triggered.count(), 1);
        QCOMPARE(navigation->depth(), 1);

        // A stack given another controller stops holding up the first one's transitions.
        NavigationController other(new Screen(QStringLiteral("其他")));
        stack->setProperty("navigationController", QVariant::fromValue(&other));
        QVERIFY(other.transitionsDrivenByView());
        QVERIFY(!navigation->transitionsDrivenByView());
        QTRY_VERIFY(findText(root, QStringLiteral("其他")));
        stack->setProperty("navigationController", QVariant::fromValue(navigation));
        QVERIFY(!other.transitionsDrivenByView());
    }

    void sheetsSlideOverEverything()
    {
        Window window;
        auto *navigation = new NavigationController(new Screen(QStringLiteral("购物车")));
        window.setRootViewController(navigation);
        window.makeKeyAndVisible();
        QQuickItem *root
                = create(document("WindowView {}"), {{"window", QVariant::fromValue(&window)}});
        QVERIFY(root);
        auto *layer = root->findChild<QQuickItem *>(QStringLiteral("modalLayer"));
        QVERIFY(layer);
        QVERIFY(window.transitionsDrivenByView());

        auto *signIn = new NavigationController(new Screen(QStringLiteral("登录")));
        QPointer<NavigationController> guard = signIn;
        bool presented = false;
        navigation->topViewController()->presentViewController(signIn, true,
                                                               [&] { presented = true; });
        QVERIFY(!presented);
        QTRY_VERIFY(presented);
        QCOMPARE(layer->property("sheets").toList().size(), 1);
        QVERIFY(findText(root, QStringLiteral("登录")));
        QCOMPARE(navigation->topViewController()->appearance(), ViewController::Disappeared);

        bool dismissed = false;
        signIn->topViewController()->dismissViewController(true, [&] { dismissed = true; });
        QTRY_VERIFY(dismissed);
        QCOMPARE(layer->property("sheets").toList().size(), 0);
        QCOMPARE(navigation->topViewController()->appearance(), ViewController::Appeared);
        QTRY_VERIFY(!guard);

        // A new root takes the sheets over the old one with it.
        navigation->presentViewController(new Screen(QStringLiteral("新手引导")), false);
        QCOMPARE(layer->property("sheets").toList().size(), 1);
        window.setRootViewController(new NavigationController(new Screen(QStringLiteral("首页"))));
        QCOMPARE(layer->property("sheets").toList().size(), 0);
        QTRY_VERIFY(findText(root, QStringLiteral("首页")));
        settle();
    }

    void tabsShowTheSelectedStack()
    {
        Window window;
        auto *tabs = new TabBarController();
        auto *home = new NavigationController(new Screen(QStringLiteral("首页")));
        auto *messages = new NavigationController(new Screen(QStringLiteral("我的消息")));
        tabs->setViewControllers({home, messages});
        window.setRootViewController(tabs);
        window.makeKeyAndVisible();
        QQuickItem *root = create(
                document("WindowView { tabBar: Component { Rectangle { objectName: \"strip\"; "
                         "color: \"white\" } } }"),
                {{"window", QVariant::fromValue(&window)}});
        QVERIFY(root);
        QTRY_VERIFY(findText(root, QStringLiteral("首页")));
        QVERIFY(!findText(root, QStringLiteral("我的消息")));
        const auto stripShown = [root] {
            auto *strip = root->findChild<QQuickItem *>(QStringLiteral("strip"));
            return strip && strip->isVisible();
        };
        QVERIFY(stripShown());

        tabs->setSelectedIndex(1);
        QTRY_VERIFY(findText(root, QStringLiteral("我的消息")));
        QVERIFY(!findText(root, QStringLiteral("首页")));

        // A pushed screen that asks for it hides the strip; popping brings it back.
        auto *detail = new Screen(QStringLiteral("消息"));
        detail->setHidesBottomBarWhenPushed(true);
        messages->pushViewController(detail, false);
        QTRY_VERIFY(!stripShown());
        messages->popViewController(false);
        QTRY_VERIFY(stripShown());
        tabs->setTabBarHidden(true);
        QTRY_VERIFY(!stripShown());
        settle();
    }

    void boundControlsWriteBack()
    {
        QQuickItem *root = create(document(R"(
            Column {
                property alias field: field
                property alias toggle: toggle
                property alias button: button
                BoundTextField { id: field; width: 300; state: TextFieldState {} }
                BoundSwitch { id: toggle; state: SwitchState {} }
                BoundButton { id: button; state: ButtonState { title: "提交订单" } }
            })"));
        QVERIFY(root);
        auto *fieldItem = root->property("field").value<QQuickItem *>();
        auto *field = fieldItem->property("state").value<TextField *>();
        QVERIFY(field);

        QVERIFY(field->becomeFirstResponder());
        QTRY_VERIFY(fieldItem->hasActiveFocus());
        QSignalSpy returned(field, &TextField::returnPressed);
        for (const char key : QByteArrayLiteral("abc@qq.com"))
            QTest::keyClick(m_window.get(), key);
        QCOMPARE(field->text(), QStringLiteral("abc@qq.com"));
        QTest::keyClick(m_window.get(), Qt::Key_Return);
        QCOMPARE(returned.count(), 1);
        field->setText(QStringLiteral("13800138000"));
        QCOMPARE(fieldItem->property("text").toString(), QStringLiteral("13800138000"));
        field->resignFirstResponder();
        QTRY_VERIFY(!fieldItem->hasActiveFocus());

        auto *toggleItem = root->property("toggle").value<QQuickItem *>();
        auto *toggle = toggleItem->property("state").value<Switch *>();
        QSignalSpy toggled(toggle, &Switch::toggled);
        click(m_window.get(), toggleItem);
        QCOMPARE(toggled.count(), 1);
        QVERIFY(toggle->isOn());
        toggle->setOn(false); // code still moves the knob after a user's flip
        QCOMPARE(toggleItem->property("checked").toBool(), false);

        auto *buttonItem = root->property("button").value<QQuickItem *>();
        auto *button = buttonItem->property("state").value<Button *>();
        QSignalSpy clicked(button, &Button::clicked);
        click(m_window.get(), buttonItem);
        QCOMPARE(clicked.count(), 1);
        button->setEnabled(false);
        click(m_window.get(), buttonItem);
        QCOMPARE(clicked.count(), 1);
    }

    void maskedHudSwallowsTouches_data()
    {
        QTest::addColumn<bool>("masked");
        QTest::newRow("masked") << true;
        QTest::newRow("not masked") << false;
    }

    void maskedHudSwallowsTouches()
    {
        QFETCH(bool, masked);
        QQuickItem *root = create(document(R"(
            Item {
                property int taps: 0
                MouseArea { anchors.fill: parent; onClicked: parent.taps++ }
                HudOverlay { anchors.fill: parent }
            })"));
        QVERIFY(root);
        Hud::shared().showWithStatus(QStringLiteral("生成订单..."), masked);
        QTRY_VERIFY(findText(root, QStringLiteral("生成订单...")));
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, QPoint(40, 600));
        QCOMPARE(root->property("taps").toInt(), masked ? 0 : 1);
        Hud::shared().dismiss();
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, QPoint(40, 600));
        QCOMPARE(root->property("taps").toInt(), masked ? 1 : 2);
    }

    void tappingAlertButtonsRunsTheHandler_data()
    {
        QTest::addColumn<bool>("sheet");
        QTest::addColumn<QString>("tapped");
        QTest::addColumn<int>("index");

        QTest::newRow("alert cancel") << false << "取消" << 0;
        QTest::newRow("alert other") << false << "删除" << 1;
        QTest::newRow("sheet destructive") << true << "相机拍照获取" << 0;
        QTest::newRow("sheet other") << true << "相册获取" << 1;
        QTest::newRow("sheet cancel") << true << "取消" << 2;
    }

    void tappingAlertButtonsRunsTheHandler()
    {
        QFETCH(bool, sheet);
        QFETCH(QString, tapped);
        QFETCH(int, index);
        QQuickItem *root = create(document("Item { AlertDialog { anchors.fill: parent } "
                                           "ActionSheet { anchors.fill: parent } }"));
        QVERIFY(root);
        int chosen = -1;
        const auto handler = [&chosen](int i) { chosen = i; };
        if (sheet)
            AlertCenter::shared().showActionSheet(
                    QStringLiteral("选择照片"), QStringLiteral("取消"),
                    QStringLiteral("相机拍照获取"), {QStringLiteral("相册获取")}, handler);
        else
            AlertCenter::shared().showAlert(
                    QStringLiteral("提示"), QStringLiteral("确定删除订单吗？"),
                    QStringLiteral("取消"), {QStringLiteral("删除")}, handler);
        QQuickItem *button = nullptr;
        QTRY_VERIFY((button = findText(root, tapped)));
        if (sheet) { // aim once the sheet has slid all the way up
            auto *panel = root->findChild<QQuickItem *>(QStringLiteral("actionSheetPanel"));
            QVERIFY(panel);
            QTRY_VERIFY(qAbs(panel->y() + panel->height() + 8 - panel->parentItem()->height())
                        < 0.5);
        }
        QVERIFY(waitForFrame()); // laid out where the user sees it
        click(m_window.get(), button);
        QCOMPARE(chosen, index);
        QVERIFY(!AlertCenter::shared().isActive());
    }

    void galleryScreenshots()
    {
        QQmlApplicationEngine engine;
        engine.addImportPath(QStringLiteral("qrc:/"));
        Screen sample(QStringLiteral("组件样例"));
        sample.leftBarItem()->configure(QStringLiteral("navLeftImageIcon"), QString());
        sample.rightBarItem()->configure(QString(), QStringLiteral("分享"));
        Window window;
        auto *stack = new NavigationController(new Screen(QStringLiteral("我的Tarvel")));
        window.setRootViewController(stack);
        window.makeKeyAndVisible();
        QImage cover(600, 336, QImage::Format_RGB32);
        QPainter painter(&cover);
        QLinearGradient gradient(0, 0, 600, 336);
        gradient.setColorAt(0, QColor(32, 48, 96));
        gradient.setColorAt(1, QColor(200, 80, 40));
        painter.fillRect(cover.rect(), gradient);
        painter.setPen(Qt::white);
        painter.setFont(QFont(QStringLiteral("Noto Sans CJK SC"), 48, QFont::Bold));
        painter.drawText(cover.rect(), Qt::AlignCenter, QStringLiteral("巫师3"));
        painter.end();
        const QString coverPath = artifact(QStringLiteral("sample-cover.png"));
        QVERIFY(cover.save(coverPath));
        engine.setInitialProperties({{"sampleController", QVariant::fromValue(&sample)},
                                     {"sampleStack", QVariant::fromValue(stack)},
                                     {"sampleImage", QUrl::fromLocalFile(coverPath)}});
        engine.load(QUrl(QStringLiteral("qrc:/Tarvel/qml/Gallery.qml")));
        QCOMPARE(engine.rootObjects().size(), 1);
        auto *gallery = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
        QVERIFY(gallery);
        gallery->resize(375, 1060);
        QVERIFY(QTest::qWaitForWindowExposed(gallery));
        stack->pushViewController(new Screen(QStringLiteral("我的订单")), false);
        QVERIFY(tarvel::test::waitForStillScene(gallery));

        const auto shoot = [gallery](const QString &name) {
            const QImage image = gallery->grabWindow();
            QVERIFY(!image.isNull());
            QVERIFY(image.save(artifact(name)));
        };
        shoot(QStringLiteral("gallery.png"));

        Hud::shared().showWithStatus(QStringLiteral("正在加载"), true);
        QVERIFY(tarvel::test::waitForStillScene(gallery));
        shoot(QStringLiteral("gallery-hud-progress.png"));
        Hud::shared().showSuccessWithStatus(QStringLiteral("登录成功"), true);
        QVERIFY(tarvel::test::waitForStillScene(gallery));
        shoot(QStringLiteral("gallery-hud-success.png"));
        Hud::shared().showErrorWithStatus(QStringLiteral("继续操作前请先到邮箱激活您的账号"));
        QVERIFY(tarvel::test::waitForStillScene(gallery));
        shoot(QStringLiteral("gallery-hud-error.png"));
        Hud::shared().dismiss();

        AlertCenter::shared().showAlert(QStringLiteral("提示"),
                                        QStringLiteral("确定要取消这个订单吗？"),
                                        QStringLiteral("取消"), {QStringLiteral("确定")});
        QVERIFY(tarvel::test::waitForStillScene(gallery));
        shoot(QStringLiteral("gallery-alert.png"));
        AlertCenter::shared().choose(0);
        AlertCenter::shared().showActionSheet(QStringLiteral("选择照片"), QStringLiteral("取消"),
                                              QStringLiteral("相机拍照获取"),
                                              {QStringLiteral("相册获取")});
        QVERIFY(tarvel::test::waitForStillScene(gallery));
        shoot(QStringLiteral("gallery-actionsheet.png"));
        AlertCenter::shared().clear();
        settle();
    }
};

TARVEL_TEST_MAIN(TestQmlComponents)
#include "tst_qmlcomponents.moc"
