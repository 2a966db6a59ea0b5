#include "accounts/AccountFields.h"

#include "http/ApiError.h"

#include <QRegularExpression>

namespace AccountFields {

bool isPhoneNumber(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("^1\\d{10}$"));
    return pattern.match(text).hasMatch();
}

bool isEmail(const QString &text)
{
    static const QRegularExpression pattern(
            QStringLiteral("^[A-Z0-9a-z._%+-]+@[A-Za-z0-9.-]+\\.[A-Za-z]{2,4}$"));
    return text.size() <= 254 && pattern.match(text).hasMatch();
}

bool requirePresent(FieldErrors &errors, const QString &field, const QString &value,
                    const QString &humanName)
{
    if (!value.trimmed().isEmpty())
        return true;
    errors.add(field, QStringLiteral("请输入"), humanName);
    return false;
}

void checkPhoneNumber(FieldErrors &errors, const QString &field, const QString &value)
{
    if (requirePresent(errors, field, value, QStringLiteral("手机号")) && !isPhoneNumber(value))
        errors.add(field, QStringLiteral("请输入正确的"), QStringLiteral("手机号"));
}

void checkEmail(FieldErrors &errors, const QString &field, const QString &value)
{
    if (requirePresent(errors, field, value, QStringLiteral("邮箱")) && !isEmail(value))
        errors.add(field, QStringLiteral("请输入正确的"), QStringLiteral("邮箱"));
}

void checkNewPassword(FieldErrors &errors, const QString &password, const QString &confirmation,
                      bool confirmationSent)
{
    if (password.size() < kPasswordMin)
        errors.add(QStringLiteral("password"), QStringLiteral("请输入至少8位的"),
                   QStringLiteral("密码"));
    else if (password.size() > kPasswordMax)
        errors.add(QStringLiteral("password"), QStringLiteral("请输入不超过64位的"),
                   QStringLiteral("密码"));
    if (confirmationSent && confirmation != password)
        errors.add(QStringLiteral("password_confirmation"),
                   QStringLiteral("两次输入不一致，请重新输入"), QStringLiteral("确认密码"));
}

void refuseCaptcha(const QString &field)
{
    throw ApiError::fail(field, QStringLiteral("请重新输入正确的"), QStringLiteral("图片验证码"));
}

void refuseSmsCode(const QString &field)
{
    throw ApiError::fail(field, QStringLiteral("无效或已过期，请重新获取"),
                         QStringLiteral("短信验证码"));
}

void refuseCurrentPassword()
{
    throw ApiError::fail(QStringLiteral("current_password"), QStringLiteral("请输入正确的"),
                         QStringLiteral("当前密码"));
}

} // namespace AccountFields
