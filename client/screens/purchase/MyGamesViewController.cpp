#include "screens/purchase/MyGamesViewController.h"

MyGamesViewController::MyGamesViewController(QObject *parent)
    : ComingSoonViewController(QStringLiteral("我的游戏"),
                               QStringLiteral("已购游戏与激活码即将开放，敬请期待"), parent)
{ }
