#pragma once

#include "screens/account/RecoveryFormViewController.h"

// Recovery or unlock by mobile number: the number and the captcha; "下一步" asks the service for an
// SMS code and goes on to the SMS step with both.
class FindPasswordMobileViewController : public RecoveryFormViewController
{
    Q_OBJECT
public:
    explicit FindPasswordMobileViewController(qint64 viewType = FindPassword,
                                              QObject *parent = nullptr);

    void clickButtonNext() override;

private:
    void codeSent();
};
