#include "InProcessStore.h"
#include "StoreClient.h"
#include "TestEnvironment.h"

#include <QTextDocument>

using tarvel::test::Answer;
using tarvel::test::InProcessStore;
using tarvel::test::StoreClient;

// The help site and the company pages the app shows: Chinese HTML pages at the app's default
// addresses, with the questions a customer asks.
class TestHelpPages : public QObject
{
    Q_OBJECT

    InProcessStore m_store;
    std::unique_ptr<StoreClient> m_client;

private slots:
    void initTestCase()
    {
        QVERIFY(m_store.isRunning());
        m_client = std::make_unique<StoreClient>(m_store.baseUrl());
    }
    void cleanupTestCase() { m_client.reset(); }

    void pagesAnswerInChinese_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("mentions");
        QTest::newRow("help") << "/help"
                              << "帮助与反馈"
                              << QStringList{"怎样购买游戏？", "支付失败了怎么办？",
                                             "怎样取消订单？", "忘记密码怎么办？"};
        QTest::newRow("app page") << "/about/tarvel"
                                  << "关于Tarvel游戏" << QStringList{"微信支付"};
        QTest::newRow("company page") << "/about/qmrt"
                                      << "关于QMRT" << QStringList{"QMRT"};
    }

    void pagesAnswerInChinese()
    {
        QFETCH(QString, path);
        QFETCH(QString, title);
        QFETCH(QStringList, mentions);
        const Answer answer = m_client->get(path);
        QCOMPARE(answer.status, 200);
        QCOMPARE(answer.contentType, QByteArray("text/html; charset=utf-8"));
        QTextDocument page;
        page.setHtml(QString::fromUtf8(answer.body));
        QCOMPARE(page.metaInformation(QTextDocument::DocumentTitle), title);
        const QString text = page.toPlainText();
        for (const QString &mention : mentions)
            QVERIFY2(text.contains(mention), qPrintable(mention));
    }

    void unknownPagesStayUnknown()
    {
        QCOMPARE(m_client->get(QStringLiteral("/help/nothing")).status, 404);
        QCOMPARE(m_client->get(QStringLiteral("/about/other")).status, 404);
    }
};

TARVEL_TEST_MAIN(TestHelpPages)
#include "tst_helppages.moc"
