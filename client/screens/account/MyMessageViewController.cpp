#include "screens/account/MyMessageViewController.h"

MyMessageViewController::MyMessageViewController(QObject *parent)
    : Q9FatherViewController(parent)
{ }

void MyMessageViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("我的消息"));
}
