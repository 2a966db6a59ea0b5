#pragma once

#include "screens/account/AccountFormViewController.h"
#include "screens/account/ImageCodeButton.h"

#include <QString>

namespace platform {
class Button;
class TextField;
} // namespace platform

// What the two recovery screens share: the title "找回密码" in both modes, the account field, the
// captcha field with its picture (loaded when the screen is built, renewed by a tap) and the
// button that goes on. `viewType` (0 find password, 1 unlock) travels on unchanged.
class RecoveryFormViewController : public AccountFormViewController
{
    Q_OBJECT
    Q_PROPERTY(qint64 viewType READ viewType CONSTANT)
    Q_PROPERTY(platform::TextField *fieldUser READ fieldUser CONSTANT)
    Q_PROPERTY(platform::TextField *fieldAuthCode READ fieldAuthCode CONSTANT)
    Q_PROPERTY(ImageCodeButton *imageCode READ imageCode CONSTANT)
    Q_PROPERTY(platform::Button *buttonNext READ buttonNext CONSTANT)
public:
    enum : qint64 { FindPassword = 0, Unlock = 1 };

    qint64 viewType() const { return m_viewType; }
    platform::TextField *fieldUser() const { return m_fieldUser; }
    // The captcha text, despite the name.
    platform::TextField *fieldAuthCode() const { return m_fieldAuthCode; }
    ImageCodeButton *imageCode() const { return m_imageCode; }
    platform::Button *buttonNext() const { return m_buttonNext; }

    Q_INVOKABLE void refreshData();
    Q_INVOKABLE void clickImageCode();
    // Checks the fields and asks the service; each screen has its own.
    Q_INVOKABLE virtual void clickButtonNext() { }

protected:
    RecoveryFormViewController(qint64 viewType, const QString &userPlaceholder,
                               const QString &nextTitle, QObject *parent);

    QString screenTitle() const override;
    void setLoadViewAction() override;

    // `viewType` as the service takes it: "0" or "1".
    QString isUnlock() const { return QString::number(m_viewType); }

private:
    qint64 m_viewType;
    QString m_userPlaceholder;
    QString m_nextTitle;
    platform::TextField *m_fieldUser;
    platform::TextField *m_fieldAuthCode;
    ImageCodeButton *m_imageCode;
    platform::Button *m_buttonNext;
};
