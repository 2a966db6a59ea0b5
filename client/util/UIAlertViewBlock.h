#pragma once

#include <QString>
#include <QStringList>

#include <functional>

// An alert's buttons and the blocks that run when it is dismissed. The cancel button, when there
// is one, comes first (index 0); the other buttons follow in order. The shell shows the alert and
// reports the chosen index to dismissWithClickedButtonIndex().
class UIAlertViewBlock
{
public:
    using DismissBlock = std::function<void(int otherButtonIndex)>;
    using CancelBlock = std::function<void()>;

    static UIAlertViewBlock alertViewWithTitle(const QString &title, const QString &message,
                                               const QString &cancelButtonTitle,
                                               const QStringList &otherButtonTitles,
                                               DismissBlock onDismiss, CancelBlock onCancel);

    QString title() const { return m_title; }
    QString message() const { return m_message; }
    QStringList buttonTitles() const;
    // -1 when the alert has no cancel button.
    int cancelButtonIndex() const { return m_cancelButtonTitle.isEmpty() ? -1 : 0; }

    // The cancel button runs the cancel block; any other runs the dismiss block with its 0-based
    // position among the other buttons. An index that names no button runs nothing.
    void dismissWithClickedButtonIndex(int buttonIndex) const;

    DismissBlock dismissBlock;
    CancelBlock cancelBlock;

private:
    QString m_title;
    QString m_message;
    QString m_cancelButtonTitle;
    QStringList m_otherButtonTitles;
};
