#include "app/LeftViewController.h"

LeftViewController::LeftViewController(QObject *parent)
    : Q9FatherViewController(parent)
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/app/SidePanelView.qml")));
}

void LeftViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("菜单"));
}
