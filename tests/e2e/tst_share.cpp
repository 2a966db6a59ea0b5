#include "TestEnvironment.h"

#include "device/ICShareView.h"
#include "platform/ui/Hud.h"

#include <QSignalSpy>

using platform::Hud;

Q_DECLARE_METATYPE(ICShareResult)
Q_DECLARE_METATYPE(platform::Hud::Record)

namespace {

struct SharedCall
{
    ICShareRequest request;
    ICShareView::ResultFn done;
};

} // namespace

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
                [this](const ICShareRequest &request, ICShareView::ResultFn done) {
                    m_calls.append({request, std::move(done)});
                });
    }

private slots:
    void init()
    {
        recordShares();
        Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
        Hud::shared().dismiss();
        Hud::shared().clearHistory();
    }

    void cleanupTestCase() { ICShareView::setShareFunction({}); }

    void targets_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("tag");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("image");
        QTest::newRow("WeChat friends") << 0 << 5000 << "微信好友"
                                        << "common_share_button1";
        QTest::newRow("WeChat moments") << 1 << 5001 << "微信朋友圈"
                                        << "common_share_button2";
        QTest::newRow("Sina Weibo") << 2 << 5002 << "新浪微博"
                                    << "common_share_button3";
    }

    void targets()
    {
        QFETCH(int, index);
        QFETCH(int, tag);
        QFETCH(QString, title);
        QFETCH(QString, image);
        ICShareView view;
        QCOMPARE(view.arrayButtonShare().size(), 3);
        const platform::Button *button = view.arrayButtonShare().at(index);
        QCOMPARE(button->tag(), tag);
        QCOMPARE(button->title(), title);
        QCOMPARE(button->imageName(), image);
        QCOMPARE(view.buttonClose()->title(), QStringLiteral("取消"));
    }

    void requestForTag_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<bool>("known");
        QTest::addColumn<bool>("oneKey");
        QTest::addColumn<int>("platformType");
        QTest::addColumn<QList<int>>("shareList");
        QTest::newRow("5000 WeChat chat") << 5000 << true << false << 22 << QList<int>();
        QTest::newRow("5001 WeChat moments") << 5001 << true << false << 23 << QList<int>();
        QTest::newRow("5002 Weibo one-key") << 5002 << true << true << 0 << QList<int>{1};
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
        QFETCH(int, platformType);
        QFETCH(QList<int>, shareList);
        ICShareView view;
        ICShareRequest request;
        QCOMPARE(view.requestForTag(tag, &request), known);
        if (!known)
            return;
        QCOMPARE(request.oneKey, oneKey);
        QCOMPARE(request.platformType, platformType);
        QCOMPARE(request.shareList, shareList);
        QVERIFY(request.statusBarTips);
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
        const ICShareContent &content = request.content;
        QCOMPARE(content.text, view.StrContent());
        QCOMPARE(content.defaultText, view.StrContent());
        QCOMPARE(content.description, view.StrContent());
        QCOMPARE(content.title, view.StrTitle());
        QCOMPARE(content.url, view.StrUrl());
        QCOMPARE(content.imageUrl, view.StrImageUrl());
        QVERIFY(!content.imageUrl.isNull());
        QCOMPARE(content.mediaType, ICShareContent::MediaNews);
        QCOMPARE(content.weChatTimeline,
                 (ICShareContent::WeChatTimelineUnit{ICShareContent::MediaNews, view.StrContent(),
                                                     view.StrTitle(), view.StrUrl(),
                                                     view.StrImageUrl()}));
        QCOMPARE(content.sinaWeibo,
                 (ICShareContent::SinaWeiboUnit{view.StrContent(), view.StrImageUrl()}));
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
        QCOMPARE(m_calls.first().request, expected);
        QVERIFY(!view.isShown());
    }

    void kitAnswers_data()
    {
        QTest::addColumn<QList<ICShareResult>>("answers");
        QTest::addColumn<QList<Hud::Record>>("huds");
        QTest::addColumn<QString>("log"); // empty: nothing logged

        const ICShareResult begin{ICShareResult::Begin, 0, QString()};
        QTest::newRow("success") << QList<ICShareResult>{begin,
                                                         {ICShareResult::Success, 0, QString()}}
                                 << QList<Hud::Record>{{Hud::Success, "分享成功", true}}
                                 << QString();
        QTest::newRow("failure") << QList<ICShareResult>{begin,
                                                         {ICShareResult::Fail, 208, "网络连接失败"}}
                                 << QList<Hud::Record>{{Hud::Error, "分享失败", true}}
                                 << QStringLiteral("分享失败,错误码:208,错误描述:网络连接失败");
        QTest::newRow("cancelled")
                << QList<ICShareResult>{begin, {ICShareResult::Cancel, 0, QString()}}
                << QList<Hud::Record>() << QString();
        QTest::newRow("only started")
                << QList<ICShareResult>{begin} << QList<Hud::Record>() << QString();
    }

    void kitAnswers()
    {
        QFETCH(QList<ICShareResult>, answers);
        QFETCH(QList<Hud::Record>, huds);
        QFETCH(QString, log);
        ICShareView view;
        QVERIFY(view.arrayButtonShare().at(2)->tap());
        QCOMPARE(m_calls.size(), 1);
        if (!log.isEmpty())
            QTest::ignoreMessage(QtInfoMsg, qPrintable(log));
        for (const ICShareResult &answer : answers)
            m_calls.first().done(answer);
        QCOMPARE(Hud::shared().records(), huds);
    }
};

TARVEL_TEST_MAIN(TestShare)
#include "tst_share.moc"
