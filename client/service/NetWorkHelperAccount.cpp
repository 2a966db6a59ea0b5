// Account and profile operations of NetWorkHelper.
#include "service/NetWorkHelper.h"

#include "platform/UserDefaults.h"
#include "service/ApplicationState.h"
#include "util/TTIFormatValidate.h"

#include <QString>

namespace {

// "0" picks the password route; any other text the unlock route.
QString passwordOrUnlock(const QString &isUnlock)
{
    return isUnlock == QLatin1String("0") ? QStringLiteral("password") : QStringLiteral("unlock");
}

} // namespace

bool NetWorkHelper::refuseWhileCountingDown(const FailureFn &failureFn)
{
    const QVariant counting
            = platform::UserDefaults::standard().objectForKey(QStringLiteral("isCountdown"));
    if (!counting.toBool())
        return false;
    if (failureFn)
        failureFn(QVariant(),
                  QStringLiteral("%1S后才能再次获取验证码")
                          .arg(ApplicationState::shared().countdown()),
                  QVariant());
    return true;
}

void NetWorkHelper::signInWithAccountEmail(const QString &accountEmail,
                                           const QString &accountPassword, const StartFn &startFn,
                                           const EndFn &endFn, const SuccessFn &successFn,
                                           const FailureFn &failureFn)
{
    RequestParams params;
    params.set(QStringLiteral("account[login_name]"), accountEmail);
    params.set(QStringLiteral("account[password]"), accountPassword);
    responseWithParams(params, apiUrl(QStringLiteral("/sign_in.json")), {}, startFn, endFn,
                       successFn, failureFn);
}

void NetWorkHelper::registerWithLogin_name(
        const QString &loginName, const QString &pendingPhoneNumberToken, const QString &password,
        const QString &passwordConfirmation, const QString &captcha, const StartFn &startFn,
        const EndFn &endFn, const SuccessFn &successFn, const FailureFn &failureFn)
{
    RequestParams params;
    if (TTIFormatValidate::isValidateEmail(loginName)) {
        params.insert(QStringLiteral("account[email]"), loginName);
    } else {
        params.insert(QStringLiteral("account[phone_number]"), loginName);
        params.insert(QStringLiteral("account[pending_phone_number_token]"),
                      pendingPhoneNumberToken);
    }
    params.insert(QStringLiteral("account[captcha]"), captcha);
    params.insert(QStringLiteral("account[password]"), password);
    params.insert(QStringLiteral("account[password_confirmation]"), passwordConfirmation);
    responseWithParams(params, apiUrl(QStringLiteral("/sign_up.json")), {}, startFn, endFn,
                       successFn, failureFn);
}

QString NetWorkHelper::captchaPath() const
{
    // The time in milliseconds defeats caches: two pictures asked for within one second still
    // get two addresses.
    return QString::asprintf("/captcha?_=%.f", m_clock() * 1000);
}

void NetWorkHelper::getImageCodeWithStartFn(const StartFn &startFn, const EndFn &endFn,
                                            const SuccessFn &successFn, const FailureFn &failureFn)
{
    if (startFn)
        startFn(QVariantMap());
    // The answer is the picture itself, not an envelope.
    whenFinished(
            send(Verb::Get, apiUrl(captchaPath()), {}),
            [endFn, successFn, failureFn](bool succeeded, const QVariant &body, const QVariant &) {
                if (endFn)
                    endFn(body);
                if (succeeded) {
                    if (successFn)
                        successFn(body, body);
                } else if (failureFn) {
                    failureFn(QVariant(), QStringLiteral("网络通信错误"), body);
                }
            });
}

void NetWorkHelper::getAuthCodeWithPhone_number(const QString &phoneNumber, const QString &captcha,
                                                const StartFn &startFn, const EndFn &endFn,
                                                const SuccessFn &successFn,
                                                const FailureFn &failureFn)
{
    if (refuseWhileCountingDown(failureFn))
        return;
    RequestParams params;
    appendToken(params, TokenRule::IfSet);
    params.set(QStringLiteral("phone_number"), phoneNumber);
    params.insert(QStringLiteral("captcha"), captcha);
    responseWithParams(params, apiUrl(QStringLiteral("/phone_number_tokens.json")), {}, startFn,
                       endFn, successFn, failureFn);
}

void NetWorkHelper::getAuthCodeForForgetPasswordWithPhone_number(
        const QString &phoneNumber, const QString &captcha, const QString &isUnlock,
        const StartFn &startFn, const EndFn &endFn, const SuccessFn &successFn,
        const FailureFn &failureFn)
{
    if (refuseWhileCountingDown(failureFn))
        return;
    RequestParams params;
    appendToken(params, TokenRule::IfSet);
    params.set(QStringLiteral("phone_number"), phoneNumber);
    params.insert(QStringLiteral("captcha"), captcha);
    const QString path = QStringLiteral("/%1/token.json").arg(passwordOrUnlock(isUnlock));
    responseWithParams(params, apiUrl(path), {}, startFn, endFn, successFn, failureFn);
}

void NetWorkHelper::findPswWithphone_number(const QString &phoneNumber, const QString &captcha,
                                            const QString &pendingPhoneNumberToken,
                                            const QString &password,
                                            const QString &passwordConfirmation,
                                            const StartFn &startFn, const EndFn &endFn,
                                            const SuccessFn &successFn, const FailureFn &failureFn)
{
    RequestParams params;
    params.insert(QStringLiteral("account[phone_number]"), phoneNumber);
    params.insert(QStringLiteral("account[captcha]"), captcha);
    params.insert(QStringLiteral("account[pending_phone_number_token]"), pendingPhoneNumberToken);
    params.insert(QStringLiteral("account[password]"), password);
    params.insert(QStringLiteral("account[password_confirmation]"), passwordConfirmation);
    responseWithParams(params, apiUrl(QStringLiteral("/password.json")), {}, startFn, endFn,
                       successFn, failureFn);
}

void NetWorkHelper::unlockPswWithphone_number(const QString &phoneNumber, const QString &captcha,
                                              const QString &pendingPhoneNumberToken,
                                              const StartFn &startFn, const EndFn &endFn,
                                              const SuccessFn &successFn,
                                              const FailureFn &failureFn)
{
    RequestParams params;
    params.insert(QStringLiteral("account[phone_number]"), phoneNumber);
    params.insert(QStringLiteral("account[captcha]"), captcha);
    params.insert(QStringLiteral("account[pending_phone_number_token]"), pendingPhoneNumberToken);
    responseWithParams(params, apiUrl(QStringLiteral("/unlock.json")), {}, startFn, endFn,
                       successFn, failureFn);
}

void NetWorkHelper::findPswWithemail(const QString &email, const QString &captcha,
                                     const QString &isUnlock, const StartFn &startFn,
                                     const EndFn &endFn, const SuccessFn &successFn,
                                     const FailureFn &failureFn)
{
    RequestParams params;
    params.insert(QStringLiteral("account[email]"), email);
    params.insert(QStringLiteral("account[captcha]"), captcha);
    const QString path = QStringLiteral("/%1.json").arg(passwordOrUnlock(isUnlock));
    responseWithParams(params, apiUrl(path), {}, startFn, endFn, successFn, failureFn);
}

void NetWorkHelper::checkingMobileWithPhone_number(const QString &phoneNumber,
                                                   const QString &pendingPhoneNumberToken,
                                                   const QString &currentPassword,
                                                   const StartFn &startFn, const EndFn &endFn,
                                                   const SuccessFn &successFn,
                                                   const FailureFn &failureFn)
{
    RequestParams params;
    appendToken(params, TokenRule::Always);
    params.insert(QStringLiteral("account[phone_number]"), phoneNumber);
    params.insert(QStringLiteral("account[pending_phone_number_token]"), pendingPhoneNumberToken);
    params.insert(QStringLiteral("account[current_password]"), currentPassword);
    responseWithParams(params, apiUrl(QStringLiteral("/setting/check_phone_number.json")), {},
                       startFn, endFn, successFn, failureFn);
}

void NetWorkHelper::bindingMobileWithPhone_number(const QString &phoneNumber,
                                                  const QString &pendingPhoneNumberToken,
                                                  const QString &currentPassword,
                                                  const StartFn &startFn, const EndFn &endFn,
                                                  const SuccessFn &successFn,
                                                  const FailureFn &failureFn)
{
    RequestParams params;
    appendToken(params, TokenRule::Always);
    params.insert(QStringLiteral("account[phone_number]"), phoneNumber);
    params.insert(QStringLiteral("account[pending_phone_number_token]"), pendingPhoneNumberToken);
    params.insert(QStringLiteral("account[current_password]"), currentPassword);
    putWithParams(params, apiUrl(QStringLiteral("/setting/phone_number.json")), startFn, endFn,
                  successFn, failureFn);
}

void NetWorkHelper::bindingEmailWithEmail(const QString &email, const QString &currentPassword,
                                          const StartFn &startFn, const EndFn &endFn,
                                          const SuccessFn &successFn, const FailureFn &failureFn)
{
    RequestParams params;
    appendToken(params, TokenRule::Always);
    params.insert(QStringLiteral("account[email]"), email);
    params.insert(QStringLiteral("account[current_password]"), currentPassword);
    putWithParams(params, apiUrl(QStringLiteral("/setting/email.json")), startFn, endFn, successFn,
                  failureFn);
}

void NetWorkHelper::modifyPasswordWithOldPass(const QString &oldPass, const QString &newPass,
                                              const QString &newPassToo, const StartFn &startFn,
                                              const EndFn &endFn, const SuccessFn &successFn,
                                              const FailureFn &failureFn)
{
    RequestParams params;
    appendToken(params, TokenRule::Always);
    params.insert(QStringLiteral("account[current_password]"), oldPass);
    params.insert(QStringLiteral("account[password]"), newPass);
    params.insert(QStringLiteral("account[password_confirmation]"), newPassToo);
    putWithParams(params, apiUrl(QStringLiteral("/setting/password.json")), startFn, endFn,
                  successFn, failureFn);
}

void NetWorkHelper::getUserInfoWithStartFn(const StartFn &startFn, const EndFn &endFn,
                                           const SuccessFn &successFn, const FailureFn &failureFn)
{
    getWithParams({}, apiUrl(QStringLiteral("/setting/info.json")), startFn, endFn, successFn,
                  failureFn);
}

void NetWorkHelper::modifyUserInfoWithNick_name(const QString &nickName, const QString &gender,
                                                const QString &avatar, const StartFn &startFn,
                                                const EndFn &endFn, const SuccessFn &successFn,
                                                const FailureFn &failureFn)
{
    RequestParams params;
    appendToken(params, TokenRule::Always);
    params.insert(QStringLiteral("account[nick_name]"), nickName);
    params.insert(QStringLiteral("account[gender]"), gender);
    params.insert(QStringLiteral("account[avatar]"), avatar);
    putWithParams(params, apiUrl(QStringLiteral("/setting/info.json")), startFn, endFn, successFn,
                  failureFn);
}
