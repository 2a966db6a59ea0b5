#include "HudRecorder.h"
#include "TestEnvironment.h"

#include "app/AppDelegate.h"
#include "device/ICShareView.h"
#include "platform/ui/Hud.h"
#include "platform/ui/UrlOpener.h"

#include <QUrlQuery>

#include <QSignalSpy>

using platform::Hud;

namespace {

struct SharedCall
{
    ICShareRequest request;
    ShareResultFn result;
};

// One report of the sharing kit.
struct KitReport
{
    SSResponseState state;
    int errorCode;
    QString errorDescription;
};

} // namespace

Q_DECLARE_METATYPE(KitReport)

// The share panel: its three targets and two reserved tags, the content it builds (absent values as
// empty text), showing and hiding, and what each answer of the sharing kit shows.
class TestShare : public QObject
{
    Q_OBJECT

private:
    QList<SharedCall> m_calls;

    void recordShares()
    {
        m_calls.clear();
        ICShareView::setShareFunction(
                [this](const ICShareRequest &request, const ShareResultFn &result) {
                    m_calls.append({request, result});
                });
    }

private slots:
    void init()
    {
        recordShares();
        Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
        Hud::shared().dismiss();
        HudRecorder::shared().clear();
    }

    void cleanupTestCase() { ICShareView::setShareFunction({}); }

    void requestForTag_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<bool>("known");
        QTest::addColumn<bool>("oneKey");
        QTest::addColumn<int>("type");
        QTest::addColumn<QList<int>>("shareList");
        QTest::newRow("5000 WeChat chat") << 5000 << true << false << 22 << QList<int>();
        QTest::newRow("5001 WeChat moments") << 5001 << true << false << 23 << QList<int>();
        QTest::newRow("5002 Weibo one-key") << 5002 << true << true << 1 << QList<int>{1};
        QTest::newRow("5003 reserved") << 5003 << true << false << 24 << QList<int>();
        QTest::newRow("5004 reserved") << 5004 << true << false << 6 << QList<int>();
        QTest::newRow("4999 unknown") << 4999 << false << false << 0 << QList<int>();
        QTest::newRow("5005 unknown") << 5005 << false << false << 0 << QList<int>();
    }

    void requestForTag()
    {
        QFETCH(int, tag);
        QFETCH(bool, known);
        QFETCH(bool, oneKey);
        QFETCH(int, type);
        QFETCH(QList<int>, shareList);
        ICShareView view;
        ICShareRequest request;
        QCOMPARE(view.requestForTag(tag, &request), known);
        if (!known)
            return;
        QCOMPARE(request.oneKey, oneKey);
        QCOMPARE(int(request.type), type);
        QList<int> list;
        for (ShareType platform : request.shareList)
            list.append(int(platform));
        QCOMPARE(list, shareList);
    }

    void contentForms_data()
    {
        QTest::addColumn<QStringList>("given"); // title, content, picture, page; "NULL" is absent
        QTest::newRow("everything")
                << QStringList{"星际远征", "太空冒险", "http://p/1.jpg", "http://s/products/1"};
        QTest::newRow("absent values") << QStringList{"NULL", "NULL", "NULL", "NULL"};
        QTest::newRow("no picture")
                << QStringList{"星际远征", "太空冒险", "", "http://s/products/1"};
    }

    void contentForms()
    {
        QFETCH(QStringList, given);
        QStringList values;
        for (const QString &value : given)
            values.append(value == QLatin1String("NULL") ? QString() : value);
        ICShareView view;
        view.setShareTitle(values[0], values[1], values[2], values[3]);
        const QStringList stored{view.StrTitle(), view.StrContent(), view.StrImageUrl(),
                                 view.StrUrl()};
        for (int i = 0; i < 4; ++i) {
            QVERIFY(!stored.at(i).isNull());
            QCOMPARE(stored.at(i), values.at(i).isNull() ? QStringLiteral("") : values.at(i));
        }

        ICShareRequest request;
        QVERIFY(view.requestForTag(5001, &request));
        const ShareContent &content = request.content;
        QCOMPARE(content.content, view.StrContent());
        QCOMPARE(content.defaultContent, view.StrContent());
        QCOMPARE(content.description, view.StrContent());
        QCOMPARE(content.title, view.StrTitle());
        QCOMPARE(content.url, view.StrUrl());
        QCOMPARE(content.image, view.StrImageUrl());
        QVERIFY(!content.image.isNull());
        QCOMPARE(content.mediaType, SSPublishContentMediaTypeNews);
        QVERIFY(content.weixinTimelineUnit.has_value());
        QCOMPARE(content.weixinTimelineUnit->type, SSPublishContentMediaTypeNews);
        QCOMPARE(content.weixinTimelineUnit->content, view.StrContent());
        QCOMPARE(content.weixinTimelineUnit->title, view.StrTitle());
        QCOMPARE(content.weixinTimelineUnit->url, view.StrUrl());
        QCOMPARE(content.weixinTimelineUnit->image, view.StrImageUrl());
        QVERIFY(content.sinaWeiboUnit.has_value());
        QCOMPARE(content.sinaWeiboUnit->content, view.StrContent());
        QCOMPARE(content.sinaWeiboUnit->image, view.StrImageUrl());
    }

    void showAndHide()
    {
        ICShareView view;
        QSignalSpy shown(&view, &ICShareView::shownChanged);
        QVERIFY(!view.isShown());
        view.showView();
        view.showView();
        QVERIFY(view.isShown());
        QCOMPARE(shown.count(), 1);
        QVERIFY(view.buttonClose()->tap());
        QVERIFY(!view.isShown());
        QCOMPARE(shown.count(), 2);
        QCOMPARE(view.animationDuration(), 300);
        QVERIFY(m_calls.isEmpty());
    }

    void targetButtonSharesOnce_data()
    {
        QTest::addColumn<int>("index");
        QTest::newRow("WeChat friends") << 0;
        QTest::newRow("WeChat moments") << 1;
        QTest::newRow("Sina Weibo") << 2;
    }

    void targetButtonSharesOnce()
    {
        QFETCH(int, index);
        ICShareView view;
        view.setShareTitle(QStringLiteral("霓虹编年史"), QStringLiteral("霓虹都市里的冒险。"),
                           QStringLiteral("http://p/34.jpg"),
                           QStringLiteral("http://s/products/34"));
        view.showView();
        QVERIFY(view.arrayButtonShare().at(index)->tap());
        QCOMPARE(m_calls.size(), 1);
        ICShareRequest expected;
        QVERIFY(view.requestForTag(5000 + index, &expected));
        const ICShareRequest &made = m_calls.first().request;
        QCOMPARE(made.oneKey, expected.oneKey);
        QCOMPARE(made.type, expected.type);
        QCOMPARE(made.shareList, expected.shareList);
        QCOMPARE(made.content.title, QStringLiteral("霓虹编年史"));
        QCOMPARE(made.content.url, QStringLiteral("http://s/products/34"));
        QVERIFY(!view.isShown());
    }

    void kitAnswers_data()
    {
        QTest::addColumn<QList<KitReport>>("reports");
        QTest::addColumn<QList<HudRecorder::Record>>("huds");
        QTest::addColumn<QString>("log"); // empty: nothing logged

        const KitReport begin{SSResponseStateBegin, 0, QString()};
        QTest::newRow("success") << QList<KitReport>{begin, {SSResponseStateSuccess, 0, QString()}}
                                 << QList<HudRecorder::Record>{{Hud::Success, "分享成功", true}}
                                 << QString();
        QTest::newRow("failure") << QList<KitReport>{begin,
                                                     {SSResponseStateFail, 208, "网络连接失败"}}
                                 << QList<HudRecorder::Record>{{Hud::Error, "分享失败", true}}
                                 << QStringLiteral("分享失败,错误码:208,错误描述:网络连接失败");
        QTest::newRow("cancelled")
                << QList<KitReport>{begin, {SSResponseStateCancel, -2, QString()}}
                << QList<HudRecorder::Record>() << QString();
        QTest::newRow("only started")
                << QList<KitReport>{begin} << QList<HudRecorder::Record>() << QString();
    }

    void kitAnswers()
    {
        QFETCH(QList<KitReport>, reports);
        QFETCH(QList<HudRecorder::Record>, huds);
        QFETCH(QString, log);
        ICShareView view;
        QVERIFY(view.arrayButtonShare().at(2)->tap());
        QCOMPARE(m_calls.size(), 1);
        if (!log.isEmpty())
            QTest::ignoreMessage(QtInfoMsg, qPrintable(log));
        for (const KitReport &report : reports) {
            m_calls.first().result(ShareTypeSinaWeibo, report.state,
                                   {report.errorCode, report.errorDescription},
                                   report.state != SSResponseStateBegin);
        }
        QCOMPARE(HudRecorder::shared().records(), huds);
    }

    // Through the app's sharing kit: Weibo's web share page opens in the browser.
    void weiboThroughTheKit()
    {
        ICShareView::setShareFunction({});
        AppDelegate::shared()->initWithShareSDK();
        QList<QUrl> opened;
        platform::UrlOpener::shared().setHandler([&opened](const QUrl &url) {
            opened.append(url);
            return true;
        });
        ICShareView view;
        view.setShareTitle(QStringLiteral("霓虹编年史"), QStringLiteral("霓虹都市里的冒险。"),
                           QString(), QStringLiteral("http://s/products/34"));
        QVERIFY(view.arrayButtonShare().at(2)->tap());
        QTRY_COMPARE(opened.size(), 1);
        platform::UrlOpener::shared().setHandler({});
        QCOMPARE(opened.first().host(), QStringLiteral("service.weibo.com"));
        const QUrlQuery query(opened.first());
        QCOMPARE(query.queryItemValue(QStringLiteral("url")),
                 QStringLiteral("http://s/products/34"));
        QCOMPARE(query.queryItemValue(QStringLiteral("title"), QUrl::FullyDecoded),
                 QStringLiteral("霓虹都市里的冒险。"));
        QTRY_COMPARE(
                HudRecorder::shared().records(),
                (QList<HudRecorder::Record>{{Hud::Success, QStringLiteral("分享成功"), true}}));
    }

    // A reserved target that no platform serves fails with the kit's code and description.
    void reservedTargetThroughTheKit()
    {
        ICShareView::setShareFunction({});
        AppDelegate::shared()->initWithShareSDK();
        ICShareView view;
        platform::Button reserved;
        reserved.setTag(5003);
        QTest::ignoreMessage(QtInfoMsg, "分享失败,错误码:20001,错误描述:尚未配置该分享平台");
        view.clickButtonShare(&reserved);
        QTRY_COMPARE(HudRecorder::shared().records(),
                     (QList<HudRecorder::Record>{{Hud::Error, QStringLiteral("分享失败"), true}}));
    }
};

TARVEL_TEST_MAIN(TestShare)
#include "tst_share.moc"
