#pragma once

#include "device/ICShareContent.h"
#include "platform/ui/Button.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <functional>

// The bottom sheet that shares the page on screen: "微信好友", "微信朋友圈", "新浪微博" and "取消"
// over a dimmed backdrop. The caller gives the content, then shows it; a target button hands the
// content to the sharing kit and the kit's answer shows as a HUD.
class ICShareView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the screen that shares")
    Q_PROPERTY(bool shown READ isShown NOTIFY shownChanged)
    Q_PROPERTY(QVariantList arrayButtonShare READ buttonsForView CONSTANT)
    Q_PROPERTY(platform::Button *buttonClose READ buttonClose CONSTANT)
    Q_PROPERTY(int animationDuration READ animationDuration CONSTANT)
public:
    static constexpr int ButtonTagBase = 5000;
    static constexpr int AnimationDurationMs = 300;

    using ResultFn = std::function<void(const ICShareResult &result)>;
    // Hands one share to the sharing kit; the kit calls `done` with its answer (possibly more than
    // once: started, then finished).
    using ShareFunction = std::function<void(const ICShareRequest &request, ResultFn done)>;

    explicit ICShareView(QObject *parent = nullptr);

    // Stores the content; an absent or empty value is stored as "".
    void setShareTitle(const QString &title, const QString &content, const QString &imageUrl,
                       const QString &url);
    QString StrTitle() const { return m_title; }
    QString StrContent() const { return m_content; }
    QString StrImageUrl() const { return m_imageUrl; }
    QString StrUrl() const { return m_url; }

    Q_INVOKABLE void showView();
    Q_INVOKABLE void hideView();
    bool isShown() const { return m_shown; }
    int animationDuration() const { return AnimationDurationMs; }

    QList<platform::Button *> arrayButtonShare() const { return m_buttons; }
    platform::Button *buttonClose() const { return m_buttonClose; }

    // Shares to the target of `button`'s tag (5000 + index; 5003 and 5004 are kept for targets
    // without a button). Unknown tags do nothing.
    void clickButtonShare(const platform::Button *button);
    // The share a tag asks for, with the current content; false for an unknown tag.
    bool requestForTag(int tag, ICShareRequest *request) const;

    // Tests put their own kit in; an empty function goes back to the app's sharing kit.
    static void setShareFunction(ShareFunction function);

signals:
    void shownChanged();

private:
    QVariantList buttonsForView() const;
    ICShareContent buildContent() const;
    static void showResult(const ICShareResult &result);
    static void shareWithKit(const ICShareRequest &request, ResultFn done);

    QString m_title;
    QString m_content;
    QString m_imageUrl;
    QString m_url;
    bool m_shown = false;
    QList<platform::Button *> m_buttons;
    platform::Button *m_buttonClose = nullptr;
};
