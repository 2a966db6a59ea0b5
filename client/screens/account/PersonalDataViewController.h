#pragma once

#include "app/Q9FatherViewController.h"
#include "models/Object_QiNiu.h"
#include "screens/account/PersonalDataBottomView.h"

#include <QImage>
#include <QString>
#include <QUrl>

namespace platform {
class Button;
}

// "个人资料": the round avatar with "编辑头像" over the background picture, and the form with the
// nickname and gender below. Saving uploads a newly chosen avatar to the object storage first,
// then changes the profile.
class PersonalDataViewController : public Q9FatherViewController
{
    Q_OBJECT
    Q_PROPERTY(QString backgroundImage READ backgroundImage NOTIFY layoutChanged)
    Q_PROPERTY(QUrl imageHead READ imageHead NOTIFY imageHeadChanged)
    Q_PROPERTY(platform::Button *buttonEditHead READ buttonEditHead CONSTANT)
    Q_PROPERTY(PersonalDataBottomView *bottomView READ bottomView CONSTANT)
public:
    explicit PersonalDataViewController(QObject *parent = nullptr);

    QString backgroundImage() const { return m_backgroundImage; }
    // What the round head shows: the chosen picture, else the stored avatar.
    QUrl imageHead() const { return m_imageHead; }
    platform::Button *buttonEditHead() const { return m_buttonEditHead; }
    PersonalDataBottomView *bottomView() const { return m_bottomView; }
    QString strAvatar() const { return m_strAvatar; }
    Object_QiNiu modelQiNiu() const { return m_modelQiNiu; }
    QImage imageHeaderUpload() const { return m_imageHeaderUpload; }

    // The avatar's address: as it is when it begins with "http", else under ApiBaseUrl.
    static QUrl avatarUrl(const QString &avatar);

    // Loads the profile and a fresh upload credential.
    void refreshData();
    Q_INVOKABLE void clickButtonEditHead();
    // The form's save button.
    Q_INVOKABLE void didClickButtonSave();

signals:
    void layoutChanged();
    void imageHeadChanged();

protected:
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void setLoadViewAction() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    void showUserInfo(const QVariantMap &info);
    void pickPicture(int sourceType);
    void setImageHead(const QUrl &url);
    void showChosenPicture();
    void uploadThenModify();
    void modify(const QString &avatar, bool showsProgress);
    void modified(const QVariant &data, bool withNewAvatar);

    QString m_backgroundImage;
    QUrl m_imageHead;
    platform::Button *m_buttonEditHead;
    PersonalDataBottomView *m_bottomView;
    QString m_strAvatar;
    Object_QiNiu m_modelQiNiu;
    QImage m_imageHeaderUpload;
};
