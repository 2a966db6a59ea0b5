#pragma once

#include "screens/account/ComingSoonViewController.h"

// Where a user recovers a forgotten password (`viewType` 0) or unlocks an account that failed
// sign-ins locked (`viewType` 1), by mobile number or e-mail. The flows are not in the app yet;
// the page says so.
class FindPasswordViewController : public ComingSoonViewController
{
    Q_OBJECT
    Q_PROPERTY(qint64 viewType READ viewType CONSTANT)
public:
    enum : qint64 { FindPassword = 0, Unlock = 1 };

    explicit FindPasswordViewController(qint64 viewType = FindPassword, QObject *parent = nullptr);

    qint64 viewType() const { return m_viewType; }

protected:
    QString screenTitle() const override;
    QString screenNote() const override;

private:
    qint64 m_viewType;
};
