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

// The pages the links of account mails open: one card with a mark saying how it went, a heading,
// and what to do next (or the new-password form).
enum class Outcome { Done, Failed, Form };

QByteArray linkPage(const QString &title, const QString &body, Outcome outcome)
{
    const QString mark = outcome == Outcome::Done ? QStringLiteral("<div class=\"mark ok\">✓</div>")
                         : outcome == Outcome::Failed
                                 ? QStringLiteral("<div class=\"mark bad\">!</div>")
                                 : QString();
    return QStringLiteral(
                   "<!DOCTYPE html><html lang=\"zh-CN\"><head><meta charset=\"utf-8\">"
                   "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
                   "<title>%1 - Tarvel</title><style>"
                   "body{margin:0;font-family:'Noto Sans CJK SC',sans-serif;color:#222;"
                   "background:linear-gradient(#3c66b7,#1d3566);min-height:100vh;"
                   "display:flex;align-items:center;justify-content:center}"
                   ".card{background:#fff;border-radius:10px;padding:2em "
                   "1.5em;width:min(360px,86vw);"
                   "text-align:center;box-shadow:0 8px 24px rgba(0,0,0,.25)}"
                   "h1{font-size:1.3em;margin:.4em 0}p{color:#666;line-height:1.6}"
                   ".mark{width:56px;height:56px;border-radius:50%;margin:0 auto;color:#fff;"
                   "font-size:32px;line-height:56px}.ok{background:#4cd964}.bad{background:#ff3b30}"
                   "form{text-align:left}label{display:block;margin-top:1em;color:#666;font-size:."
                   "9em}"
                   "input{box-sizing:border-box;width:100%;padding:.7em;margin-top:.3em;"
                   "border:1px solid #d0d0d5;border-radius:6px;font-size:1em}"
                   "button{width:100%;margin-top:1.5em;padding:.8em;border:0;border-radius:22px;"
                   "background:#f9912d;color:#fff;font-size:1em}"
                   ".problem{color:#e4393c;text-align:center}</style></head>"
                   "<body><main class=\"card\">%2<h1>%1</h1>%3</main></body></html>")
            .arg(title.toHtmlEscaped(), mark, body)
            .toUtf8();
}

void sendLinkPage(Exchange &exchange, int status, const QString &title, const QString &body,
                  Outcome outcome)
{
    exchange.sendBody(status, linkPage(title, body, outcome), "text/html; charset=utf-8");
}

void expiredLink(Exchange &exchange)
{
    sendLinkPage(exchange, 410, QStringLiteral("链接无效"),
                 QStringLiteral("<p>这个链接无效、已经用过或已过期。请在 App 中重新发送邮件。</p>"),
                 Outcome::Failed);
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
    sendLinkPage(exchange, 200, QStringLiteral("账号已激活"),
                 QStringLiteral("<p>您的邮箱已验证，现在可以回到 App 用邮箱和密码登录了。</p>"),
                 Outcome::Done);
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
    sendLinkPage(exchange, 200, QStringLiteral("账号已解锁"),
                 QStringLiteral("<p>现在可以回到 App 用原来的密码登录了。</p>"), Outcome::Done);
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
                   "<label>新密码<input type=\"password\" name=\"password\" "
                   "placeholder=\"至少8位\" minlength=\"%3\" maxlength=\"%4\" required "
                   "autocomplete=\"new-password\"></label>"
                   "<label>确认新密码<input type=\"password\" name=\"password_confirmation\" "
                   "placeholder=\"再次输入新密码\" required autocomplete=\"new-password\"></label>"
                   "<button type=\"submit\">设置新密码</button></form>")
            .arg(problem.isEmpty() ? QStringLiteral("<p>请为您的 Tarvel 账号设置一个新密码。</p>")
                                   : QStringLiteral("<p class=\"problem\">%1</p>")
                                             .arg(problem.toHtmlEscaped()),
                 QString::fromLatin1(token).toHtmlEscaped())
            .arg(AccountFields::kPasswordMin)
            .arg(AccountFields::kPasswordMax);
}

void passwordEdit(Exchange &exchange)
{
    const QByteArray token = tokenOf(exchange);
    const bool valid = exchange.store().database().read([&](SQLite::Database &db) {
        return MailTokens::peek(db, token, MailTokens::kPassword, exchange.now()).has_value();
    });
    if (!valid)
        return expiredLink(exchange);
    sendLinkPage(exchange, 200, QStringLiteral("设置新密码"), passwordForm(token, QString()),
                 Outcome::Form);
}

void passwordUpdate(Exchange &exchange)
{
    const QByteArray token = tokenOf(exchange);
    const QString password = exchange.field("password");
    if (password.size() < AccountFields::kPasswordMin
        || password.size() > AccountFields::kPasswordMax)
        return sendLinkPage(exchange, 422, QStringLiteral("设置新密码"),
                            passwordForm(token, QStringLiteral("密码需要8到64位")), Outcome::Form);
    if (exchange.field("password_confirmation") != password)
        return sendLinkPage(exchange, 422, QStringLiteral("设置新密码"),
                            passwordForm(token, QStringLiteral("两次输入的密码不一致")),
                            Outcome::Form);
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
    sendLinkPage(exchange, 200, QStringLiteral("密码已更新"),
                 QStringLiteral(
                         "<p>新密码已生效，其他设备上的登录已退出。请回到 App 用新密码登录。</p>"),
                 Outcome::Done);
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
