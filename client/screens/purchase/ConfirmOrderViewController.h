#pragma once

#include "screens/purchase/ComingSoonViewController.h"

#include <QStringList>

// Order confirmation, opened with the games to order and how: type 1 buys them directly, bypassing
// the cart. Until checkout is built it only shows what it was opened with.
class ConfirmOrderViewController : public ComingSoonViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
public:
    enum OrderType { FromCart = 0, BuyDirectly = 1 };

    ConfirmOrderViewController(const QStringList &gamesID, int type, QObject *parent = nullptr);

    QStringList gamesID() const { return m_gamesID; }
    int type() const { return m_type; }

private:
    QStringList m_gamesID;
    int m_type = FromCart;
};
