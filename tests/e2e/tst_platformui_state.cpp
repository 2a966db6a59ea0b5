#include "HudRecorder.h"
#include "TestEnvironment.h"

#include "platform/TextHolder.h"
#include "platform/ui/AlertCenter.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"
#include "platform/ui/Switch.h"
#include "platform/ui/TextField.h"
#include "platform/ui/TextView.h"
#include "platform/ui/UIAlertViewBlock.h"
#include "platform/ui/UrlOpener.h"

#include <QSignalSpy>

#include <optional>

using namespace platform;

// The state objects screens drive and tests read: buttons, fields, switches, the HUD, alerts, the
// URL opener, row models and the refresh header and footer.
class TestPlatformUiState : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        Hud::shared().dismiss();
        HudRecorder::shared().clear();
        Hud::shared().setAutoDismissInterval(Hud::DefaultAutoDismissMs);
        AlertCenter::shared().clear();
        UrlOpener::shared().setHandler({});
        UrlOpener::shared().clearHistory();
    }

    void buttonTapsOnlyWhenUsable_data()
    {
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("hidden");
        QTest::addColumn<bool>("clicks");

        QTest::newRow("enabled and visible") << true << false << true;
        QTest::newRow("disabled") << false << false << false;
        QTest::newRow("hidden") << true << true << false;
        QTest::newRow("disabled and hidden") << false << true << false;
    }

    void buttonTapsOnlyWhenUsable()
    {
        QFETCH(bool, enabled);
        QFETCH(bool, hidden);
        QFETCH(bool, clicks);
        Button button;
        button.setEnabled(enabled);
        button.setHidden(hidden);
        QSignalSpy clicked(&button, &Button::clicked);
        QCOMPARE(button.tap(), clicks);
        QCOMPARE(clicked.count(), clicks ? 1 : 0);
    }

    void buttonShowsTheTitleOfItsState_data()
    {
        QTest::addColumn<QString>("selectedTitle"); // "-" for none
        QTest::addColumn<QString>("disabledTitle");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("selected");
        QTest::addColumn<QString>("shown");

        QTest::newRow("normal") << "选中"
                                << "60S" << true << false << "获取验证码";
        QTest::newRow("selected") << "选中"
                                  << "60S" << true << true << "选中";
        QTest::newRow("disabled wins over selected") << "选中"
                                                     << "60S" << false << true << "60S";
        QTest::newRow("selected without own title") << "-"
                                                    << "-" << true << true << "获取验证码";
        QTest::newRow("disabled without own title") << "-"
                                                    << "-" << false << false << "获取验证码";
        QTest::newRow("an empty own title blanks it") << ""
                                                      << "-" << true << true << "";
    }

    void buttonShowsTheTitleOfItsState()
    {
        QFETCH(QString, selectedTitle);
        QFETCH(QString, disabledTitle);
        QFETCH(bool, enabled);
        QFETCH(bool, selected);
        QFETCH(QString, shown);
        Button button;
        button.setTitle(QStringLiteral("获取验证码"));
        if (selectedTitle != "-")
            button.setSelectedTitle(selectedTitle.isEmpty() ? QLatin1String("") : selectedTitle);
        if (disabledTitle != "-")
            button.setDisabledTitle(disabledTitle);
        button.setEnabled(enabled);
        button.setSelected(selected);
        QCOMPARE(button.currentTitle(), shown);
    }

    void buttonImagesFollowSelection()
    {
        Button button;
        button.setImageName(QStringLiteral("tabOne_Default"));
        button.setSelectedImageName(QStringLiteral("tabOne_select"));
        button.setBackgroundImageName(QStringLiteral("homepage_sort1_select"));
        button.setSelectedBackgroundImageName(QStringLiteral("homepage_sort1"));
        QSignalSpy changed(&button, &Button::changed);
        button.setSelected(true);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(button.currentImageName(), QStringLiteral("tabOne_select"));
        QCOMPARE(button.currentBackgroundImageName(), QStringLiteral("homepage_sort1"));
        button.setSelected(true);
        QCOMPARE(changed.count(), 1); // no change, no signal
    }

    void textFieldsAndViewsAreTextHolders()
    {
        TextField field;
        TextView view;
        QObject plain;
        QVERIFY(qobject_cast<TextHolder *>(&field));
        QVERIFY(qobject_cast<TextHolder *>(&view));
        QVERIFY(!qobject_cast<TextHolder *>(&plain));

        QSignalSpy textChanged(&field, &TextField::textChanged);
        qobject_cast<TextHolder *>(&field)->setText(QStringLiteral("13800138000"));
        QCOMPARE(field.text(), QStringLiteral("13800138000"));
        QCOMPARE(textChanged.count(), 1);
        qobject_cast<TextHolder *>(&view)->setText(QStringLiteral("很好玩"));
        QCOMPARE(view.text(), QStringLiteral("很好玩"));
    }

    void textFieldFocusNeedsAUsableField_data()
    {
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("hidden");
        QTest::addColumn<bool>("focused");

        QTest::newRow("usable") << true << false << true;
        QTest::newRow("disabled") << false << false << false;
        QTest::newRow("hidden") << true << true << false;
    }

    void textFieldFocusNeedsAUsableField()
    {
        QFETCH(bool, enabled);
        QFETCH(bool, hidden);
        QFETCH(bool, focused);
        TextField field;
        field.setEnabled(enabled);
        field.setHidden(hidden);
        QCOMPARE(field.becomeFirstResponder(), focused);
        QCOMPARE(field.isFirstResponder(), focused);
    }

    void disablingAFocusedFieldDropsFocus()
    {
        TextField field;
        QVERIFY(field.becomeFirstResponder());
        field.setEnabled(false);
        QVERIFY(!field.isFirstResponder());
    }

    void switchReportsOnlyUserFlips()
    {
        Switch toggle;
        QSignalSpy toggled(&toggle, &Switch::toggled);
        toggle.setOn(true); // from code: silent
        QCOMPARE(toggled.count(), 0);
        QVERIFY(toggle.toggleByUser(false));
        QCOMPARE(toggled.count(), 1);
        QCOMPARE(toggled.at(0).at(0).toBool(), false);
        QVERIFY(!toggle.toggleByUser(false)); // already off
        toggle.setEnabled(false);
        QVERIFY(!toggle.toggleByUser(true));
        QVERIFY(!toggle.isOn());
        QCOMPARE(toggled.count(), 1);
    }

    void hudShowsOneTextAtATime()
    {
        Hud &hud = Hud::shared();
        hud.showWithStatus(QStringLiteral("正在登录..."), true);
        QVERIFY(hud.isVisible());
        QCOMPARE(hud.kind(), Hud::Progress);
        QVERIFY(hud.isMasked());
        hud.showErrorWithStatus(QStringLiteral("请输入密码"));
        QCOMPARE(hud.text(), QStringLiteral("请输入密码"));
        QCOMPARE(hud.kind(), Hud::Error);
        QVERIFY(!hud.isMasked());
        QCOMPARE(HudRecorder::shared().history(), (QStringList{"正在登录...", "请输入密码"}));
        QCOMPARE(HudRecorder::shared().records().constFirst(),
                 (HudRecorder::Record{Hud::Progress, QStringLiteral("正在登录..."), true}));
        hud.dismiss();
        QVERIFY(!hud.isVisible());
        QVERIFY(!hud.isMasked()); // a dismissed HUD blocks nothing
    }

    void hudStatusDismissesItself_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("success") << int(Hud::Success);
        QTest::newRow("error") << int(Hud::Error);
    }

    void hudStatusDismissesItself()
    {
        QFETCH(int, kind);
        Hud &hud = Hud::shared();
        hud.setAutoDismissInterval(20);
        QSignalSpy dismissed(&hud, &Hud::dismissed);
        if (kind == Hud::Success)
            hud.showSuccessWithStatus(QStringLiteral("登录成功"), true);
        else
            hud.showErrorWithStatus(QStringLiteral("账号被锁定"));
        QVERIFY(hud.isVisible());
        QVERIFY(hud.isAutoDismissScheduled());
        QTRY_VERIFY(!hud.isVisible());
        QCOMPARE(dismissed.count(), 1);
    }

    void progressReplacingAStatusStaysUp()
    {
        Hud &hud = Hud::shared();
        hud.setAutoDismissInterval(20);
        hud.showSuccessWithStatus(QStringLiteral("添加成功"));
        hud.showWithStatus(QStringLiteral("正在加载"), true);
        // The earlier status's timer goes with it: a progress stays until dismissed.
        QVERIFY(!hud.isAutoDismissScheduled());
        QVERIFY(hud.isVisible());
        QCOMPARE(hud.text(), QStringLiteral("正在加载"));
    }

    void alertIndexes_data()
    {
        QTest::addColumn<bool>("sheet");
        QTest::addColumn<QString>("cancel");
        QTest::addColumn<QString>("destructive");
        QTest::addColumn<QStringList>("others");
        QTest::addColumn<QStringList>("byIndex");
        QTest::addColumn<int>("cancelIndex");
        QTest::addColumn<QStringList>("drawn");

        QTest::newRow("alert: cancel first, others from 1")
                << false << "取消"
                << "" << QStringList{"确定", "重试"} << QStringList{"取消", "确定", "重试"} << 0
                << QStringList{"确定", "重试", "取消"};
        QTest::newRow("alert with two buttons draws cancel on the left")
                << false << "取消"
                << "" << QStringList{"确定"} << QStringList{"取消", "确定"} << 0
                << QStringList{"取消", "确定"};
        QTest::newRow("alert without cancel: others from 0")
                << false << ""
                << "" << QStringList{"Confirm"} << QStringList{"Confirm"} << -1
                << QStringList{"Confirm"};
        QTest::newRow("alert without buttons gets one to close it")
                << false << ""
                << "" << QStringList() << QStringList{"确定"} << 0 << QStringList{"确定"};
        QTest::newRow("sheet: destructive first, cancel last")
                << true << "取消"
                << "相机拍照获取" << QStringList{"相册获取"}
                << QStringList{"相机拍照获取", "相册获取", "取消"} << 2
                << QStringList{"相机拍照获取", "相册获取", "取消"};
        QTest::newRow("sheet without destructive")
                << true << "取消"
                << "" << QStringList{"微信", "微博"} << QStringList{"微信", "微博", "取消"} << 2
                << QStringList{"微信", "微博", "取消"};
    }

    void alertIndexes()
    {
        QFETCH(bool, sheet);
        QFETCH(QString, cancel);
        QFETCH(QString, destructive);
        QFETCH(QStringList, others);
        QFETCH(QStringList, byIndex);
        QFETCH(int, cancelIndex);
        QFETCH(QStringList, drawn);

        AlertCenter &center = AlertCenter::shared();
        QList<int> chosen;
        const auto handler = [&chosen](int index) { chosen.append(index); };
        if (sheet)
            center.showActionSheet(QStringLiteral("选择照片"), cancel, destructive, others,
                                   handler);
        else
            center.showAlert(QStringLiteral("提示"), QStringLiteral("确定删除吗？"), cancel, others,
                             handler);
        QVERIFY(center.isActive());
        QCOMPARE(center.style(), sheet ? AlertCenter::ActionSheet : AlertCenter::Alert);
        QCOMPARE(center.buttonTitles(), byIndex);
        QCOMPARE(center.cancelButtonIndex(), cancelIndex);
        QStringList drawnTitles;
        for (const QVariant &button : center.buttons())
            drawnTitles.append(button.toMap().value("title").toString());
        QCOMPARE(drawnTitles, drawn);
        // Each drawn button carries the index the handler receives.
        const QVariantMap last = center.buttons().constLast().toMap();
        QCOMPARE(byIndex.at(last.value("index").toInt()), last.value("title").toString());

        QVERIFY(!center.choose(int(byIndex.size()))); // no such button
        QVERIFY(center.choose(int(byIndex.size()) - 1));
        QCOMPARE(chosen, QList<int>{int(byIndex.size()) - 1});
        QVERIFY(!center.isActive());
        QVERIFY(!center.choose(0)); // nothing shown any more
    }

    void alertViewBlockShowsAndRunsItsBlocks_data()
    {
        QTest::addColumn<QString>("cancel");
        QTest::addColumn<int>("chosen");
        QTest::addColumn<bool>("cancelled");
        QTest::addColumn<bool>("dismissed");
        QTest::addColumn<int>("dismissIndex");
        QTest::newRow("cancel") << "取消" << 0 << true << false << 0;
        QTest::newRow("first other button") << "取消" << 1 << false << true << 0;
        QTest::newRow("second other button") << "取消" << 2 << false << true << 1;
        // The button's index minus 1 also without a cancel button, where the first gets -1.
        QTest::newRow("no cancel button, first") << QString() << 0 << false << true << -1;
        QTest::newRow("no cancel button, second") << QString() << 1 << false << true << 0;
    }

    // The block alert shows through the alert centre at once; the user's choice runs its blocks.
    void alertViewBlockShowsAndRunsItsBlocks()
    {
        QFETCH(QString, cancel);
        QFETCH(int, chosen);
        QFETCH(bool, cancelled);
        QFETCH(bool, dismissed);
        QFETCH(int, dismissIndex);

        bool cancelRan = false;
        std::optional<int> dismissedWith;
        const QStringList others{QStringLiteral("确定"), QStringLiteral("稍后")};
        UIAlertViewBlock::alertViewWithTitle(
                QStringLiteral("提示"), QStringLiteral("确定删除吗？"), cancel, others,
                [&](int index) { dismissedWith = index; }, [&] { cancelRan = true; });

        AlertCenter &center = AlertCenter::shared();
        QVERIFY(center.isActive());
        QCOMPARE(center.style(), AlertCenter::Alert);
        QCOMPARE(center.title(), QStringLiteral("提示"));
        QCOMPARE(center.message(), QStringLiteral("确定删除吗？"));
        QCOMPARE(center.buttonTitles(), cancel.isEmpty() ? others : QStringList{cancel} + others);
        QVERIFY(!cancelRan && !dismissedWith); // nothing runs before the choice

        QVERIFY(center.choose(chosen));
        QCOMPARE(cancelRan, cancelled);
        QCOMPARE(dismissedWith.has_value(), dismissed);
        if (dismissed)
            QCOMPARE(*dismissedWith, dismissIndex);
        QVERIFY(!center.isActive());
    }

    void alertsWaitTheirTurn()
    {
        AlertCenter &center = AlertCenter::shared();
        QStringList order;
        center.showAlert(QStringLiteral("第一个"), QString(), QStringLiteral("好"), {},
                         [&](int) { order.append("first"); });
        center.showAlert(QStringLiteral("第二个"), QString(), QStringLiteral("好"), {}, [&](int) {
            order.append("second");
            // A handler may raise the next alert itself.
            center.showAlert(QStringLiteral("第三个"), QString(), QString(),
                             {QStringLiteral("好")});
        });
        QCOMPARE(center.title(), QStringLiteral("第一个"));
        QCOMPARE(center.pendingCount(), 2);
        QVERIFY(center.choose(0));
        QCOMPARE(center.title(), QStringLiteral("第二个"));
        QVERIFY(center.choose(0));
        QCOMPARE(order, (QStringList{"first", "second"}));
        QCOMPARE(center.title(), QStringLiteral("第三个"));
        QVERIFY(center.choose(0)); // no handler: closes all the same
        QVERIFY(!center.isActive());
    }

    void urlOpenerGoesThroughTheReplacement()
    {
        UrlOpener &opener = UrlOpener::shared();
        QList<QUrl> handled;
        opener.setHandler([&](const QUrl &url) {
            handled.append(url);
            return url.scheme() == "http";
        });
        QVERIFY(opener.openURL(QUrl("http://127.0.0.1:8080/news/1")));
        QVERIFY(!opener.openURL(QUrl("weixin://pay")));
        QVERIFY(!opener.openURL(QUrl())); // nothing to open: the handler is not asked
        QCOMPARE(handled,
                 (QList<QUrl>{QUrl("http://127.0.0.1:8080/news/1"), QUrl("weixin://pay")}));
        QCOMPARE(opener.openedURLs().size(), 3);
        QCOMPARE(opener.lastOpenedURL(), QUrl());
        opener.clearHistory();
        QVERIFY(opener.openedURLs().isEmpty());
    }

    void rowModelExposesKeysAsRoles()
    {
        RowModel model({QStringLiteral("title")});
        model.setRows({{{"title", "巫师3"}, {"sale_price", "99"}},
                       {{"title", "艾尔登法环"}, {"list_price", "298"}}});
        const QHash<int, QByteArray> roles = model.roleNames();
        const int title = roles.key("title");
        const int sale = roles.key("sale_price");
        const int list = roles.key("list_price");
        QVERIFY(title && sale && list);
        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(model.data(model.index(0), title).toString(), QStringLiteral("巫师3"));
        QCOMPARE(model.data(model.index(1), list).toString(), QStringLiteral("298"));
        QVERIFY(!model.data(model.index(1), sale).isValid()); // absent key
        QCOMPARE(model.data(model.index(1), roles.key("row")).toMap().value("title").toString(),
                 QStringLiteral("艾尔登法环"));
        QVERIFY(!model.data(model.index(5), title).isValid());
    }

    void rowModelPagesAndReloads()
    {
        RowModel model;
        QList<QVariantMap> source{{{"id", "1"}}};
        model.setProvider([&source] { return source; });
        model.reloadData();
        QCOMPARE(model.count(), 1);

        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        model.appendRows({{{"id", "2"}}, {{"id", "3"}}});
        QCOMPARE(inserted.count(), 1);
        QCOMPARE(inserted.at(0).at(1).toInt(), 1);
        QCOMPARE(inserted.at(0).at(2).toInt(), 2);
        QCOMPARE(reset.count(), 0); // a page appends without resetting the view
        model.appendRows({}); // an empty page changes nothing
        QCOMPARE(inserted.count(), 1);

        QVERIFY(model.updateRow(0, {{"id", "1"}, {"checked", true}}));
        QVERIFY(model.get(0).value("checked").toBool());
        QVERIFY(model.removeRow(1));
        QVERIFY(!model.removeRow(9));
        QCOMPARE(model.get(1).value("id").toString(), QStringLiteral("3"));

        source = {};
        model.reloadData();
        QCOMPARE(model.count(), 0);
        QCOMPARE(reset.count(), 1);
    }

    void refreshHeaderFollowsThePull_data()
    {
        QTest::addColumn<QList<qreal>>("pulls");
        QTest::addColumn<QString>("textBeforeRelease");
        QTest::addColumn<bool>("refreshes");

        QTest::newRow("short pull") << QList<qreal>{10, 30} << "下拉刷新" << false;
        QTest::newRow("far enough") << QList<qreal>{10, 60} << "释放刷新" << true;
        QTest::newRow("exactly the threshold") << QList<qreal>{54} << "释放刷新" << true;
        QTest::newRow("pulled back before letting go")
                << QList<qreal>{70, 20} << "下拉刷新" << false;
        QTest::newRow("not pulled at all") << QList<qreal>{-5} << "下拉刷新" << false;
    }

    void refreshHeaderFollowsThePull()
    {
        QFETCH(QList<qreal>, pulls);
        QFETCH(QString, textBeforeRelease);
        QFETCH(bool, refreshes);
        RefreshHeader header;
        QSignalSpy requested(&header, &RefreshHeader::refreshRequested);
        for (qreal distance : pulls)
            header.pull(distance);
        QCOMPARE(header.text(), textBeforeRelease);
        header.release();
        QCOMPARE(requested.count(), refreshes ? 1 : 0);
        QCOMPARE(header.isRefreshing(), refreshes);
        if (refreshes) {
            QCOMPARE(header.text(), QStringLiteral("正在刷新..."));
            header.pull(80); // pulling during a refresh changes nothing
            header.release();
            QCOMPARE(requested.count(), 1);
            header.endRefreshing();
            QCOMPARE(header.state(), RefreshHeader::Idle);
        }
    }

    void refreshHeaderStartsFromCode()
    {
        RefreshHeader header;
        QSignalSpy requested(&header, &RefreshHeader::refreshRequested);
        header.beginRefreshing();
        header.beginRefreshing();
        QCOMPARE(requested.count(), 1);
        QVERIFY(header.isRefreshing());
    }

    void refreshFooterLoadsPages_data()
    {
        QTest::addColumn<QString>("steps"); // e=end reached, p=pulled up, d=load done, n=no more
        QTest::addColumn<int>("requests");
        QTest::addColumn<QString>("text");

        QTest::newRow("reaching the end loads") << "e" << 1 << "正在加载...";
        QTest::newRow("no second load while loading") << "ee" << 1 << "正在加载...";
        QTest::newRow("loads again after a page") << "ede" << 2 << "正在加载...";
        QTest::newRow("empty page stops scrolling loads") << "edne" << 1 << "没有更多了";
        QTest::newRow("a deliberate pull asks again") << "ednp" << 2 << "正在加载...";
        QTest::newRow("and shows no more again if still empty") << "ednpdn" << 2 << "没有更多了";
        QTest::newRow("idle") << "" << 0 << "上拉加载更多";
    }

    void refreshFooterLoadsPages()
    {
        QFETCH(QString, steps);
        QFETCH(int, requests);
        QFETCH(QString, text);
        RefreshFooter footer;
        QSignalSpy requested(&footer, &RefreshFooter::loadMoreRequested);
        for (const QChar step : steps) {
            switch (step.toLatin1()) {
            case 'e':
                footer.reachEnd();
                break;
            case 'p':
                footer.pullUp();
                break;
            case 'd':
                footer.endRefreshing();
                break;
            case 'n':
                footer.noticeNoMoreData();
                break;
            }
        }
        QCOMPARE(requested.count(), requests);
        QCOMPARE(footer.text(), text);
    }

    void hiddenFooterNeverLoads()
    {
        RefreshFooter footer;
        footer.setHidden(true);
        QSignalSpy requested(&footer, &RefreshFooter::loadMoreRequested);
        footer.reachEnd();
        footer.pullUp();
        QCOMPARE(requested.count(), 0);
    }
};

TARVEL_TEST_MAIN(TestPlatformUiState)
#include "tst_platformui_state.moc"
