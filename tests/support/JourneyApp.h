#pragma once

#include "HudRecorder.h"
#include "QuickTestItems.h"
#include "StoreProcess.h"
#include "TestEnvironment.h"

#include "app/AppDelegate.h"
#include "app/AppLaunch.h"
#include "app/WindowSnapshot.h"
#include "platform/kits/WeChatPayPrompt.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TabBarController.h"
#include "platform/ui/TextField.h"
#include "platform/ui/Window.h"
#include "screens/purchase/BuySuccessViewController.h"

#include <QByteArray>
#include <QDir>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <memory>

namespace tarvel::test {

// Sends `request` on `network` (a POST when `postBody` is given) and answers the body; `status`
// receives the HTTP status.
inline QByteArray exchange(QNetworkAccessManager *network, const QNetworkRequest &request,
                           const QByteArray &postBody = {}, int *status = nullptr)
{
    QNetworkReply *reply
            = postBody.isNull() ? network->get(request) : network->post(request, postBody);
    QSignalSpy finished(reply, &QNetworkReply::finished);
    if (!reply->isFinished())
        finished.wait(10000);
    if (status)
        *status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QByteArray body = reply->readAll();
    reply->deleteLater();
    return body;
}

// A journey as a customer makes it: tarvel-store runs as its own process on its own database (with
// the sandbox parties), and the app starts as main() starts it, offscreen, against that store. The
// helpers look at the window as a user does: items that show, taps once things stand still.
class JourneyApp
{
public:
    static constexpr int WaitMs = 15000;

    ~JourneyApp()
    {
        close();
        stopStore();
    }

    // Starts the store on `port` (0: one the system picks) and points the app at it; true once it
    // answers.
    bool startStore(int port = 0)
    {
        if (!m_storeFolder.isValid())
            return false;
        m_port = startStoreOnPort(m_storeProcess,
                                  {QStringLiteral("--db"), databasePath(),
                                   QStringLiteral("--quiet"), QStringLiteral("--sandbox")},
                                  port);
        if (m_port <= 0)
            return false;
        qputenv("TARVEL_API_BASE_URL", baseUrl().toUtf8());
        return QTest::qWaitFor(
                [this] { return storeData(QStringLiteral("/store.json")).isValid(); }, 30000);
    }

    void stopStore()
    {
        if (m_storeProcess.state() == QProcess::NotRunning)
            return;
        m_storeProcess.terminate();
        if (!m_storeProcess.waitForFinished(10000))
            m_storeProcess.kill();
    }

    int port() const { return m_port; }
    QString baseUrl() const { return QStringLiteral("http://127.0.0.1:%1").arg(m_port); }
    QString databasePath() const { return storeFile(QStringLiteral("store.sqlite")); }
    // A file beside the store's database, removed with it.
    QString storeFile(const QString &name) const { return m_storeFolder.filePath(name); }

    // GET `pathAndQuery` of the store on `network` (the fixture's own when none is given, apart
    // from the app's session and cookies) and the decoded body.
    QVariant storeAnswer(const QString &pathAndQuery, QNetworkAccessManager *network = nullptr)
    {
        return QJsonDocument::fromJson(exchange(network ? network : &m_network,
                                                QNetworkRequest(QUrl(baseUrl() + pathAndQuery))))
                .toVariant();
    }
    // The same, its "data".
    QVariant storeData(const QString &pathAndQuery, QNetworkAccessManager *network = nullptr)
    {
        return storeAnswer(pathAndQuery, network).toMap().value(QStringLiteral("data"));
    }
    // The latest SMS or mail the store's sandbox sent to `to`, or nothing.
    QVariantMap lastMessage(const QString &to)
    {
        const QVariantList list = storeData(QStringLiteral("/sandbox/outbox.json?to=")
                                            + QString::fromLatin1(QUrl::toPercentEncoding(to)))
                                          .toList();
        return list.isEmpty() ? QVariantMap() : list.constFirst().toMap();
    }
    // The ids of the first page of the store's latest games, in its order.
    QStringList latestGameIds()
    {
        QStringList ids;
        for (const QVariant &game :
             storeData(QStringLiteral("/products.json?type=latest&page=1")).toList())
            ids.append(game.toMap().value(QStringLiteral("id")).toString());
        return ids;
    }

    // Starts the app (again: the previous window goes first); true once its window shows the
    // tab bar.
    bool launch()
    {
        close();
        m_engine = std::make_unique<QQmlApplicationEngine>();
        m_window = AppLaunch::launch(*qGuiApp, *m_engine);
        return m_window && QTest::qWaitForWindowExposed(m_window)
               && QTest::qWaitFor([this] { return tabs() != nullptr; }, WaitMs);
    }

    // Closes the app's window and engine; what the app stored stays.
    void close()
    {
        m_engine.reset();
        m_window = nullptr;
    }

    QQuickWindow *window() const { return m_window; }
    QQuickItem *root() const { return m_window ? m_window->contentItem() : nullptr; }

    platform::TabBarController *tabs() const
    {
        platform::Window *window = AppDelegate::shared()->window();
        return window ? qobject_cast<platform::TabBarController *>(window->rootViewController())
                      : nullptr;
    }
    platform::NavigationController *stack(int tab) const
    {
        platform::TabBarController *bar = tabs();
        return bar ? qobject_cast<platform::NavigationController *>(bar->viewControllerAt(tab))
                   : nullptr;
    }
    platform::ViewController *top(int tab) const
    {
        platform::NavigationController *navigation = stack(tab);
        return navigation ? navigation->topViewController() : nullptr;
    }
    // The first screen of tab `tab`'s stack, when it is a `Screen`.
    template<typename Screen>
    Screen *first(int tab) const
    {
        platform::NavigationController *navigation = stack(tab);
        return navigation ? qobject_cast<Screen *>(navigation->viewControllerAt(0)) : nullptr;
    }

    // The screen the user sees, once it is a `Screen` and no stack is sliding; null otherwise.
    template<typename Screen>
    Screen *waitForScreen()
    {
        Screen *screen = nullptr;
        const bool shown = QTest::qWaitFor(
                [&] {
                    screen = qobject_cast<Screen *>(AppDelegate::shared()->visibleViewController());
                    return screen && !stacksBusy(root());
                },
                WaitMs);
        return shown ? screen : nullptr;
    }

    // The first shown item named `name`, once there is one.
    QQuickItem *waitNamed(const QString &name)
    {
        QQuickItem *found = nullptr;
        if (!QTest::qWaitFor([&] { return (found = findNamed(root(), name)) != nullptr; }, WaitMs))
            qWarning() << "no item named" << name;
        return found;
    }

    // The same, once its middle is inside the window (sheets slide in from below it).
    QQuickItem *waitOnScreen(const QString &name)
    {
        QQuickItem *found = nullptr;
        if (!QTest::qWaitFor(
                    [&] {
                        found = findNamed(root(), name);
                        return found && inWindow(found);
                    },
                    WaitMs))
            qWarning() << "no item named" << name << "on screen";
        return found;
    }

    // Whether `item` has come to rest with its middle inside the window.
    bool waitInWindow(QQuickItem *item)
    {
        QPointer<QQuickItem> target(item);
        QPointF last(-1, -1);
        return target
               && QTest::qWaitFor(
                       [&] {
                           if (!target)
                               return false;
                           const QPointF centre = middle(target);
                           const bool resting = centre == last && inWindow(target);
                           last = centre;
                           return resting;
                       },
                       WaitMs);
    }

    // A tap as a user makes it: once the HUD of the last step has gone (its mask takes touches;
    // see setTapsWaitForHud) and the item rests inside the window.
    bool tap(QQuickItem *item)
    {
        const bool hudGone
                = !m_tapsWaitForHud
                  || QTest::qWaitFor([] { return !platform::Hud::shared().isVisible(); }, WaitMs);
        return hudGone && waitInWindow(item) && tapWhenStill(m_window, item);
    }
    // For journeys whose HUDs stay up (a long auto-dismiss interval) and take no touches.
    void setTapsWaitForHud(bool wait) { m_tapsWaitForHud = wait; }

    bool tapNamed(const QString &name)
    {
        const bool tapped = tap(waitOnScreen(name));
        if (!tapped)
            qWarning() << "could not tap" << name << "stacks busy:" << stacksBusy(root());
        return tapped;
    }

    // What typing into the field named `name` leaves: the text in the field's state (the
    // on-screen keyboard is the platform's).
    bool fill(const QString &name, const QString &text)
    {
        QQuickItem *field = waitOnScreen(name);
        auto *state = field ? field->property("state").value<platform::TextField *>() : nullptr;
        if (!state)
            return false;
        state->setText(text);
        return true;
    }

    // The sign-in form on screen, filled and sent.
    bool signIn(const QString &account, const QString &password)
    {
        return fill(QStringLiteral("fieldUser"), account)
               && fill(QStringLiteral("fieldPassword"), password)
               && tapNamed(QStringLiteral("buttonLogin"));
    }

    // Pays the order screen on top in the WeChat sandbox: the pay button, then the sheet's
    // confirm once the sheet has slid in and takes it; the purchase result that follows, or null.
    BuySuccessViewController *payInWeChatSandbox()
    {
        if (!tapNamed(QStringLiteral("confirmPayButton")))
            return nullptr;
        QQuickItem *confirm = waitOnScreen(QStringLiteral("weChatPayConfirm"));
        if (!confirm
            || !QTest::qWaitFor([] { return platform::WeChatPayPrompt::shared().canConfirm(); },
                                WaitMs)
            || !tap(confirm))
            return nullptr;
        return waitForScreen<BuySuccessViewController>();
    }

    // A tap at a point of the window, where no named item stands (the bar's back button).
    void tapAt(const QPoint &point) { QTest::mouseClick(m_window, Qt::LeftButton, {}, point); }

    // The back button at the left of the navigation bar, once no stack is sliding.
    bool tapBack()
    {
        if (!QTest::qWaitFor([this] { return !stacksBusy(root()); }))
            return false;
        tapAt(QPoint(22, 42));
        return true;
    }

    // Whether the HUD has shown `text` since HudRecorder was last cleared.
    static bool waitForHud(const QString &text, int timeoutMs = WaitMs)
    {
        return QTest::qWaitFor([&] { return HudRecorder::shared().history().contains(text); },
                               timeoutMs);
    }

    // Writes the window, once it stands still, to the review folder as `name`.
    bool snapshot(const QString &name)
    {
        return waitForStillScene(m_window)
               && WindowSnapshot::save(m_window,
                                       QDir(TestEnvironment::artifactsDir()).filePath(name));
    }

private:
    static QPointF middle(const QQuickItem *item)
    {
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    }
    bool inWindow(const QQuickItem *item) const
    {
        return QRectF(0, 0, m_window->width(), m_window->height()).contains(middle(item));
    }

    QTemporaryDir m_storeFolder;
    QProcess m_storeProcess;
    int m_port = 0;
    bool m_tapsWaitForHud = true;
    QNetworkAccessManager m_network;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    QQuickWindow *m_window = nullptr;
};

} // namespace tarvel::test
