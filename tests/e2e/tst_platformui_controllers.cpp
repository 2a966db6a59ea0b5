#include "TestEnvironment.h"

#include "platform/ui/NavigationController.h"
#include "platform/ui/TabBarController.h"
#include "platform/ui/ViewController.h"
#include "platform/ui/Window.h"

#include <QPointer>
#include <QSignalSpy>

using namespace platform;

namespace {

// A screen that writes each lifecycle call into a shared log as "<name>.<call>".
class Recorder : public ViewController
{
public:
    Recorder(const QString &name, QStringList *log)
        : m_name(name)
        , m_log(log)
    { }

protected:
    void viewDidLoad() override { note("viewDidLoad"); }
    void viewWillAppear(bool) override { note("viewWillAppear"); }
    void viewDidAppear(bool) override { note("viewDidAppear"); }
    void viewWillDisappear(bool) override { note("viewWillDisappear"); }
    void viewDidDisappear(bool) override { note("viewDidDisappear"); }

private:
    void note(const char *call) { m_log->append(m_name + QLatin1Char('.') + QLatin1String(call)); }

    QString m_name;
    QStringList *m_log;
};

// A window showing one navigation stack of named screens.
struct StackFixture
{
    QStringList log;
    Window window;
    NavigationController *navigation = new NavigationController();
    QHash<QString, QPointer<Recorder>> screens;

    Recorder *screen(const QString &name)
    {
        if (!screens.value(name))
            screens.insert(name, new Recorder(name, &log));
        return screens.value(name);
    }
    // Pushes the screens named by the letters of `names` without animation.
    void build(const QString &names)
    {
        for (const QChar name : names) {
            if (navigation->depth() == 0)
                navigation->setViewControllers({screen(name)}, false);
            else
                navigation->pushViewController(screen(name), false);
        }
    }
    void show()
    {
        window.setRootViewController(navigation);
        window.makeKeyAndVisible();
    }
};

QStringList calls(const QString &spaced)
{
    return spaced.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

// The lifecycle every screen relies on: what appears and disappears, in which order, when
// navigation stacks, tabs, modal presentation and the window's root change.
class TestPlatformUiControllers : public QObject
{
    Q_OBJECT

private slots:
    void firstAppearanceLoadsOnce()
    {
        StackFixture f;
        f.build(QStringLiteral("A"));
        QVERIFY(f.log.isEmpty()); // nothing loads before it is shown
        f.show();
        QCOMPARE(f.log, calls("A.viewDidLoad A.viewWillAppear A.viewDidAppear"));
        QVERIFY(f.screens["A"]->isViewLoaded());
        QCOMPARE(f.screens["A"]->appearance(), ViewController::Appeared);
    }

    void navigationOrder_data()
    {
        QTest::addColumn<QString>("stack");
        QTest::addColumn<QString>("operation");
        QTest::addColumn<QString>("remaining");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("push") << "A"
                              << "push B"
                              << "AB"
                              << calls("A.viewWillDisappear B.viewDidLoad B.viewWillAppear "
                                       "A.viewDidDisappear B.viewDidAppear");
        // Screens below the top were never shown, so they load when first revealed.
        QTest::newRow("pop") << "AB"
                             << "pop"
                             << "A"
                             << calls("B.viewWillDisappear A.viewDidLoad A.viewWillAppear "
                                      "B.viewDidDisappear A.viewDidAppear");
        QTest::newRow("pop to a middle screen skips the ones between")
                << "ABCD"
                << "popTo B"
                << "AB"
                << calls("D.viewWillDisappear B.viewDidLoad B.viewWillAppear "
                         "D.viewDidDisappear B.viewDidAppear");
        QTest::newRow("pop to root") << "ABC"
                                     << "popToRoot"
                                     << "A"
                                     << calls("C.viewWillDisappear A.viewDidLoad A.viewWillAppear "
                                              "C.viewDidDisappear A.viewDidAppear");
        QTest::newRow("pop of the root does nothing") << "A"
                                                      << "pop"
                                                      << "A" << QStringList();
        QTest::newRow("pop to the top does nothing") << "AB"
                                                     << "popTo B"
                                                     << "AB" << QStringList();
        QTest::newRow("replacing the stack")
                << "AB"
                << "set CA"
                << "CA"
                << calls("B.viewWillDisappear A.viewDidLoad A.viewWillAppear "
                         "B.viewDidDisappear A.viewDidAppear");
    }

    void navigationOrder()
    {
        QFETCH(QString, stack);
        QFETCH(QString, operation);
        QFETCH(QString, remaining);
        QFETCH(QStringList, expected);

        StackFixture f;
        f.build(stack);
        f.show();
        f.log.clear();

        const QStringList words = operation.split(QLatin1Char(' '));
        const QString verb = words.first();
        if (verb == "push") {
            f.navigation->pushViewController(f.screen(words.at(1)), false);
        } else if (verb == "pop") {
            f.navigation->popViewController(false);
        } else if (verb == "popTo") {
            f.navigation->popToViewController(f.screen(words.at(1)), false);
        } else if (verb == "popToRoot") {
            f.navigation->popToRootViewController(false);
        } else if (verb == "set") {
            QList<ViewController *> controllers;
            for (const QChar name : words.at(1))
                controllers.append(f.screen(name));
            f.navigation->setViewControllers(controllers, false);
        }
        QCOMPARE(f.log, expected);

        QString names;
        for (ViewController *controller : f.navigation->viewControllers())
            names += f.screens.key(static_cast<Recorder *>(controller));
        QCOMPARE(names, remaining);
    }

    void poppedScreensAreDeletedLater()
    {
        StackFixture f;
        f.build(QStringLiteral("ABC"));
        f.show();
        QPointer<Recorder> b = f.screens["B"];
        QPointer<Recorder> c = f.screens["C"];
        const QList<ViewController *> popped = f.navigation->popToRootViewController(false);
        QCOMPARE(popped, (QList<ViewController *>{b, c}));
        // Still usable by the caller until control returns to the event loop.
        QVERIFY(b && c);
        QVERIFY(!c->parentViewController());
        QVERIFY(!c->navigationController());
        QTRY_VERIFY(!b && !c);
        QCOMPARE(f.navigation->depth(), 1);
    }

    void screensKnowTheirContainers()
    {
        StackFixture f;
        f.build(QStringLiteral("AB"));
        auto *tabs = new TabBarController();
        tabs->setViewControllers({f.navigation});
        QCOMPARE(f.screens["B"]->navigationController(), f.navigation);
        QCOMPARE(f.screens["B"]->tabBarController(), tabs);
        QCOMPARE(f.navigation->tabBarController(), tabs);
        QCOMPARE(f.navigation->navigationController(), nullptr);
        QCOMPARE(f.navigation->topViewController(), f.screens["B"].data());
        f.window.setRootViewController(tabs);
        QCOMPARE(f.screens["B"]->window(), &f.window);
    }

    void bottomBarFollowsPushedScreens_data()
    {
        QTest::addColumn<QList<bool>>("hides");
        QTest::addColumn<bool>("hidden");

        QTest::newRow("root asking alone keeps the bar") << QList<bool>{true} << false;
        QTest::newRow("pushed screen asking hides it") << QList<bool>{false, true} << true;
        QTest::newRow("asking screen below the top still hides it")
                << QList<bool>{false, true, false} << true;
        QTest::newRow("nobody asking") << QList<bool>{false, false} << false;
    }

    void bottomBarFollowsPushedScreens()
    {
        QFETCH(QList<bool>, hides);
        QFETCH(bool, hidden);
        StackFixture f;
        for (int i = 0; i < hides.size(); ++i) {
            Recorder *screen = f.screen(QString::number(i));
            screen->setHidesBottomBarWhenPushed(hides.at(i));
            if (i == 0)
                f.navigation->setViewControllers({screen}, false);
            else
                f.navigation->pushViewController(screen, false);
        }
        QCOMPARE(f.navigation->isBottomBarHidden(), hidden);
    }

    void refusesControllersShownElsewhere()
    {
        StackFixture f;
        f.build(QStringLiteral("AB"));
        NavigationController other;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("cannot take in"));
        other.pushViewController(f.screens["B"], false);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("cannot take in"));
        f.navigation->pushViewController(f.screens["A"], false);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("cannot take in"));
        f.navigation->pushViewController(nullptr, false);
        QCOMPARE(other.depth(), 0);
        QCOMPARE(f.navigation->depth(), 2);
    }

    void screenDeletedFromOutsideLeavesTheStack()
    {
        StackFixture f;
        f.build(QStringLiteral("ABC"));
        QSignalSpy reset(f.navigation, &NavigationController::reset);
        delete f.screens["B"];
        QCOMPARE(f.navigation->depth(), 2);
        QCOMPARE(f.navigation->topViewController(), f.screens["C"].data());
        QCOMPARE(reset.count(), 1);
    }

    void viewDrivenAnimationsEndWhenTheViewSaysSo()
    {
        StackFixture f;
        f.build(QStringLiteral("A"));
        f.show();
        f.navigation->setTransitionsDrivenByView(true);
        f.log.clear();

        QSignalSpy pushed(f.navigation, &NavigationController::pushed);
        f.navigation->pushViewController(f.screen("B"), true);
        QCOMPARE(f.log, calls("A.viewWillDisappear B.viewDidLoad B.viewWillAppear"));
        QCOMPARE(pushed.count(), 1);
        QCOMPARE(pushed.at(0).at(1).toBool(), true);

        f.log.clear();
        f.navigation->finishTransition();
        QCOMPARE(f.log, calls("A.viewDidDisappear B.viewDidAppear"));
        f.navigation->finishTransition(); // nothing pending: no second call
        QCOMPARE(f.log.size(), 2);

        // A new change first completes the one still running.
        f.log.clear();
        f.navigation->pushViewController(f.screen("C"), true);
        f.navigation->popViewController(true);
        QCOMPARE(f.log, calls("B.viewWillDisappear C.viewDidLoad C.viewWillAppear "
                              "B.viewDidDisappear C.viewDidAppear "
                              "C.viewWillDisappear B.viewWillAppear"));
        QPointer<Recorder> c = f.screens["C"];
        QCoreApplication::processEvents();
        QVERIFY(c); // deleted only once its pop has finished
        f.navigation->finishTransition();
        QTRY_VERIFY(!c);

        // Without animation the change ends at once, view or not.
        f.log.clear();
        f.navigation->pushViewController(f.screen("D"), false);
        QCOMPARE(f.log.last(), QStringLiteral("D.viewDidAppear"));
    }

    void tabsSwitchImmediately()
    {
        QStringList log;
        Window window;
        auto *tabs = new TabBarController();
        auto *one = new NavigationController(new Recorder("one", &log));
        auto *two = new NavigationController(new Recorder("two", &log));
        tabs->setViewControllers({one, two});
        QCOMPARE(tabs->selectedIndex(), 0);
        window.setRootViewController(tabs);
        window.makeKeyAndVisible();
        QCOMPARE(log, calls("one.viewDidLoad one.viewWillAppear one.viewDidAppear"));

        log.clear();
        QSignalSpy selected(tabs, &TabBarController::selectedIndexChanged);
        tabs->setSelectedIndex(1);
        QCOMPARE(log, calls("one.viewWillDisappear two.viewDidLoad two.viewWillAppear "
                            "one.viewDidDisappear two.viewDidAppear"));
        QCOMPARE(tabs->selectedViewController(), two);
        QCOMPARE(selected.count(), 1);

        log.clear();
        tabs->setSelectedIndex(1);
        tabs->setSelectedIndex(7);
        tabs->setSelectedIndex(-1);
        QCOMPARE(selected.count(), 1);
        QVERIFY(log.isEmpty());
        QCOMPARE(tabs->selectedIndex(), 1);

        // Coming back shows the first tab again without loading it a second time.
        tabs->setSelectedIndex(0);
        QCOMPARE(log, calls("two.viewWillDisappear one.viewWillAppear two.viewDidDisappear "
                            "one.viewDidAppear"));
    }

    void presentAndDismissModally()
    {
        StackFixture f;
        f.build(QStringLiteral("A"));
        f.show();
        f.log.clear();
        auto *sheet = new NavigationController(f.screen("S"));
        bool presented = false;
        f.screens["A"]->presentViewController(sheet, false, [&] {
            presented = true;
            f.log.append("presented");
        });
        QCOMPARE(f.log, calls("A.viewWillDisappear S.viewDidLoad S.viewWillAppear "
                              "A.viewDidDisappear S.viewDidAppear presented"));
        QVERIFY(presented);
        // The containing stack presents; the sheet knows who presents it and lives in the window.
        QCOMPARE(f.navigation->presentedViewController(), sheet);
        QCOMPARE(sheet->presentingViewController(), f.navigation);
        QCOMPARE(f.window.presentedViewControllers(), QList<ViewController *>{sheet});
        QCOMPARE(f.window.topViewController(), sheet);
        QCOMPARE(f.screens["S"]->window(), &f.window);

        // A screen inside the sheet dismisses the whole sheet.
        f.log.clear();
        QPointer<NavigationController> guard = sheet;
        f.screens["S"]->dismissViewController(false, [&] { f.log.append("dismissed"); });
        QCOMPARE(f.log, calls("S.viewWillDisappear A.viewWillAppear S.viewDidDisappear "
                              "A.viewDidAppear dismissed"));
        QCOMPARE(f.navigation->presentedViewController(), nullptr);
        QVERIFY(f.window.presentedViewControllers().isEmpty());
        QTRY_VERIFY(!guard);
    }

    void presentingOverAPresentedControllerStacks()
    {
        StackFixture f;
        f.build(QStringLiteral("A"));
        f.show();
        Recorder *first = f.screen("P");
        Recorder *second = f.screen("Q");
        f.screens["A"]->presentViewController(first, false);
        // Asking the covered screen again stacks the new one on top of the chain.
        f.screens["A"]->presentViewController(second, false);
        QCOMPARE(f.window.presentedViewControllers(), (QList<ViewController *>{first, second}));
        QCOMPARE(second->presentingViewController(), first);

        // Dismissing from the bottom presenter takes the whole chain; only the top was visible.
        f.log.clear();
        QSignalSpy dismissed(&f.window, &Window::dismissed);
        f.navigation->dismissViewController(false);
        QCOMPARE(f.log, calls("Q.viewWillDisappear A.viewWillAppear Q.viewDidDisappear "
                              "A.viewDidAppear"));
        QCOMPARE(dismissed.count(), 1);
        QCOMPARE(dismissed.at(0).at(0).toInt(), 0);
        QTRY_VERIFY(!f.screens["P"] && !f.screens["Q"]);
    }

    void dismissWithNothingPresentedStillCompletes()
    {
        StackFixture f;
        f.build(QStringLiteral("A"));
        f.show();
        f.log.clear();
        bool completed = false;
        f.screens["A"]->dismissViewController(true, [&] { completed = true; });
        QVERIFY(completed);
        QVERIFY(f.log.isEmpty());
    }

    void viewDrivenPresentationWaitsForTheSheet()
    {
        StackFixture f;
        f.build(QStringLiteral("A"));
        f.show();
        f.window.setTransitionsDrivenByView(true);
        f.log.clear();
        bool completed = false;
        f.screens["A"]->presentViewController(f.screen("S"), true, [&] { completed = true; });
        QVERIFY(!completed);
        QCOMPARE(f.log, calls("A.viewWillDisappear S.viewDidLoad S.viewWillAppear"));
        f.window.finishTransition();
        QVERIFY(completed);
        QCOMPARE(f.log.last(), QStringLiteral("S.viewDidAppear"));
    }

    void replacingTheRootDeletesTheOldTreeLater()
    {
        StackFixture f;
        f.build(QStringLiteral("A"));
        f.show();
        f.screens["A"]->presentViewController(f.screen("S"), false);
        QPointer<NavigationController> oldRoot = f.navigation;
        f.log.clear();

        QSignalSpy rootChanged(&f.window, &Window::rootViewControllerChanged);
        auto *fresh = new NavigationController(f.screen("N"));
        f.window.setRootViewController(fresh);
        // What was on top (the presented sheet) goes; the new root comes.
        QCOMPARE(f.log, calls("S.viewWillDisappear N.viewDidLoad N.viewWillAppear "
                              "S.viewDidDisappear N.viewDidAppear"));
        QCOMPARE(rootChanged.count(), 1);
        QCOMPARE(f.window.rootViewController(), fresh);
        QVERIFY(f.window.presentedViewControllers().isEmpty());
        QVERIFY(oldRoot); // deleted later, not under the caller's feet
        QTRY_VERIFY(!oldRoot && !f.screens["A"] && !f.screens["S"]);
        QCOMPARE(fresh->window(), &f.window);
    }

    void rootDeletedFromOutsideEmptiesTheWindow()
    {
        StackFixture f;
        f.build(QStringLiteral("A"));
        f.show();
        QSignalSpy rootChanged(&f.window, &Window::rootViewControllerChanged);
        delete f.navigation;
        QCOMPARE(rootChanged.count(), 1);
        QCOMPARE(f.window.rootViewController(), nullptr);
        QCOMPARE(f.window.topViewController(), nullptr);
    }

    void hiddenWindowShowsOnlyWhatIsOnTopWhenShown()
    {
        StackFixture f;
        f.build(QStringLiteral("AB"));
        f.window.setRootViewController(f.navigation);
        f.navigation->pushViewController(f.screen("C"), true);
        QVERIFY(f.log.isEmpty());
        f.window.makeKeyAndVisible();
        QCOMPARE(f.log, calls("C.viewDidLoad C.viewWillAppear C.viewDidAppear"));
        QCOMPARE(Window::keyWindow(), &f.window);
    }
};

TARVEL_TEST_MAIN(TestPlatformUiControllers)
#include "tst_platformui_controllers.moc"
