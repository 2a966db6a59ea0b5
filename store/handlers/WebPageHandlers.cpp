#include "StoreContext.h"
#include "accounts/AccountFields.h"
#include "accounts/Accounts.h"
#include "accounts/MailTokens.h"
#include "core/Crypto.h"
#include "core/Money.h"
#include "handlers/Handlers.h"
#include "http/ApiError.h"
#include "http/Exchange.h"

// The few pages a browser opens: shared game pages and the links of account mails.
namespace {

QByteArray page(const QString &title, const QString &body)
{
    return QStringLiteral(
                   "<!DOCTYPE html><html lang=\"zh-CN\"><head><meta charset=\"utf-8\">"
                   "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
                   "<title>%1 - Tarvel</title><style>body{font-family:sans-serif;max-width:640px;"
                   "margin:2em auto;padding:0 1em;color:#222}img{max-width:100%}"
                   "input{display:block;margin:.5em 0;padding:.5em;width:100%}</style></head>"
                   "<body><h1>%1</h1>%2</body></html>")
            .arg(title.toHtmlEscaped(), body)
            .toUtf8();
}

void sendPage(Exchange &exchange, int status, const QString &title, const QString &body)
{
    exchange.sendBody(status, page(title, body), "text/html; charset=utf-8");
}

void home(Exchange &exchange)
{
    sendPage(exchange, 200, QStringLiteral("Tarvel 游戏商城"),
             QStringLiteral("<p>商城服务正在运行。接口说明见 store/API.md。</p>"));
}

void productPage(Exchange &exchange)
{
    const Product *product = exchange.store().catalog().find(exchange.routeId("id"));
    if (!product)
        return sendPage(exchange, 404, QStringLiteral("未找到该游戏"),
                        QStringLiteral("<p>这个游戏不存在。</p>"));
    sendPage(exchange, 200, product->title,
             QStringLiteral("<p>%1</p><img src=\"%2\" alt=\"\"><p>¥%3</p>%4")
                     .arg(product->aliasName.toHtmlEscaped(),
                          Catalog::coverUrl(exchange.baseUrl(), product->id).toHtmlEscaped(),
                          Money::text(product->salePrice), product->rawSummary));
}

QByteArray tokenOf(Exchange &exchange)
{
    return exchange.field("token").trimmed().toLatin1();
}

void expiredLink(Exchange &exchange)
{
    sendPage(exchange, 410, QStringLiteral("链接无效"),
             QStringLiteral("<p>这个链接无效或已过期，请在 App 中重新发送邮件。</p>"));
}

void activate(Exchange &exchange)
{
    const QByteArray token = tokenOf(exchange);
    const bool done = exchange.store().database().write([&](SQLite::Database &db) {
        const auto account = MailTokens::consume(db, token, MailTokens::kActivate, exchange.now());
        if (account)
            Accounts::confirm(db, *account);
        return account.has_value();
    });
    if (!done)
        return expiredLink(exchange);
    sendPage(exchange, 200, QStringLiteral("账号已激活"),
             QStringLiteral("<p>现在可以在 App 中登录了。</p>"));
}

void unlockPage(Exchange &exchange)
{
    const QByteArray token = tokenOf(exchange);
    const bool done = exchange.store().database().write([&](SQLite::Database &db) {
        const auto account = MailTokens::consume(db, token, MailTokens::kUnlock, exchange.now());
        if (account)
            Accounts::clearSignInFailures(db, *account);
        return account.has_value();
    });
    if (!done)
        return expiredLink(exchange);
    sendPage(exchange, 200, QStringLiteral("账号已解锁"),
             QStringLiteral("<p>现在可以在 App 中登录了。</p>"));
}

void confirmEmail(Exchange &exchange)
{
    const QByteArray token = tokenOf(exchange);
    const bool done = exchange.store().database().write([&](SQLite::Database &db) {
        const auto account = MailTokens::consume(db, token, MailTokens::kBindEmail, exchange.now());
        return account && Accounts::confirmPendingEmail(db, *account);
    });
    if (!done)
        return expiredLink(exchange);
    sendPage(exchange, 200, QStringLiteral("邮箱已绑定"),
             QStringLiteral("<p>现在可以用这个邮箱登录 App 了。</p>"));
}

QString passwordForm(const QByteArray &token, const QString &problem)
{
    return QStringLiteral(
                   "%1<form method=\"post\" action=\"/account/password/edit\">"
                   "<input type=\"hidden\" name=\"token\" value=\"%2\">"
                   "<input type=\"password\" name=\"password\" placeholder=\"新密码（至少8位）\">"
                   "<input type=\"password\" name=\"password_confirmation\" "
                   "placeholder=\"确认新密码\">"
                   "<input type=\"submit\" value=\"设置新密码\"></form>")
            .arg(problem.isEmpty() ? QString()
                                   : QStringLiteral("<p style=\"color:#c00\">%1</p>")
                                             .arg(problem.toHtmlEscaped()),
                 QString::fromLatin1(token).toHtmlEscaped());
}

void passwordEdit(Exchange &exchange)
{
    const QByteArray token = tokenOf(exchange);
    const bool valid = exchange.store().database().read([&](SQLite::Database &db) {
        return MailTokens::peek(db, token, MailTokens::kPassword, exchange.now()).has_value();
    });
    if (!valid)
        return expiredLink(exchange);
    sendPage(exchange, 200, QStringLiteral("设置新密码"), passwordForm(token, QString()));
}

void passwordUpdate(Exchange &exchange)
{
    const QByteArray token = tokenOf(exchange);
    const QString password = exchange.field("password");
    if (password.size() < AccountFields::kPasswordMin
        || password.size() > AccountFields::kPasswordMax)
        return sendPage(exchange, 422, QStringLiteral("设置新密码"),
                        passwordForm(token, QStringLiteral("密码需要8到64位")));
    if (exchange.field("password_confirmation") != password)
        return sendPage(exchange, 422, QStringLiteral("设置新密码"),
                        passwordForm(token, QStringLiteral("两次输入的密码不一致")));
    const QString hash = Crypto::hashPassword(password);
    const bool done = exchange.store().database().write([&](SQLite::Database &db) {
        const auto account = MailTokens::consume(db, token, MailTokens::kPassword, exchange.now());
        if (account) {
            Accounts::setPasswordHash(db, *account, hash);
            Accounts::clearSignInFailures(db, *account);
            Sessions::removeOthers(db, *account, QByteArray());
        }
        return account.has_value();
    });
    if (!done)
        return expiredLink(exchange);
    sendPage(exchange, 200, QStringLiteral("密码已更新"),
             QStringLiteral("<p>请在 App 中用新密码登录。</p>"));
}

} // namespace

void Handlers::installWebPages(Router &router)
{
    router.add("GET", "/", home);
    router.add("GET", "/products/:id", productPage);
    router.add("GET", "/account/activate", activate);
    router.add("GET", "/account/unlock", unlockPage);
    router.add("GET", "/account/email/confirm", confirmEmail);
    router.add("GET", "/account/password/edit", passwordEdit);
    router.add("POST", "/account/password/edit", passwordUpdate);
    installHelpPages(router);
}
