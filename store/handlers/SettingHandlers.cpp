#include "StoreContext.h"
#include "accounts/AccountFields.h"
#include "accounts/Accounts.h"
#include "accounts/MailTokens.h"
#include "accounts/SmsCodes.h"
#include "accounts/UploadCredentials.h"
#include "core/Crypto.h"
#include "handlers/Handlers.h"
#include "http/ApiError.h"
#include "http/Exchange.h"

#include <QRegularExpression>

// The signed-in user's settings: phone number, e-mail, password and profile.
namespace {

// Changing a bound number needs the old one checked in this session within this time.
constexpr qint64 kPhoneCheckSeconds = 15 * 60;

Account currentAccount(Exchange &exchange, const Session &session)
{
    const auto account = exchange.store().database().read(
            [&](SQLite::Database &db) { return Accounts::byId(db, session.accountId); });
    if (!account)
        throw ApiError::notSignedIn();
    return *account;
}

void requireCurrentPassword(Exchange &exchange, const Account &account)
{
    const QString password = exchange.field("account[current_password]");
    if (password.isEmpty())
        throw ApiError::fail(QStringLiteral("current_password"), QStringLiteral("请输入"),
                             QStringLiteral("当前密码"));
    if (!Crypto::verifyPassword(account.passwordHash, password))
        AccountFields::refuseCurrentPassword();
}

struct PhoneForm
{
    QString phone;
    QString code;
};

PhoneForm phoneForm(Exchange &exchange)
{
    PhoneForm form{exchange.field("account[phone_number]").trimmed(),
                   exchange.field("account[pending_phone_number_token]")};
    FieldErrors errors;
    AccountFields::checkPhoneNumber(errors, QStringLiteral("phone_number"), form.phone);
    AccountFields::requirePresent(errors, QStringLiteral("pending_phone_number_token"), form.code,
                                  QStringLiteral("短信验证码"));
    errors.raiseIfAny();
    return form;
}

template<typename Apply>
void withPhoneCode(Exchange &exchange, const PhoneForm &form, Apply apply)
{
    const auto check = exchange.store().database().write([&](SQLite::Database &db) {
        const auto check
                = SmsCodes::consume(db, form.phone, SmsCodes::kPhone, form.code, exchange.now());
        if (check == SmsCodes::Check::Passed)
            apply(db);
        return check;
    });
    if (check != SmsCodes::Check::Passed)
        AccountFields::refuseSmsCode(QStringLiteral("pending_phone_number_token"));
}

// POST /setting/check_phone_number.json: proves the user still has the bound number.
void checkPhoneNumber(Exchange &exchange)
{
    const Session &session = exchange.requireToken();
    const Account account = currentAccount(exchange, session);
    const PhoneForm form = phoneForm(exchange);
    if (form.phone != account.phoneNumber)
        throw ApiError::fail(QStringLiteral("phone_number"),
                             QStringLiteral("与当前绑定的号码不一致，请检查"),
                             QStringLiteral("手机号"));
    requireCurrentPassword(exchange, account);
    withPhoneCode(exchange, form, [&](SQLite::Database &db) {
        Sessions::markPhoneChecked(db, session.idHash, exchange.now());
    });
    exchange.success(QJsonObject{{QStringLiteral("phone_number"), form.phone}});
}

// PUT /setting/phone_number.json
void bindPhoneNumber(Exchange &exchange)
{
    const Session &session = exchange.requireToken();
    const Account account = currentAccount(exchange, session);
    const PhoneForm form = phoneForm(exchange);
    if (form.phone == account.phoneNumber)
        throw ApiError::error(409, QStringLiteral("新号码与当前绑定的号码相同"));
    if (!account.phoneNumber.isEmpty()
        && exchange.now() - session.phoneCheckedAt > kPhoneCheckSeconds)
        throw ApiError::error(403, QStringLiteral("请先验证当前绑定的手机号"));
    requireCurrentPassword(exchange, account);
    withPhoneCode(exchange, form, [&](SQLite::Database &db) {
        if (const auto owner = Accounts::byPhone(db, form.phone); owner && owner->id != account.id)
            throw ApiError::fail(QStringLiteral("phone_number"),
                                 QStringLiteral("该号码已绑定其他账号，请更换"),
                                 QStringLiteral("手机号"));
        Accounts::setPhoneNumber(db, account.id, form.phone);
    });
    Account changed = account;
    changed.phoneNumber = form.phone;
    exchange.success(changed.userJson());
}

// PUT /setting/email.json
void bindEmail(Exchange &exchange)
{
    const Session &session = exchange.requireToken();
    const Account account = currentAccount(exchange, session);
    const QString email = exchange.field("account[email]").trimmed();
    FieldErrors errors;
    AccountFields::checkEmail(errors, QStringLiteral("email"), email);
    errors.raiseIfAny();
    requireCurrentPassword(exchange, account);
    exchange.store().database().write([&](SQLite::Database &db) {
        if (const auto owner = Accounts::byEmail(db, email); owner && owner->id != account.id)
            throw ApiError::fail(QStringLiteral("email"),
                                 QStringLiteral("该邮箱已被其他账号使用，请更换"),
                                 QStringLiteral("邮箱"));
        // The address is bound only once the link mailed to it is followed: whoever binds it
        // must be able to read its mail.
        Accounts::setPendingEmail(db, account.id, email);
        MailTokens::revoke(db, account.id, MailTokens::kBindEmail, exchange.now());
        const QByteArray token
                = MailTokens::issue(db, account.id, MailTokens::kBindEmail, exchange.now());
        const QString link = exchange.mailBaseUrl()
                             + QStringLiteral("/account/email/confirm?token=")
                             + QString::fromLatin1(token);
        exchange.store().outbox().mail(
                db, email, QStringLiteral("确认绑定邮箱"),
                QStringLiteral(
                        "您的 Tarvel 账号%1申请绑定此邮箱，请在24小时内打开下面的链接确认：\n%2")
                        .arg(account.nickName, link),
                link, exchange.now());
    });
    // The request itself succeeds (the app says "绑定成功"); the profile keeps its address until
    // the link is followed.
    QJsonObject profile = account.userJson();
    profile.insert(QStringLiteral("pending_email"), email);
    exchange.success(profile);
}

// PUT /setting/password.json
void changePassword(Exchange &exchange)
{
    const Session &session = exchange.requireToken();
    const Account account = currentAccount(exchange, session);
    const QString password = exchange.field("account[password]");
    FieldErrors errors;
    AccountFields::checkNewPassword(errors, password,
                                    exchange.field("account[password_confirmation]"), true);
    errors.raiseIfAny();
    requireCurrentPassword(exchange, account);
    const QString hash = Crypto::hashPassword(password);
    exchange.store().database().write([&](SQLite::Database &db) {
        Accounts::setPasswordHash(db, account.id, hash);
        Sessions::removeOthers(db, account.id, session.idHash);
    });
    exchange.success(QJsonObject{});
}

// GET /setting/info.json: the profile and a fresh upload credential.
void info(Exchange &exchange)
{
    const Session &session = exchange.requireSignedIn();
    const Account account = currentAccount(exchange, session);
    QJsonObject data = account.userJson();
    data.insert(QStringLiteral("qiniu_params"),
                exchange.store().database().write([&](SQLite::Database &db) {
                    return UploadCredentials::issue(db, account.id, session.token, exchange.now());
                }));
    exchange.success(data);
}

// An avatar is the default picture, the one the account has, or a picture the account uploaded
// to this store, by its path or by its address under this store's base.
bool isAvatarAddress(Exchange &exchange, const Account &account, const QString &avatar)
{
    if (avatar == account.avatar || avatar == Accounts::kDefaultAvatar)
        return true;
    static const QRegularExpression upload(
            QStringLiteral("^(.*)/uploads/([A-Za-z0-9_\\-]{1,64}\\.(?:jpg|png))$"));
    const QRegularExpressionMatch match = upload.match(avatar);
    if (!match.hasMatch())
        return false;
    const QString base = match.captured(1);
    if (!base.isEmpty() && base != exchange.baseUrl() && base != exchange.mailBaseUrl())
        return false;
    return exchange.store().database().read([&](SQLite::Database &db) {
        SQLite::Statement query(db, "SELECT 1 FROM uploads WHERE name = ? AND account_id = ?");
        Sql::bind(query, 1, match.captured(2));
        query.bind(2, static_cast<int64_t>(account.id));
        return query.executeStep();
    });
}

// PUT /setting/info.json
void changeInfo(Exchange &exchange)
{
    const Session &session = exchange.requireToken();
    const Account account = currentAccount(exchange, session);
    const QString nickName = exchange.field("account[nick_name]").trimmed();
    const QString genderText = exchange.field("account[gender]").trimmed();
    QString avatar = exchange.field("account[avatar]").trimmed();
    FieldErrors errors;
    if (AccountFields::requirePresent(errors, QStringLiteral("nick_name"), nickName,
                                      QStringLiteral("昵称"))
        && (nickName.size() > AccountFields::kNickNameMax
            || nickName.contains(QRegularExpression(QStringLiteral("[\\x00-\\x1f\\x7f]")))))
        errors.add(QStringLiteral("nick_name"), QStringLiteral("请输入1到20个字的"),
                   QStringLiteral("昵称"));
    if (genderText != QLatin1String("0") && genderText != QLatin1String("1")
        && genderText != QLatin1String("2"))
        errors.add(QStringLiteral("gender"), QStringLiteral("请选择正确的"),
                   QStringLiteral("性别"));
    if (avatar.isEmpty())
        avatar = Accounts::kDefaultAvatar;
    else if (!isAvatarAddress(exchange, account, avatar))
        errors.add(QStringLiteral("avatar"), QStringLiteral("请重新上传"), QStringLiteral("头像"));
    errors.raiseIfAny();
    exchange.store().database().write([&](SQLite::Database &db) {
        Accounts::setProfile(db, account.id, nickName, genderText.toInt(), avatar);
    });
    Account changed = account;
    changed.nickName = nickName;
    changed.gender = genderText.toInt();
    changed.avatar = avatar;
    exchange.success(changed.userJson());
}

} // namespace

void Handlers::installSetting(Router &router)
{
    router.add("POST", "/setting/check_phone_number.json", checkPhoneNumber);
    router.add("PUT", "/setting/phone_number.json", bindPhoneNumber);
    router.add("PUT", "/setting/email.json", bindEmail);
    router.add("PUT", "/setting/password.json", changePassword);
    router.add("GET", "/setting/info.json", info);
    router.add("PUT", "/setting/info.json", changeInfo);
}
