#include "util/UIAlertViewBlock.h"

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
    if (dismissBlock)
        dismissBlock(buttonIndex - (cancelButtonIndex() >= 0 ? 1 : 0));
}
