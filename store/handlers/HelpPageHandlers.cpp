#include "handlers/Handlers.h"
#include "http/Exchange.h"
#include "http/Router.h"

#include <QString>
#include <QStringList>

// The pages the app shows in its web view: the help site's start page (questions and answers about
// buying, paying and accounts) and the company's pages about the app and about itself.
namespace {

struct Question
{
    const char *question;
    const char *answer;
};

struct Topic
{
    const char *title;
    QList<Question> questions;
};

const QList<Topic> &helpTopics()
{
    static const QList<Topic> topics{
            {"购买游戏",
             {{"怎样购买游戏？", "在游戏详情页点击“立即购买”，或把游戏加入购物车后在购物车中结算。"
                                 "确认订单后选择微信支付即可。"},
              {"购买后在哪里找到游戏？",
               "支付成功后，游戏会出现在“我的Tarvel”→“我的游戏”中，激活码也在那里查看。"},
              {"可以购买 DLC 或合集吗？",
               "可以。游戏详情页下方列出了它的 DLC "
               "和包含它的合集，点进去即可购买。合集中的游戏会一并加入“我的游戏”。"}}},
            {"支付与订单",
             {{"支付失败了怎么办？",
               "订单会保留为“未付款”。在“我的订单”的“未付款”中找到它，点击“去付款”重新支付即可。"},
              {"怎样取消订单？", "只有未付款的订单可以取消：在“我的订单”中点击该订单的“取消订单”。"
                                 "已使用的优惠券会退回。"},
              {"优惠券怎么用？",
               "在确认订单页输入优惠券码。每张优惠券只能使用一次，部分优惠券有最低消费金额。"}}},
            {"账号与安全",
             {{"忘记密码怎么办？", "在登录页点击“忘记密码”，通过手机短信或邮箱验证后设置新密码。"},
              {"账号被锁定了怎么办？",
               "多次输错密码后账号会被暂时锁定。在登录页按提示通过手机或邮箱解锁。"},
              {"怎样修改昵称和头像？",
               "在“我的Tarvel”→“个人资料”中修改，头像可以从相册选择或拍照。"}}},
    };
    return topics;
}

QByteArray page(const QString &title, const QString &body)
{
    return QStringLiteral(
                   "<!DOCTYPE html><html lang=\"zh-CN\"><head><meta charset=\"utf-8\">"
                   "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
                   "<title>%1</title><style>"
                   "body{font-family:\"Noto Sans CJK SC\",sans-serif;margin:0;padding:0 16px 24px;"
                   "color:#222;background:#f2f2f5;line-height:1.6}"
                   "h1{font-size:20px;margin:20px 0 4px}h2{font-size:16px;color:#3c66b7;"
                   "margin:22px 0 8px}.lead{color:#888;font-size:14px;margin:0}"
                   "details{background:#fff;border-radius:8px;margin:8px 0;padding:10px 14px}"
                   "summary{font-size:15px;cursor:pointer}details p{font-size:14px;color:#555;"
                   "margin:8px 0 2px}.card{background:#fff;border-radius:8px;padding:12px 14px;"
                   "margin:12px 0;font-size:14px}</style></head><body>%2</body></html>")
            .arg(title.toHtmlEscaped(), body)
            .toUtf8();
}

void sendPage(Exchange &exchange, const QString &title, const QString &body)
{
    exchange.sendBody(200, page(title, body), "text/html; charset=utf-8");
}

void helpPage(Exchange &exchange)
{
    QString body = QStringLiteral("<h1>帮助中心</h1><p class=\"lead\">常见问题与解答</p>");
    for (const Topic &topic : helpTopics()) {
        body += QStringLiteral("<h2>%1</h2>").arg(QString::fromUtf8(topic.title));
        for (const Question &item : topic.questions)
            body += QStringLiteral("<details><summary>%1</summary><p>%2</p></details>")
                            .arg(QString::fromUtf8(item.question), QString::fromUtf8(item.answer));
    }
    body += QStringLiteral("<h2>意见反馈</h2><div class=\"card\">没有找到答案？请发送邮件至 "
                           "support@tarvel.test，我们会在一个工作日内回复。</div>");
    sendPage(exchange, QStringLiteral("帮助与反馈"), body);
}

void productPage(Exchange &exchange)
{
    sendPage(
            exchange, QStringLiteral("关于Tarvel游戏"),
            QStringLiteral(
                    "<h1>Tarvel游戏</h1><p class=\"lead\">正版 PC 游戏数字商城</p>"
                    "<div class=\"card\">Tarvel 为玩家提供正版 PC 游戏、DLC 与合集的激活码，"
                    "价格以人民币标示，支持微信支付，购买后即刻在“我的游戏”中获得激活码。</div>"
                    "<div class=\"card\">新作预售、限时折扣与节日活动会通过推送消息第一时间告诉你，"
                    "可以在“偏好设置”中随时开关。</div>"));
}

void companyPage(Exchange &exchange)
{
    sendPage(exchange, QStringLiteral("关于QMRT"),
             QStringLiteral("<h1>QMRT</h1><p class=\"lead\">Tarvel游戏的开发与运营团队</p>"
                            "<div class=\"card\">我们是一支热爱游戏的团队，致力于让中文玩家更方便地"
                            "购买正版游戏。</div><div class=\"card\">商务合作：bd@qmrt.test<br>"
                            "客服邮箱：support@tarvel.test</div>"));
}

} // namespace

void Handlers::installHelpPages(Router &router)
{
    router.add("GET", "/help", helpPage);
    router.add("GET", "/about/tarvel", productPage);
    router.add("GET", "/about/qmrt", companyPage);
}
