#include "app/RightViewController.h"

RightViewController::RightViewController(QObject *parent)
    : Q9FatherViewController(parent)
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/app/SidePanelView.qml")));
}

void RightViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("更多"));
}
