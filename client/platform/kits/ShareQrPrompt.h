#pragma once

#include "platform/kits/WXApiObject.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QQmlEngine;
class QJSEngine;

namespace platform {

// Sharing to WeChat as the desktop plays it: a sheet with the shared page as a QR code that the
// user scans with WeChat on the phone ("请使用微信扫一扫"). "完成" answers the app as WeChat does
// after a share, "取消" as after a cancelled one; the answer comes through the app's WeChat URL.
// While the sheet is up the app is inactive.
class ShareQrPrompt : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool shown READ isShown NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString shareTitle READ shareTitle NOTIFY changed)
    Q_PROPERTY(QString shareText READ shareText NOTIFY changed)
    Q_PROPERTY(QString thumbUrl READ thumbUrl NOTIFY changed)
    Q_PROPERTY(QString code READ code NOTIFY changed)
    Q_PROPERTY(QString hint READ hint CONSTANT)
    Q_PROPERTY(QString detail READ detail NOTIFY changed)

public:
    static ShareQrPrompt &shared();
    static ShareQrPrompt *create(QQmlEngine *, QJSEngine *);

    // Shows the sheet for `req`; false while another one is shown.
    bool present(const SendMessageToWXReq &req);
    SendMessageToWXReq request() const { return m_request; }

    bool isShown() const { return m_shown; }
    // "分享到微信好友" or "分享到微信朋友圈".
    QString title() const;
    QString shareTitle() const { return m_request.title; }
    QString shareText() const { return m_request.description; }
    QString thumbUrl() const { return m_request.thumbImageUrl; }
    // What the QR code holds: the page's address, or the text when there is no page.
    QString code() const;
    QString hint() const { return QStringLiteral("请使用微信扫一扫"); }
    QString detail() const;

    // The user shared the page (done) or gave up (cancel).
    Q_INVOKABLE void done();
    Q_INVOKABLE void cancel();

signals:
    void changed();

private:
    ShareQrPrompt() = default;
    void finish(int errCode);

    SendMessageToWXReq m_request;
    bool m_shown = false;
};

} // namespace platform
