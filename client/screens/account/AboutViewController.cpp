#include "screens/account/AboutViewController.h"

#include "TarvelConfig.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/UrlOpener.h"
#include "util/AppConfig.h"

AboutViewController::AboutViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_buttonTarvel(makeButton(QStringLiteral("Tarvel游戏介绍")))
    , m_buttonQMRT(makeButton(QStringLiteral("关于QMRT")))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/AboutView.qml")));
    connect(m_buttonTarvel, &platform::Button::clicked, this,
            &AboutViewController::clickButtonTarvel);
    connect(m_buttonQMRT, &platform::Button::clicked, this, &AboutViewController::clickButtonQMRT);
}

platform::Button *AboutViewController::makeButton(const QString &title)
{
    auto *button = new platform::Button(this);
    button->setTitle(title);
    return button;
}

QString AboutViewController::versionText() const
{
    return QStringLiteral("版本 %1").arg(QString::fromUtf8(tarvel::config::AppVersion));
}

void AboutViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("关于Tarvel游戏"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void AboutViewController::setRefleshDataAction()
{
    hideTabBar(true);
}

void AboutViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void AboutViewController::clickButtonTarvel()
{
    platform::UrlOpener::shared().openURL(tarvel::config::productPageUrl());
}

void AboutViewController::clickButtonQMRT()
{
    platform::UrlOpener::shared().openURL(tarvel::config::companyPageUrl());
}
