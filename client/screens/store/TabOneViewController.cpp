#include "screens/store/TabOneViewController.h"

TabOneViewController::TabOneViewController(QObject *parent)
    : Q9FatherViewController(parent)
{ }

void TabOneViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("首页"));
}
