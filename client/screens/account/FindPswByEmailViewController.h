#pragma once

#include "screens/account/RecoveryFormViewController.h"

// Recovery or unlock by e-mail: the address and the captcha; the service mails a link that does
// the rest outside the app.
class FindPswByEmailViewController : public RecoveryFormViewController
{
    Q_OBJECT
public:
    explicit FindPswByEmailViewController(qint64 viewType = FindPassword,
                                          QObject *parent = nullptr);

    void clickButtonNext() override;
};
