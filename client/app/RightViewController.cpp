#include "app/RightViewController.h"

RightViewController::RightViewController(QObject *parent)
    : Q9FatherViewController(parent)
{ }

void RightViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("更多"));
}
