#pragma once

#include "screens/account/ComingSoonViewController.h"

#include <QStringList>

// Order confirmation, opened with the games to order and how: type 1 buys them directly, bypassing
// the cart. Until checkout is built it only holds what it was opened with.
class ConfirmOrderViewController : public ComingSoonViewController
{
    Q_OBJECT
public:
    enum OrderType { FromCart = 0, BuyDirectly = 1 };

    ConfirmOrderViewController(const QStringList &gamesID, int type, QObject *parent = nullptr);

    QStringList gamesID() const { return m_gamesID; }
    int type() const { return m_type; }

protected:
    void setRefleshDataAction() override { hideTabBar(true); }
    QString screenTitle() const override;
    QString screenNote() const override;

private:
    QStringList m_gamesID;
    int m_type = FromCart;
};
