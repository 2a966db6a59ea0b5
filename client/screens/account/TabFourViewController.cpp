#include "screens/account/TabFourViewController.h"

#include "app/ICTabBarController.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "screens/account/AboutViewController.h"
#include "screens/account/AccountSafeViewController.h"
#include "screens/account/HelpAndFeedbackViewController.h"
#include "screens/account/PersonalDataViewController.h"
#include "screens/account/PreferencesViewController.h"
#include "screens/purchase/MyGamesViewController.h"
#include "screens/purchase/MyOrderViewController.h"
#include "service/ApplicationState.h"
#include "service/ICCookiesHelper.h"
#include "service/ICSessionHelper.h"
#include "util/AppConfig.h"

namespace {

const QStringList MenuTitles{QStringLiteral("我的游戏"), QStringLiteral("我的订单"),
                             QStringLiteral("个人资料"), QStringLiteral("账户安全"),
                             QStringLiteral("偏好设置"), QStringLiteral("帮助与反馈")};

} // namespace

TabFourViewController::TabFourViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_labelName(new platform::Label(this))
    , m_buttonLogOut(makeButton(QStringLiteral("退出当前账号"), QString(), 0))
    , m_buttonAbout(makeButton(QStringLiteral("关于Tarvel游戏"), QString(), 0))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/TabFourView.qml")));
    for (int tag = 0; tag < MenuCount; ++tag) {
        platform::Button *button
                = makeButton(MenuTitles.at(tag), QStringLiteral("mine_menu%1").arg(tag + 1), tag);
        connect(button, &platform::Button::clicked, this, [this, tag] { clickButtonMenu(tag); });
        m_menuButtons.append(button);
    }
    connect(m_buttonLogOut, &platform::Button::clicked, this,
            &TabFourViewController::clickButtonLogOut);
    connect(m_buttonAbout, &platform::Button::clicked, this,
            &TabFourViewController::clickButtonAbout);
}

platform::Button *TabFourViewController::makeButton(const QString &title, const QString &imageName,
                                                    int tag)
{
    auto *button = new platform::Button(this);
    button->setTitle(title);
    button->setImageName(imageName);
    button->setTag(tag);
    return button;
}

QList<QObject *> TabFourViewController::menuButtonObjects() const
{
    return {m_menuButtons.cbegin(), m_menuButtons.cend()};
}

QUrl TabFourViewController::avatarUrl(const QString &avatar)
{
    if (avatar.isEmpty())
        return {};
    if (avatar.startsWith(QLatin1String("http")))
        return QUrl(avatar);
    return QUrl(ApiBaseUrl() + avatar);
}

void TabFourViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("我的Tarvel"));
    leftBarItem()->setHidden(true);
    rightBarItem()->setHidden(true);
}

void TabFourViewController::viewWillAppear(bool animated)
{
    Q9FatherViewController::viewWillAppear(animated);
    setNavigationBarTransparent(true);
}

void TabFourViewController::setRefleshDataAction()
{
    hideTabBar(false);
    const std::optional<Object_User> user = ApplicationState::shared().userLogin();
    m_labelName->setText(user ? user->nick_name : QString());
    m_imageHead = avatarUrl(user ? user->avatar : QString());
    emit userShown();
}

void TabFourViewController::push(platform::ViewController *screen)
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->pushViewController(screen, true);
    else
        delete screen;
}

platform::ViewController *TabFourViewController::personalDataScreen()
{
    return new PersonalDataViewController;
}

platform::ViewController *TabFourViewController::accountSafeScreen()
{
    return new AccountSafeViewController;
}

void TabFourViewController::clickButtonMenu(int tag)
{
    switch (tag) {
    case MyGames:
        return push(new MyGamesViewController);
    case MyOrders:
        return push(MyOrderViewController::initWithFatherView(0));
    case PersonalData:
        return push(personalDataScreen());
    case AccountSafe:
        return push(accountSafeScreen());
    case Preferences:
        return push(new PreferencesViewController);
    case HelpAndFeedback:
        return push(new HelpAndFeedbackViewController);
    default:
        break;
    }
}

void TabFourViewController::clickButtonLogOut()
{
    ApplicationState::shared().setUserLogin(std::nullopt);
    ICSessionHelper::userClearData();
    ICCookiesHelper::deleteCookies();
    if (auto *tabs = qobject_cast<ICTabBarController *>(tabBarController()))
        tabs->selectViewControllerAtIndex(ICTabBarController::HomeTab);
    platform::Hud::shared().showSuccessWithStatus(QStringLiteral("退出成功"), true);
}

void TabFourViewController::clickButtonAbout()
{
    push(new AboutViewController);
}
