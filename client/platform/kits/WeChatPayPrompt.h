#pragma once

#include "platform/kits/WXApiObject.h"

#include <QObject>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <optional>

class QQmlEngine;
class QJSEngine;

namespace platform {

// WeChat's payment page as the desktop sandbox plays it: a sheet titled "微信支付" over the app
// with the amount of the prepay (asked of tarvel-store's sandbox) and two buttons. Confirming or
// refusing settles the prepay with the sandbox and then answers the app through its WeChat URL;
// closing the sheet answers nothing. While the sheet is up the app is inactive; when it goes the
// app becomes active again.
class WeChatPayPrompt : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool shown READ isShown NOTIFY changed)
    Q_PROPERTY(bool busy READ isBusy NOTIFY changed)
    Q_PROPERTY(bool canConfirm READ canConfirm NOTIFY changed)
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString merchant READ merchant CONSTANT)
    Q_PROPERTY(QString amount READ amount NOTIFY changed)
    Q_PROPERTY(QString orderNumber READ orderNumber NOTIFY changed)
    Q_PROPERTY(QString status READ status NOTIFY changed)

public:
    static WeChatPayPrompt &shared();
    static WeChatPayPrompt *create(QQmlEngine *, QJSEngine *);

    // Shows the sheet for `req`; false while another payment is shown.
    bool present(const PayReq &req);
    // The request last shown.
    PayReq request() const { return m_request; }

    bool isShown() const { return m_shown; }
    // Waiting for the sandbox (loading the amount or settling).
    bool isBusy() const { return m_loading || m_settling; }
    bool canConfirm() const { return m_shown && m_payable && !isBusy(); }
    QString title() const { return QStringLiteral("微信支付"); }
    QString merchant() const { return QStringLiteral("Tarvel 游戏商城"); }
    // "¥102.40"; empty until the sandbox told it.
    QString amount() const { return m_amount; }
    QString orderNumber() const { return m_orderNumber; }
    // What the sheet is doing, or why it cannot pay; empty when ready.
    QString status() const { return m_status; }

    // The payer's choices.
    Q_INVOKABLE void confirm();
    Q_INVOKABLE void cancel();
    // Leaves WeChat without answering.
    Q_INVOKABLE void dismiss();

signals:
    void changed();

private:
    WeChatPayPrompt() = default;
    void loadAmount();
    void settle(bool pay);
    void finish(const std::optional<QUrl> &answer);
    void setStatus(const QString &status);

    PayReq m_request;
    bool m_shown = false;
    bool m_loading = false;
    bool m_settling = false;
    bool m_payable = false;
    QString m_amount;
    QString m_prepayAmount; // as the service wrote it, sent back with the confirmation
    QString m_orderNumber;
    QString m_status;
    quint64 m_generation = 0;
};

} // namespace platform
