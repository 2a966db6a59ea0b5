#include "screens/account/PersonalDataViewController.h"

#include "app/AppDelegate.h"
#include "device/ICMediaPhotoHelper.h"
#include "models/JSONModel.h"
#include "platform/ui/AlertCenter.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/MemoryImageProvider.h"
#include "platform/ui/NavigationController.h"
#include "screens/account/FailureMessage.h"
#include "screens/account/PersonalDataBottomView.h"
#include "service/ICSessionHelper.h"
#include "service/NetWorkHelper.h"
#include "util/AppConfig.h"

#include <QPointer>

using platform::Hud;

namespace {

const QString AvatarKey = QStringLiteral("avatar");
const QString NickNameKey = QStringLiteral("nick_name");

// Failure texts as the user reads them: a refused field's printed description becomes its
// sentence; every other text is shown as it is.
void showFailure(const QString &message)
{
    Hud::shared().showErrorWithStatus(FailureMessage::readable(message), true);
}

} // namespace

PersonalDataViewController::PersonalDataViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_buttonEditHead(new platform::Button(this))
    , m_bottomView(new PersonalDataBottomView(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/PersonalDataView.qml")));
    m_buttonEditHead->setTitle(QStringLiteral("编辑头像"));
    m_buttonEditHead->setTitleColor(Qt::white);
    connect(m_buttonEditHead, &platform::Button::clicked, this,
            &PersonalDataViewController::clickButtonEditHead);
    m_bottomView->setDelegate(this);
}

void PersonalDataViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("个人资料"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void PersonalDataViewController::viewWillAppear(bool animated)
{
    Q9FatherViewController::viewWillAppear(animated);
    setNavigationBarTransparent(false);
}

void PersonalDataViewController::setRefleshDataAction()
{
    hideTabBar(true);
}

void PersonalDataViewController::setLoadViewAction()
{
    m_backgroundImage = QStringLiteral("myInfo_bg");
    emit layoutChanged();
    refreshData();
}

void PersonalDataViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

QUrl PersonalDataViewController::avatarUrl(const QString &avatar)
{
    if (avatar.isEmpty())
        return {};
    return QUrl(avatar.startsWith(QLatin1String("http")) ? avatar : ApiBaseUrl() + avatar);
}

void PersonalDataViewController::refreshData()
{
    QPointer<PersonalDataViewController> self(this);
    NetWorkHelper::shareInstance()->getUserInfoWithStartFn(
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在加载"), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &data, const QVariant &) {
                if (self && data.typeId() == QMetaType::QVariantMap)
                    self->showUserInfo(data.toMap());
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                showFailure(message);
            });
}

void PersonalDataViewController::showUserInfo(const QVariantMap &info)
{
    m_strAvatar = info.value(AvatarKey).toString();
    if (m_imageHeaderUpload.isNull())
        setImageHead(avatarUrl(m_strAvatar));
    m_bottomView->setViewContentWithName(info.value(NickNameKey).toString(),
                                         info.value(QStringLiteral("gender")).toInt());
    m_modelQiNiu = JSONModel::initWithDictionary<Object_QiNiu>(
                           info.value(QStringLiteral("qiniu_params")))
                           .value_or(Object_QiNiu());
}

void PersonalDataViewController::setImageHead(const QUrl &url)
{
    if (m_imageHead == url)
        return;
    m_imageHead = url;
    emit imageHeadChanged();
}

void PersonalDataViewController::clickButtonEditHead()
{
    QPointer<PersonalDataViewController> self(this);
    platform::AlertCenter::shared().showActionSheet(
            QStringLiteral("选择照片"), QStringLiteral("取消"), QStringLiteral("相机拍照获取"),
            {QStringLiteral("相册获取")}, [self](int index) {
                if (!self)
                    return;
                if (index == 0)
                    self->pickPicture(ICMediaPhotoHelper::Camera);
                else if (index == 1)
                    self->pickPicture(ICMediaPhotoHelper::PhotoLibrary);
            });
}

// Failures and cancelling end silently here.
void PersonalDataViewController::pickPicture(int sourceType)
{
    QPointer<PersonalDataViewController> self(this);
    ICMediaPhotoHelper::shareInstance()->getPhotoByICLibry(
            this, sourceType,
            [self](const QImage &image) {
                if (!self)
                    return;
                self->m_imageHeaderUpload = image;
                self->showChosenPicture();
            },
            [](const ICMediaError &) {});
}

// The chosen picture shows in the round head at once, from memory.
void PersonalDataViewController::showChosenPicture()
{
    setImageHead(platform::MemoryImageProvider::publish(this, QStringLiteral("imageHeaderUpload"),
                                                        m_imageHeaderUpload));
}

void PersonalDataViewController::didClickButtonSave()
{
    if (m_imageHeaderUpload.isNull())
        modify(m_strAvatar, true);
    else
        uploadThenModify();
}

void PersonalDataViewController::uploadThenModify()
{
    QPointer<PersonalDataViewController> self(this);
    NetWorkHelper::shareInstance()->uploadImageWithHeadImage(
            m_imageHeaderUpload, m_modelQiNiu,
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在修改..."), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &answer, const QVariant &) {
                if (self)
                    self->modify(answer.toMap().value(QStringLiteral("dest_url")).toString(),
                                 false);
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                showFailure(message);
            });
}

void PersonalDataViewController::modify(const QString &avatar, bool showsProgress)
{
    const bool withNewAvatar = !showsProgress;
    QPointer<PersonalDataViewController> self(this);
    NetWorkHelper::shareInstance()->modifyUserInfoWithNick_name(
            m_bottomView->getUserName(), m_bottomView->getUserSex(), avatar,
            [showsProgress](const QVariantMap &) {
                if (showsProgress)
                    Hud::shared().showWithStatus(QStringLiteral("正在修改..."), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self, withNewAvatar](const QVariant &data, const QVariant &) {
                if (self)
                    self->modified(data, withNewAvatar);
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                showFailure(message);
            });
}

// The stored user and the signed-in one take the new nickname (and avatar).
void PersonalDataViewController::modified(const QVariant &data, bool withNewAvatar)
{
    const QString nickName = m_bottomView->getUserName();
    const QString avatar = data.toMap().value(AvatarKey).toString();
    if (std::optional<QVariantMap> stored = ICSessionHelper::userGetinfo()) {
        if (withNewAvatar)
            stored->insert(AvatarKey, avatar);
        stored->insert(NickNameKey, nickName);
        ICSessionHelper::userSaveObjectUser(*stored);
    }
    if (std::optional<Object_User> user = AppDelegate::shared()->userLogin()) {
        if (withNewAvatar)
            user->avatar = avatar;
        user->nick_name = nickName;
        AppDelegate::shared()->setUserLogin(user);
    }
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
    Hud::shared().showSuccessWithStatus(QStringLiteral("修改成功"), true);
}
