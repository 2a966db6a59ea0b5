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
    return m_viewType == FindPassword
                   ? QStringLiteral("通过手机或邮箱找回密码的功能即将开放，敬请期待")
                   : QStringLiteral("账号已被锁定，通过手机或邮箱解锁的功能即将开放，敬请期待");
}
