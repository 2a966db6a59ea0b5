#pragma once

#include <QString>
#include <QStringList>

#include <functional>

// An alert whose outcome runs blocks. alertViewWithTitle shows it through the alert centre at
// once; the user's choice comes back to dismissWithClickedButtonIndex. The cancel button, when
// there is one, comes first (index 0); the other buttons follow in order.
class UIAlertViewBlock
{
public:
    using DismissBlock = std::function<void(int otherButtonIndex)>;
    using CancelBlock = std::function<void()>;

    // Builds the alert, hands it to AlertCenter::shared() to be shown, and returns it.
    static UIAlertViewBlock alertViewWithTitle(const QString &title, const QString &message,
                                               const QString &cancelButtonTitle,
                                               const QStringList &otherButtonTitles,
                                               DismissBlock onDismiss, CancelBlock onCancel);

    QString title() const { return m_title; }
    QString message() const { return m_message; }
    QStringList buttonTitles() const;
    QString cancelButtonTitle() const { return m_cancelButtonTitle; }
    QStringList otherButtonTitles() const { return m_otherButtonTitles; }
    // -1 when the alert has no cancel button.
    int cancelButtonIndex() const { return m_cancelButtonTitle.isEmpty() ? -1 : 0; }

    // The cancel button runs the cancel block; any other runs the dismiss block with the
    // button's index minus 1. An index that names no button runs nothing.
    void dismissWithClickedButtonIndex(int buttonIndex) const;

    DismissBlock dismissBlock;
    CancelBlock cancelBlock;

private:
    QString m_title;
    QString m_message;
    QString m_cancelButtonTitle;
    QStringList m_otherButtonTitles;
};
