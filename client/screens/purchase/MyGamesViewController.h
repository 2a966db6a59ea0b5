#pragma once

#include "screens/purchase/ComingSoonViewController.h"

// The games the user owns (opened from the library).
class MyGamesViewController : public ComingSoonViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
public:
    explicit MyGamesViewController(QObject *parent = nullptr);
};
