#include "app/ICTabBarController.h"

#include "app/AppDelegate.h"
#include "app/ICTabBarItem.h"
#include "app/ICTabBarView.h"
#include "platform/ui/NavigationController.h"
#include "screens/account/NavRootViewController.h"

#include <QPointer>

namespace {

const QColor TopLineColor(149, 149, 149);
constexpr qreal TopLineWidth = 0.5;
const QColor SelectedTitleColor(249, 145, 45);

// Normal and selected pictures of each tab, in tab order.
constexpr const char *TabImages[][2] = {
        {"tabOne_Default", "tabOne_select"},
        {"tabThree_Default", "tabThree_select"},
        {"tabFour_Default", "tabFour_select"},
        {"tabFive_Default", "tabFive_select"},
};

bool needsSignIn(int tab)
{
    return tab == ICTabBarController::CartTab || tab == ICTabBarController::MyPageTab;
}

} // namespace

ICTabBarController::ICTabBarController(QObject *parent)
    : platform::TabBarController(parent)
    , m_tabBarView(new ICTabBarView(this))
{
    m_hideAnimation.setSingleShot(true);
    m_hideAnimation.setInterval(ICTabBarView::HideAnimationMs);
    // The content takes the strip's room once the strip has slid away.
    connect(&m_hideAnimation, &QTimer::timeout, this, [this] {
        setTabBarHidden(m_isHide);
        emit isHideChanged();
    });
    connect(m_tabBarView, &ICTabBarView::widthChanged, this, &ICTabBarController::layoutButtons);
}

QList<QObject *> ICTabBarController::buttonObjects() const
{
    QList<QObject *> objects;
    for (ICTabBarItem *button : m_arrayButton)
        objects.append(button);
    return objects;
}

void ICTabBarController::viewDidLoad()
{
    platform::TabBarController::viewDidLoad();
    initialize();
    loadBaseUI();
}

void ICTabBarController::initialize()
{
    m_isHide = false;
    qDeleteAll(m_arrayButton);
    m_arrayButton.clear();
    tagPushWithSignedInPhone();
}

void ICTabBarController::loadBaseUI()
{
    setTabBarButtons(TabCount);
    if (!m_arrayButton.isEmpty())
        markSelectedButton(m_arrayButton.constFirst()->tag());
}

void ICTabBarController::setTabBarButtons(int count)
{
    m_tabBarView->drawTopLine(TopLineColor, TopLineWidth);
    for (int i = 0; i < count; ++i) {
        auto *button = new ICTabBarItem(this);
        button->setTag(i);
        button->setTitleColor(Qt::white);
        button->setSelectedTitleColor(SelectedTitleColor);
        if (i < int(std::size(TabImages))) {
            button->setImageName(QString::fromLatin1(TabImages[i][0]));
            button->setSelectedImageName(QString::fromLatin1(TabImages[i][1]));
        }
        connect(button, &platform::Button::clicked, this, [this, button] { selectIndex(button); });
        m_arrayButton.append(button);
    }
    layoutButtons();
    emit arrayButtonChanged();
}

void ICTabBarController::layoutButtons()
{
    const int count = int(m_arrayButton.size());
    for (int i = 0; i < count; ++i)
        m_arrayButton[i]->setFrame(m_tabBarView->buttonFrame(i, count));
}

void ICTabBarController::selectIndex(ICTabBarItem *button)
{
    if (!button)
        return;
    const int tab = button->tag();
    if (needsSignIn(tab) && !AppDelegate::shared()->isSignedIn()) {
        presentSignInForTab(tab);
        return;
    }
    setSelectedIndex(tab);
    markSelectedButton(tab);
}

void ICTabBarController::selectViewControllerAtIndex(int index)
{
    if (index < 0 || index >= count())
        return;
    setSelectedIndex(index);
    markSelectedButton(index);
}

void ICTabBarController::markSelectedButton(int index)
{
    for (ICTabBarItem *button : std::as_const(m_arrayButton))
        button->setSelected(button->tag() == index);
}

// Father value 0 for the cart, 1 for the my page; the sign-in hands it back on success.
void ICTabBarController::presentSignInForTab(int tab)
{
    const int viewFather = tab == CartTab ? 0 : 1;
    QPointer<ICTabBarController> self(this);
    auto loginSuccess = [self](qint64 father) {
        if (!self)
            return;
        self->selectViewControllerAtIndex(father == 0 ? CartTab : MyPageTab);
        tagPushWithSignedInPhone();
    };
    auto *signIn = new NavRootViewController(viewFather, loginSuccess);
    presentViewController(new platform::NavigationController(signIn), true);
}

void ICTabBarController::tagPushWithSignedInPhone()
{
    AppDelegate *delegate = AppDelegate::shared();
    const std::optional<Object_User> user = delegate->userLogin();
    if (user && user->phone_number.size() == 11)
        delegate->setTags({user->phone_number});
}

void ICTabBarController::hideTabBar(bool hide)
{
    if (hide == m_isHide)
        return;
    m_isHide = hide;
    // Shown at once so that it can slide in; hidden once it has slid out.
    if (!hide)
        setTabBarHidden(false);
    m_hideAnimation.start();
    emit isHideChanged();
    emit hideAnimationStarted(hide);
}
