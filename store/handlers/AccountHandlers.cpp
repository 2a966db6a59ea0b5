#include "StoreContext.h"
#include "accounts/AccountFields.h"
#include "accounts/Accounts.h"
#include "accounts/MailTokens.h"
#include "accounts/SmsCodes.h"
#include "core/Crypto.h"
#include "handlers/Handlers.h"
#include "http/ApiError.h"
#include "http/Exchange.h"
#include "pictures/PictureFactory.h"
#include "pictures/PictureStore.h"

#include <httplib.h>

#include <QUrl>

namespace {

const QString kCaptchaAlphabet = QStringLiteral("ABCDEFGHJKMNPQRSTUVWXYZ23456789");

ApiError lockedError()
{
    return ApiError::error(423, QStringLiteral("authentication.failure.locked"))
            .with(QStringLiteral("code"), 601);
}

// A wrong password costs the same time for an unknown account as for a known one.
void spendVerificationTime(const QString &password)
{
    static const QString dummy = Crypto::hashPassword(QStringLiteral("tarvel-timing-equaliser"));
    Crypto::verifyPassword(dummy, password);
}

QString defaultNickName(const QString &phoneNumber, const QString &email)
{
    if (!phoneNumber.isEmpty())
        return QStringLiteral("玩家") + phoneNumber.right(4);
    return email.section(QLatin1Char('@'), 0, 0).left(AccountFields::kNickNameMax);
}

void signIn(Exchange &exchange)
{
    const QString login = exchange.field("account[login_name]").trimmed();
    const QString password = exchange.field("account[password]");
    FieldErrors errors;
    AccountFields::requirePresent(errors, QStringLiteral("login_name"), login,
                                  QStringLiteral("账号"));
    if (password.isEmpty())
        errors.add(QStringLiteral("password"), QStringLiteral("请输入"), QStringLiteral("密码"));
    errors.raiseIfAny();

    Database &database = exchange.store().database();
    const auto account
            = database.read([&](SQLite::Database &db) { return Accounts::byLogin(db, login); });
    if (!account) {
        spendVerificationTime(password);
        throw ApiError::error(401, QStringLiteral("账号或密码错误"));
    }
    // The try is counted before the (slow) password check, in one step with the lock test.
    const int tries = database.write(
            [&](SQLite::Database &db) { return Accounts::reserveSignInTry(db, account->id); });
    if (tries == 0)
        throw lockedError();
    if (!Crypto::verifyPassword(account->passwordHash, password)) {
        database.write([&](SQLite::Database &db) {
            Accounts::recordFailedSignIn(db, account->id, tries, exchange.now());
        });
        if (tries >= Accounts::kSignInAttempts)
            throw lockedError();
        const int left = Accounts::kSignInAttempts - tries;
        throw ApiError::error(
                401, left > 2 ? QStringLiteral("账号或密码错误")
                              : QStringLiteral("账号或密码错误，再输错%1次账号将被锁定").arg(left));
    }
    if (!database.write(
                [&](SQLite::Database &db) { return Accounts::resetSignInTries(db, account->id); }))
        throw lockedError();
    if (!account->confirmed)
        throw ApiError::error(403, QStringLiteral("authentication.failure.unconfirmed"));

    QJsonObject user = account->userJson();
    user.insert(QStringLiteral("token"), exchange.renewSession(account->id));
    exchange.refreshCartCookie(account->id);
    exchange.success(user);
}

void checkSignUpFields(Exchange &exchange, bool byEmail, const QString &login)
{
    FieldErrors errors;
    if (byEmail) {
        AccountFields::checkEmail(errors, QStringLiteral("email"), login);
    } else {
        AccountFields::checkPhoneNumber(errors, QStringLiteral("phone_number"), login);
        AccountFields::requirePresent(errors, QStringLiteral("pending_phone_number_token"),
                                      exchange.field("account[pending_phone_number_token]"),
                                      QStringLiteral("短信验证码"));
    }
    AccountFields::checkNewPassword(errors, exchange.field("account[password]"),
                                    exchange.field("account[password_confirmation]"), true);
    AccountFields::requirePresent(errors, QStringLiteral("captcha"),
                                  exchange.field("account[captcha]"), QStringLiteral("图片验证码"));
    errors.raiseIfAny();
}

void refuseTaken(bool byEmail)
{
    if (byEmail)
        throw ApiError::fail(QStringLiteral("email"),
                             QStringLiteral("该邮箱已注册，请直接登录或更换"),
                             QStringLiteral("邮箱"));
    throw ApiError::fail(QStringLiteral("phone_number"),
                         QStringLiteral("该号码已注册，请直接登录或更换"),
                         QStringLiteral("手机号"));
}

void signUp(Exchange &exchange)
{
    const bool byEmail = exchange.hasField("account[email]");
    const QString login
            = exchange.field(byEmail ? "account[email]" : "account[phone_number]").trimmed();
    checkSignUpFields(exchange, byEmail, login);

    Database &database = exchange.store().database();
    auto taken = [&](SQLite::Database &db) {
        return byEmail ? Accounts::byEmail(db, login).has_value()
                       : Accounts::byPhone(db, login).has_value();
    };
    // The captcha first: without it nobody learns whether a number or address is registered.
    if (exchange.checkCaptcha(exchange.field("account[captcha]"), login)
        != Sessions::CaptchaCheck::Passed)
        AccountFields::refuseCaptcha(QStringLiteral("captcha"));
    if (database.read(taken))
        refuseTaken(byEmail);

    const QString hash = Crypto::hashPassword(exchange.field("account[password]"));
    const QString phone = byEmail ? QString() : login;
    const QString email = byEmail ? login : QString();
    const QString code = exchange.field("account[pending_phone_number_token]");
    qint64 accountId = 0;
    const auto check = database.write([&](SQLite::Database &db) {
        if (!byEmail) {
            const auto check = SmsCodes::consume(db, phone, SmsCodes::kPhone, code, exchange.now());
            if (check != SmsCodes::Check::Passed)
                return check;
        }
        if (taken(db))
            refuseTaken(byEmail);
        accountId = Accounts::create(db, phone, email, hash, defaultNickName(phone, email),
                                     !byEmail, exchange.now());
        if (byEmail) {
            const QByteArray token
                    = MailTokens::issue(db, accountId, MailTokens::kActivate, exchange.now());
            const QString link = exchange.mailBaseUrl() + QStringLiteral("/account/activate?token=")
                                 + QString::fromLatin1(token);
            exchange.store().outbox().mail(
                    db, email, QStringLiteral("激活您的 Tarvel 账号"),
                    QStringLiteral("欢迎加入 Tarvel！请在24小时内打开下面的链接激活账号：\n%1")
                            .arg(link),
                    link, exchange.now());
        }
        return SmsCodes::Check::Passed;
    });
    if (check != SmsCodes::Check::Passed)
        AccountFields::refuseSmsCode(QStringLiteral("pending_phone_number_token"));
    exchange.success(QJsonObject{{QStringLiteral("account_id"), accountId},
                                 {QStringLiteral("phone_number"), phone},
                                 {QStringLiteral("email"), email},
                                 {QStringLiteral("confirmed"), !byEmail}});
}

void captcha(Exchange &exchange)
{
    const Session &session = exchange.ensureSession();
    const QString text = Crypto::randomFrom(kCaptchaAlphabet, 4);
    exchange.store().database().write([&](SQLite::Database &db) {
        Sessions::setCaptcha(db, session.idHash, text, exchange.now());
    });
    exchange.response().set_header("Cache-Control", "no-store");
    exchange.sendBody(200, PictureStore::encode(PictureFactory::captcha(text), "PNG", -1),
                      "image/png");
}

} // namespace

void Handlers::installAccount(Router &router)
{
    router.add("POST", "/sign_in.json", signIn);
    router.add("POST", "/sign_up.json", signUp);
    router.add("GET", "/captcha", captcha);
}
