#include "screens/account/RegisterViewController.h"

RegisterViewController::RegisterViewController(QObject *parent)
    : ComingSoonViewController(parent)
{ }

QString RegisterViewController::screenTitle() const
{
    return QStringLiteral("注册");
}

QString RegisterViewController::screenNote() const
{
    return QStringLiteral("手机号和邮箱注册即将开放");
}
