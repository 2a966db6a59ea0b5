#pragma once

#include "screens/account/ComingSoonViewController.h"

// The games the user owns (opened from the library).
class MyGamesViewController : public ComingSoonViewController
{
    Q_OBJECT
public:
    explicit MyGamesViewController(QObject *parent = nullptr);

protected:
    void setRefleshDataAction() override { hideTabBar(true); }
    QString screenTitle() const override { return QStringLiteral("我的游戏"); }
    QString screenNote() const override
    {
        return QStringLiteral("已购游戏与激活码即将开放，敬请期待");
    }
};
