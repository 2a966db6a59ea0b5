#include "screens/account/FindPasswordViewController.h"

FindPasswordViewController::FindPasswordViewController(qint64 viewType, QObject *parent)
    : ComingSoonViewController(parent)
    , m_viewType(viewType)
{ }

QString FindPasswordViewController::screenTitle() const
{
    return m_viewType == FindPassword ? QStringLiteral("找回方式") : QStringLiteral("解锁方式");
}

QString FindPasswordViewController::screenNote() const
{
    return m_viewType == FindPassword ? QStringLiteral("手机和邮箱找回密码即将开放")
                                      : QStringLiteral("账号已锁定，手机和邮箱解锁即将开放");
}
