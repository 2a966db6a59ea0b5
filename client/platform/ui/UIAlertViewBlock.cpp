#include "platform/ui/UIAlertViewBlock.h"

#include "platform/ui/AlertCenter.h"

UIAlertViewBlock UIAlertViewBlock::alertViewWithTitle(const QString &title, const QString &message,
                                                      const QString &cancelButtonTitle,
                                                      const QStringList &otherButtonTitles,
                                                      DismissBlock onDismiss, CancelBlock onCancel)
{
    UIAlertViewBlock alert;
    alert.m_title = title;
    alert.m_message = message;
    alert.m_cancelButtonTitle = cancelButtonTitle;
    alert.m_otherButtonTitles = otherButtonTitles;
    alert.dismissBlock = std::move(onDismiss);
    alert.cancelBlock = std::move(onCancel);
    // The centre numbers the buttons as this alert does: cancel first, then the others.
    platform::AlertCenter::shared().showAlert(
            title, message, cancelButtonTitle, otherButtonTitles,
            [alert](int index) { alert.dismissWithClickedButtonIndex(index); });
    return alert;
}

QStringList UIAlertViewBlock::buttonTitles() const
{
    QStringList titles;
    if (cancelButtonIndex() >= 0)
        titles << m_cancelButtonTitle;
    return titles + m_otherButtonTitles;
}

void UIAlertViewBlock::dismissWithClickedButtonIndex(int buttonIndex) const
{
    if (buttonIndex < 0 || buttonIndex >= buttonTitles().size())
        return;
    if (buttonIndex == cancelButtonIndex()) {
        if (cancelBlock)
            cancelBlock();
        return;
    }
    // Index minus 1 even without a cancel button, where the first button gets -1: intended, the
    // blocks' callers count on the platform's numbering.
    if (dismissBlock)
        dismissBlock(buttonIndex - 1);
}
