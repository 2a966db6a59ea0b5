#include "screens/account/MyMessageDetailViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationController.h"
#include "screens/account/MessageLink.h"

MyMessageDetailViewController::MyMessageDetailViewController(const QVariantMap &sourceDic,
                                                             QObject *parent)
    : Q9FatherViewController(parent)
    , m_sourceDic(sourceDic)
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/MyMessageDetailView.qml")));
}

QString MyMessageDetailViewController::text(const QString &key) const
{
    return m_sourceDic.value(key).toString();
}

QString MyMessageDetailViewController::messageTitle() const
{
    return text(QStringLiteral("title"));
}

QString MyMessageDetailViewController::messageDate() const
{
    return text(QStringLiteral("date"));
}

QString MyMessageDetailViewController::messageContent() const
{
    return text(QStringLiteral("content"));
}

QString MyMessageDetailViewController::url() const
{
    return text(QStringLiteral("url"));
}

void MyMessageDetailViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("消息"));
    rightBarItem()->setHidden(true);
}

void MyMessageDetailViewController::setRefleshDataAction()
{
    hideTabBar(true);
}

void MyMessageDetailViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void MyMessageDetailViewController::clickButtonBg()
{
    if (hasLink())
        MessageLink::follow(url(), navigationController());
}
