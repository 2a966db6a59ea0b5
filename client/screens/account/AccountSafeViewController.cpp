#include "screens/account/AccountSafeViewController.h"

#include "app/AppDelegate.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationController.h"
#include "screens/account/AccountSafeCell.h"
#include "screens/account/BindEmailViewController.h"
#include "screens/account/BindMobileViewController.h"
#include "screens/account/ModifyMobileOldViewController.h"
#include "screens/account/ModifyPasswordViewController.h"
#include "service/ICSessionHelper.h"

namespace {

constexpr int RowCount = 3;

Object_User currentUser()
{
    return AppDelegate::shared()->userLogin().value_or(Object_User());
}

bool hasMobile(const Object_User &user)
{
    return user.phone_number.length() == 11;
}

} // namespace

AccountSafeViewController::AccountSafeViewController(QObject *parent)
    : Q9FatherViewController(parent)
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/AccountSafeView.qml")));
    for (int row = 0; row < RowCount; ++row)
        m_cells.append(new AccountSafeCell(this));
}

void AccountSafeViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("账户安全"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void AccountSafeViewController::viewWillAppear(bool animated)
{
    Q9FatherViewController::viewWillAppear(animated);
    setNavigationBarTransparent(false);
}

void AccountSafeViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

// Each appearance shows the user as it is now, after a change made on a sub-screen.
void AccountSafeViewController::setRefleshDataAction()
{
    hideTabBar(true);
    fillPasswordRow(m_cells.at(0));
    fillMobileRow(m_cells.at(1));
    fillEmailRow(m_cells.at(2));
    emit tableChanged();
}

int AccountSafeViewController::numberOfRowsInSection(int section) const
{
    return section == 0 ? RowCount : 0;
}

AccountSafeCell *AccountSafeViewController::cellForRowAtIndexPath(int row) const
{
    return m_cells.value(row);
}

QList<QObject *> AccountSafeViewController::tableMainObjects() const
{
    return {m_cells.cbegin(), m_cells.cend()};
}

QString AccountSafeViewController::maskedPhoneTip(const QString &phoneNumber)
{
    if (phoneNumber.length() != 11)
        return {};
    QString masked = phoneNumber;
    masked.replace(3, 4, QStringLiteral("****"));
    return QStringLiteral("*") + masked;
}

void AccountSafeViewController::fillPasswordRow(AccountSafeCell *cell)
{
    cell->setCellContentWithTitle(QStringLiteral("账户密码"),
                                  QStringLiteral("*定期更改密码可保护账户安全"),
                                  [this] { push(new ModifyPasswordViewController); });
    cell->setButtonType(AccountSafeCell::Modify);
}

void AccountSafeViewController::fillMobileRow(AccountSafeCell *cell)
{
    const Object_User user = currentUser();
    const bool bound = hasMobile(user);
    // The number is looked at again when the button is tapped.
    cell->setCellContentWithTitle(QStringLiteral("绑定手机"),
                                  bound ? maskedPhoneTip(user.phone_number)
                                        : QStringLiteral("*请您绑定您的手机!"),
                                  [this] {
                                      if (hasMobile(currentUser()))
                                          push(new ModifyMobileOldViewController);
                                      else
                                          push(new BindMobileViewController);
                                  });
    cell->setButtonType(bound ? AccountSafeCell::Modify : AccountSafeCell::Bind);
}

void AccountSafeViewController::fillEmailRow(AccountSafeCell *cell)
{
    const Object_User user = currentUser();
    const bool bound = ICSessionHelper::stringCheckEmail(user.email);
    cell->setCellContentWithTitle(QStringLiteral("绑定邮箱"),
                                  bound ? QStringLiteral("*") + user.email
                                        : QStringLiteral("*请您绑定您的邮箱!"),
                                  [this] { push(new BindEmailViewController); });
    cell->setButtonType(bound ? AccountSafeCell::Modify : AccountSafeCell::Bind);
}

void AccountSafeViewController::push(platform::ViewController *controller)
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->pushViewController(controller, true);
    else
        delete controller;
}
