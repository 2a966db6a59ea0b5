#include "screens/purchase/ComingSoonViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationController.h"

ComingSoonViewController::ComingSoonViewController(const QString &title, const QString &note,
                                                   QObject *parent)
    : Q9FatherViewController(parent)
    , m_screenTitle(title)
    , m_note(note)
{
    setTitle(title);
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/purchase/ComingSoonView.qml")));
}

void ComingSoonViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(m_screenTitle);
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void ComingSoonViewController::setRefleshDataAction()
{
    hideTabBar(true);
}

void ComingSoonViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}
