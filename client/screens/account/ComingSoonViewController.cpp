#include "screens/account/ComingSoonViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationController.h"

ComingSoonViewController::ComingSoonViewController(QObject *parent)
    : Q9FatherViewController(parent)
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/ComingSoonView.qml")));
}

void ComingSoonViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(screenTitle());
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
    setNote(screenNote());
}

void ComingSoonViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void ComingSoonViewController::setNote(const QString &note)
{
    if (m_note == note)
        return;
    m_note = note;
    emit noteChanged();
}
