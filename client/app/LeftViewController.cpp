#include "app/LeftViewController.h"

LeftViewController::LeftViewController(QObject *parent)
    : Q9FatherViewController(parent)
{ }

void LeftViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("菜单"));
}
