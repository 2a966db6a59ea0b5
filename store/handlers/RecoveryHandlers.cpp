#include "StoreContext.h"
#include "accounts/AccountFields.h"
#include "accounts/Accounts.h"
#include "accounts/MailTokens.h"
#include "accounts/SmsCodes.h"
#include "core/Crypto.h"
#include "handlers/Handlers.h"
#include "http/ApiError.h"
#include "http/Exchange.h"

// SMS codes, password recovery and unlocking, by phone and by mail.
namespace {

void requireCaptchaUnlessSignedIn(Exchange &exchange, const QString &answer, const QString &field,
                                  const QString &phone)
{
    const Session *session = exchange.session();
    if (session && session->signedIn())
        return;
    if (exchange.checkCaptcha(answer, phone) != Sessions::CaptchaCheck::Passed)
        AccountFields::refuseCaptcha(field);
}

void sendCode(Exchange &exchange, const QString &phone, const QString &purpose)
{
    exchange.store().database().write([&](SQLite::Database &db) {
        const qint64 wait = SmsCodes::waitBeforeNext(db, phone, exchange.now());
        if (wait > 0)
            throw ApiError::error(429, QStringLiteral("短信发送过于频繁，请%1秒后再试").arg(wait));
        SmsCodes::send(db, exchange.store().outbox(), phone, purpose, exchange.now());
    });
    exchange.success(QJsonObject{{QStringLiteral("phone_number"), phone},
                                 {QStringLiteral("expires_in"), SmsCodes::kLifetimeSeconds},
                                 {QStringLiteral("resend_in"), SmsCodes::kResendSeconds}});
}

QString checkedPhone(Exchange &exchange, const std::string &field, const QString &errorField)
{
    const QString phone = exchange.field(field).trimmed();
    FieldErrors errors;
    AccountFields::checkPhoneNumber(errors, errorField, phone);
    errors.raiseIfAny();
    return phone;
}

Account registeredAccount(Exchange &exchange, bool byEmail, const QString &login)
{
    const auto account = exchange.store().database().read([&](SQLite::Database &db) {
        return byEmail ? Accounts::byEmail(db, login) : Accounts::byPhone(db, login);
    });
    if (account)
        return *account;
    if (byEmail)
        throw ApiError::fail(QStringLiteral("email"), QStringLiteral("该邮箱尚未注册，请检查"),
                             QStringLiteral("邮箱"));
    throw ApiError::fail(QStringLiteral("phone_number"), QStringLiteral("该号码尚未注册，请检查"),
                         QStringLiteral("手机号"));
}

// POST /phone_number_tokens.json: a code for registering, binding or checking a number.
void phoneNumberToken(Exchange &exchange)
{
    const QString phone = checkedPhone(exchange, "phone_number", QStringLiteral("phone_number"));
    requireCaptchaUnlessSignedIn(exchange, exchange.field("captcha"), QStringLiteral("captcha"),
                                 phone);
    const Session *session = exchange.session();
    const qint64 self = session ? session->accountId : 0;
    const auto owner = exchange.store().database().read(
            [&](SQLite::Database &db) { return Accounts::byPhone(db, phone); });
    if (owner && owner->id != self) {
        throw ApiError::fail(QStringLiteral("phone_number"),
                             self > 0 ? QStringLiteral("该号码已绑定其他账号，请更换")
                                      : QStringLiteral("该号码已注册，请直接登录或更换"),
                             QStringLiteral("手机号"));
    }
    sendCode(exchange, phone, SmsCodes::kPhone);
}

// POST /password/token.json and /unlock/token.json
void recoveryToken(Exchange &exchange, const QString &purpose)
{
    const QString phone = checkedPhone(exchange, "phone_number", QStringLiteral("phone_number"));
    requireCaptchaUnlessSignedIn(exchange, exchange.field("captcha"), QStringLiteral("captcha"),
                                 phone);
    registeredAccount(exchange, false, phone);
    sendCode(exchange, phone, purpose);
}

void mailLink(Exchange &exchange, const QString &purpose)
{
    const QString email = exchange.field("account[email]").trimmed();
    FieldErrors errors;
    AccountFields::checkEmail(errors, QStringLiteral("email"), email);
    AccountFields::requirePresent(errors, QStringLiteral("captcha"),
                                  exchange.field("account[captcha]"), QStringLiteral("图片验证码"));
    errors.raiseIfAny();
    if (exchange.checkCaptcha(exchange.field("account[captcha]"), email)
        != Sessions::CaptchaCheck::Passed)
        AccountFields::refuseCaptcha(QStringLiteral("captcha"));
    const Account account = registeredAccount(exchange, true, email);

    const bool reset = purpose == MailTokens::kPassword;
    exchange.store().database().write([&](SQLite::Database &db) {
        const QByteArray token = MailTokens::issue(db, account.id, purpose, exchange.now());
        const QString link = exchange.mailBaseUrl()
                             + (reset ? QStringLiteral("/account/password/edit?token=")
                                      : QStringLiteral("/account/unlock?token="))
                             + QString::fromLatin1(token);
        exchange.store().outbox().mail(
                db, account.email,
                reset ? QStringLiteral("重置您的 Tarvel 密码")
                      : QStringLiteral("解锁您的 Tarvel 账号"),
                QStringLiteral("请在24小时内打开下面的链接%1：\n%2")
                        .arg(reset ? QStringLiteral("设置新密码") : QStringLiteral("解锁账号"),
                             link),
                link, exchange.now());
    });
    exchange.success(QJsonObject{{QStringLiteral("email"), account.email}});
}

// Runs `apply` with a valid code of `purpose`; refuses the code after the counted try is saved.
template<typename Apply>
void withSmsCode(Exchange &exchange, const QString &phone, const QString &purpose, Apply apply)
{
    const QString code = exchange.field("account[pending_phone_number_token]");
    const auto check = exchange.store().database().write([&](SQLite::Database &db) {
        const auto check = SmsCodes::consume(db, phone, purpose, code, exchange.now());
        if (check == SmsCodes::Check::Passed)
            apply(db);
        return check;
    });
    if (check != SmsCodes::Check::Passed)
        AccountFields::refuseSmsCode(QStringLiteral("pending_phone_number_token"));
}

// POST /password.json
void resetPassword(Exchange &exchange)
{
    if (exchange.hasField("account[email]"))
        return mailLink(exchange, MailTokens::kPassword);
    const QString phone
            = checkedPhone(exchange, "account[phone_number]", QStringLiteral("phone_number"));
    const QString password = exchange.field("account[password]");
    FieldErrors errors;
    AccountFields::requirePresent(errors, QStringLiteral("pending_phone_number_token"),
                                  exchange.field("account[pending_phone_number_token]"),
                                  QStringLiteral("短信验证码"));
    AccountFields::checkNewPassword(errors, password,
                                    exchange.field("account[password_confirmation]"), true);
    errors.raiseIfAny();
    const Account account = registeredAccount(exchange, false, phone);
    const QString hash = Crypto::hashPassword(password);
    withSmsCode(exchange, phone, SmsCodes::kPassword, [&](SQLite::Database &db) {
        Accounts::setPasswordHash(db, account.id, hash);
        Accounts::clearSignInFailures(db, account.id);
        Sessions::removeOthers(db, account.id, QByteArray());
    });
    exchange.success(QJsonObject{{QStringLiteral("phone_number"), phone}});
}

// POST /unlock.json
void unlock(Exchange &exchange)
{
    if (exchange.hasField("account[email]"))
        return mailLink(exchange, MailTokens::kUnlock);
    const QString phone
            = checkedPhone(exchange, "account[phone_number]", QStringLiteral("phone_number"));
    const Account account = registeredAccount(exchange, false, phone);
    withSmsCode(exchange, phone, SmsCodes::kUnlock,
                [&](SQLite::Database &db) { Accounts::clearSignInFailures(db, account.id); });
    exchange.success(QJsonObject{{QStringLiteral("phone_number"), phone}});
}

} // namespace

void Handlers::installRecovery(Router &router)
{
    router.add("POST", "/phone_number_tokens.json", phoneNumberToken);
    router.add("POST", "/password/token.json",
               [](Exchange &exchange) { recoveryToken(exchange, SmsCodes::kPassword); });
    router.add("POST", "/unlock/token.json",
               [](Exchange &exchange) { recoveryToken(exchange, SmsCodes::kUnlock); });
    router.add("POST", "/password.json", resetPassword);
    router.add("POST", "/unlock.json", unlock);
}
