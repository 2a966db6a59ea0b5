// Start-up and scrolling of the app against tarvel-store on loopback. The benchmark starts the
// store (its catalogue grown to 640 products), then launches itself ten times as the app (the
// probe: started as main.cpp starts tarvel, offscreen, with a fresh app home each time) and
// reports the medians of
//  - the time from launching the process to the window's first frame,
//  - the time until the home grid shows its first page with the covers on screen loaded,
//  - the time to fling the grid down a screen per frame through 500 games (25 pages of 20) until
//    the covers at the end show, and the memory (RSS) after.
// Nothing is asserted; the numbers are printed.
#include "InProcessStore.h"
#include "StoreContext.h"

#include "app/AppDelegate.h"
#include "app/AppLaunch.h"
#include "app/ICTabBarController.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/Window.h"
#include "screens/store/TabOneViewController.h"

#include <QDateTime>
#include <QFile>
#include <QGuiApplication>
#include <QPointer>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <cstdio>
#include <vector>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

namespace {

constexpr int Runs = 10;
constexpr int ScrollGames = 500;
constexpr int ProbeTimeoutMs = 180000;
const char *const ProbeArgument = "--probe";
const char *const FloorExecutable = "bare_quick_window";

qint64 nowMs()
{
    return QDateTime::currentMSecsSinceEpoch();
}

// ---- the probe: one launch of the app --------------------------------------------------------

long residentKilobytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    }
    return -1;
}

void collect(QQuickItem *item, const QString &name, QList<QQuickItem *> *found)
{
    if (!item->isVisible())
        return;
    if (item->objectName() == name)
        found->append(item);
    for (QQuickItem *child : item->childItems())
        collect(child, name, found);
}

// Whether every grid cell inside the window shows its loaded cover (and there is one at least).
bool coversOnScreenLoaded(QQuickWindow *window)
{
    QList<QQuickItem *> cells;
    collect(window->contentItem(), QStringLiteral("homePageViewCell"), &cells);
    int onScreen = 0;
    for (QQuickItem *cell : cells) {
        const QRectF box = cell->mapRectToScene(QRectF(0, 0, cell->width(), cell->height()));
        if (!box.intersects(QRectF(0, 0, window->width(), window->height())))
            continue;
        if (!cell->property("coverReady").toBool())
            return false;
        ++onScreen;
    }
    return onScreen > 0;
}

QQuickItem *homeGrid(QQuickWindow *window)
{
    QList<QQuickItem *> found;
    collect(window->contentItem(), QStringLiteral("homeGrid"), &found);
    return found.value(0);
}

// One launch of the app, started as main.cpp starts it, watched until the home grid has shown
// its first page and been scrolled through.
class Probe : public QObject
{
public:
    explicit Probe(qint64 launchedAt)
        : m_launchedAt(launchedAt)
    { }

    // As main.cpp: the delegate launches (the tab bar goes in), then the window's QML loads.
    bool start(QGuiApplication *application)
    {
        m_appReady = nowMs() - m_launchedAt;
        m_window = AppLaunch::launch(*application, m_engine, &m_phases);
        if (!m_window)
            return false;
        connect(m_window, &QQuickWindow::frameSwapped, this, [this] {
            if (m_firstFrame < 0) {
                m_firstFrame = nowMs() - m_launchedAt;
                m_firstFrameRssKb = residentKilobytes();
            }
        });
        connect(&m_tick, &QTimer::timeout, this, [this] { step(); });
        m_tick.start(5);
        return true;
    }

private:
    void step()
    {
        if (m_firstFrame < 0 || !findHome())
            return;
        if (m_firstPage < 0) {
            if (m_home->pageNum() >= 2 && coversOnScreenLoaded(m_window)) {
                m_firstPage = nowMs() - m_launchedAt;
                m_firstPageRssKb = residentKilobytes();
                m_scrollStart = nowMs();
            }
            return;
        }
        if (m_scrollEnd < 0) {
            scroll();
            return;
        }
        if (coversOnScreenLoaded(m_window))
            finish(); // the pictures at the end of the scroll are there too
    }

    // The home tab's screen: the root of the tab bar's first navigation stack.
    bool findHome()
    {
        if (m_home)
            return true;
        auto *tabs = qobject_cast<ICTabBarController *>(
                AppDelegate::shared()->window()->rootViewController());
        auto *stack
                = tabs ? qobject_cast<platform::NavigationController *>(tabs->viewControllerAt(0))
                       : nullptr;
        m_home = stack ? qobject_cast<TabOneViewController *>(stack->viewControllerAt(0)) : nullptr;
        return m_home != nullptr;
    }

    // Flings the grid down a screen per frame, as a user in a hurry would; reaching the end asks
    // for the next page. Done when 500 games are in (or the catalogue ends).
    void scroll()
    {
        platform::RefreshFooter *footer = m_home->refreshFooter();
        if (m_home->arraySource().size() >= ScrollGames
            || footer->state() == platform::RefreshFooter::NoMoreData) {
            m_scrollEnd = nowMs();
            return;
        }
        QQuickItem *grid = homeGrid(m_window);
        if (!grid || nowMs() - m_lastStep < 16)
            return;
        m_lastStep = nowMs();
        const qreal bottom = grid->property("contentHeight").toReal()
                             + grid->property("originY").toReal() - grid->height();
        const qreal next = std::min(bottom, grid->property("contentY").toReal() + grid->height());
        grid->setProperty("contentY", next);
    }

    void finish()
    {
        m_tick.stop();
        const qint64 scrolled = nowMs() - m_scrollStart;
        std::printf("probe first_frame=%lld first_page=%lld scroll=%lld games=%lld rss_kb=%ld "
                    "first_frame_rss_kb=%ld first_page_rss_kb=%ld app_ready=%lld delegate=%lld "
                    "window=%lld\n",
                    m_firstFrame, m_firstPage, scrolled, qint64(m_home->arraySource().size()),
                    residentKilobytes(), m_firstFrameRssKb, m_firstPageRssKb, m_appReady,
                    m_phases.delegateMs, m_phases.windowMs);
        std::fflush(stdout);
        QCoreApplication::exit(0);
    }

    qint64 m_launchedAt;
    QQmlApplicationEngine m_engine;
    QQuickWindow *m_window = nullptr;
    QPointer<TabOneViewController> m_home;
    QTimer m_tick;
    qint64 m_appReady = -1;
    AppLaunch::Phases m_phases;
    qint64 m_firstFrame = -1;
    long m_firstFrameRssKb = -1;
    long m_firstPageRssKb = -1;
    qint64 m_firstPage = -1;
    qint64 m_scrollStart = -1;
    qint64 m_scrollEnd = -1;
    qint64 m_lastStep = 0;
};

int runProbe(int argc, char *argv[])
{
    const qint64 launchedAt = qEnvironmentVariable("TARVEL_BENCH_LAUNCHED_AT").toLongLong();
    AppLaunch::prepare();
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("tarvel"));
    Probe probe(launchedAt);
    if (!probe.start(&app))
        return 1;
    return app.exec();
}

// ---- the benchmark: store, launches, report --------------------------------------------------

// Copies the seeded catalogue under new ids until it holds at least `wanted` products.
void growCatalogue(StoreContext &context, int wanted)
{
    context.database().write([wanted](SQLite::Database &db) {
        const int seeded = db.execAndGet("SELECT COUNT(*) FROM products").getInt();
        for (int copy = 1; seeded > 0 && seeded * copy < wanted; ++copy) {
            const int offset = copy * 1000;
            SQLite::Statement products(
                    db, "INSERT INTO products SELECT id + ?1, kind, title || ' ' || ?2, "
                        "alias_name, raw_summary, list_price, sale_price, release_date, min_age, "
                        "blocked, CASE WHEN parent_id IS NULL THEN NULL ELSE parent_id + ?1 END, "
                        "filesize, pubtype, install_type, code_type, manual, rec_rank, sales "
                        "FROM products WHERE id < 1000");
            products.bind(1, offset);
            products.bind(2, std::to_string(copy + 1));
            products.exec();
            SQLite::Statement attributes(
                    db, "INSERT INTO product_attributes SELECT product_id + ?1, attribute, "
                        "position, name FROM product_attributes WHERE product_id < 1000");
            attributes.bind(1, offset);
            attributes.exec();
            SQLite::Statement bundles(db,
                                      "INSERT INTO bundle_items SELECT bundle_id + ?1, "
                                      "product_id + ?1 FROM bundle_items WHERE bundle_id < 1000");
            bundles.bind(1, offset);
            bundles.exec();
        }
    });
}

struct Sample
{
    qint64 firstFrame = -1;
    qint64 firstPage = -1;
    qint64 scroll = -1;
    qint64 games = 0;
    long rssKb = -1;
    long firstFrameRssKb = -1;
    long firstPageRssKb = -1;
    // Where the first frame's time goes: the process and application object, the delegate's
    // launch, the window's QML, and the rest (layout and the first render).
    qint64 appReady = -1;
    qint64 delegate = -1;
    qint64 window = -1;
};

// Starts `program` with `arguments` as a fresh app would start (own process, fresh app home,
// offscreen unless told otherwise) and answers the last line it printed, or nothing.
QByteArray launch(const QString &program, const QStringList &arguments, const QString &baseUrl)
{
    QTemporaryDir home;
    QProcess probe;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TARVEL_API_BASE_URL"), baseUrl);
    environment.insert(QStringLiteral("TARVEL_HOME"), home.path());
    if (!environment.contains(QStringLiteral("QT_QPA_PLATFORM")))
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    probe.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const qint64 launchedAt = nowMs();
    environment.insert(QStringLiteral("TARVEL_BENCH_LAUNCHED_AT"), QString::number(launchedAt));
    probe.setProcessEnvironment(environment);
    probe.start(program, arguments);
    if (!probe.waitForFinished(ProbeTimeoutMs) || probe.exitCode() != 0) {
        probe.kill();
        probe.waitForFinished();
        return {};
    }
    return probe.readAllStandardOutput().trimmed().split('\n').constLast();
}

bool launchProbe(const QString &self, const QString &baseUrl, Sample *sample)
{
    const QByteArray line = launch(self, {QString::fromLatin1(ProbeArgument)}, baseUrl);
    return std::sscanf(line.constData(),
                       "probe first_frame=%lld first_page=%lld scroll=%lld games=%lld rss_kb=%ld "
                       "first_frame_rss_kb=%ld first_page_rss_kb=%ld app_ready=%lld delegate=%lld "
                       "window=%lld",
                       &sample->firstFrame, &sample->firstPage, &sample->scroll, &sample->games,
                       &sample->rssKb, &sample->firstFrameRssKb, &sample->firstPageRssKb,
                       &sample->appReady, &sample->delegate, &sample->window)
           == 10;
}

// The floor is its own small executable beside this one, so that it loads nothing of the app.
bool launchFloor(qint64 *firstFrame, long *rssKb)
{
    const QString floor = QCoreApplication::applicationDirPath() + QLatin1Char('/')
                          + QLatin1String(FloorExecutable);
    const QByteArray line = launch(floor, {}, QString());
    return std::sscanf(line.constData(), "floor first_frame=%lld rss_kb=%ld", firstFrame, rssKb)
           == 2;
}

template<typename T>
T median(std::vector<T> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? T(-1) : values[values.size() / 2];
}

template<typename T>
void report(const char *what, const char *unit, const std::vector<T> &values, double goal)
{
    if (values.empty())
        return;
    const T low = *std::min_element(values.begin(), values.end());
    const T high = *std::max_element(values.begin(), values.end());
    std::printf("%-34s median %7.1f %s   (min %.1f, max %.1f)", what, double(median(values)), unit,
                double(low), double(high));
    if (goal > 0)
        std::printf("   goal: under %.0f %s", goal, unit);
    std::printf("\n");
}

int runBenchmark(int argc, char *argv[])
{
    // The store draws its pictures with fonts, which need a GUI application.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    StoreOptions options;
    options.requestLog = nullptr;
    options.outboxLog = nullptr;
    tarvel::test::InProcessStore store(options);
    if (!store.isRunning()) {
        std::printf("bench_startup: tarvel-store did not start\n");
        return 1;
    }
    growCatalogue(store.context(), ScrollGames + 100);
    store.restart();

    std::printf("start-up and scrolling against tarvel-store at %s, %d launches\n",
                qPrintable(store.baseUrl()), Runs);
    std::vector<qint64> firstFrames, firstPages, scrolls, floorFrames;
    std::vector<qint64> appReadies, delegates, windows, renders;
    std::vector<double> rssMb, floorRssMb, firstFrameRssMb, firstPageRssMb;
    qint64 games = 0;
    for (int run = 0; run < Runs; ++run) {
        // The floor and the app take turns, so that both see the same machine.
        qint64 floorFrame = -1;
        long floorRss = -1;
        if (launchFloor(&floorFrame, &floorRss)) {
            floorFrames.push_back(floorFrame);
            floorRssMb.push_back(floorRss / 1024.0);
        } else {
            std::printf("  bare window %d failed\n", run + 1);
        }
        Sample sample;
        if (!launchProbe(QCoreApplication::applicationFilePath(), store.baseUrl(), &sample)) {
            std::printf("  launch %d failed\n", run + 1);
            continue;
        }
        std::printf("  launch %2d: first frame %4lld ms (bare window %4lld ms), first page %5lld "
                    "ms, %lld games in %6lld ms, RSS %.1f MB\n",
                    run + 1, sample.firstFrame, floorFrame, sample.firstPage, sample.games,
                    sample.scroll, sample.rssKb / 1024.0);
        std::fflush(stdout);
        firstFrames.push_back(sample.firstFrame);
        firstPages.push_back(sample.firstPage);
        scrolls.push_back(sample.scroll);
        rssMb.push_back(sample.rssKb / 1024.0);
        firstFrameRssMb.push_back(sample.firstFrameRssKb / 1024.0);
        appReadies.push_back(sample.appReady);
        delegates.push_back(sample.delegate);
        windows.push_back(sample.window);
        renders.push_back(sample.firstFrame - sample.appReady - sample.delegate - sample.window);
        firstPageRssMb.push_back(sample.firstPageRssKb / 1024.0);
        games = sample.games;
    }
    report("bare Qt Quick window, first frame", "ms", floorFrames, 0);
    report("bare Qt Quick window, memory", "MB", floorRssMb, 0);
    report("app: time to first frame", "ms", firstFrames, 0);
    report("  of which process and app object", "ms", appReadies, 0);
    report("  of which the delegate's launch", "ms", delegates, 0);
    report("  of which the window's QML", "ms", windows, 0);
    report("  of which the first render", "ms", renders, 0);
    report("app: first page with pictures", "ms", firstPages, 0);
    report("app: memory at the first frame", "MB", firstFrameRssMb, 0);
    report("app: memory at the first page", "MB", firstPageRssMb, 0);
    const qint64 floor = median(floorFrames);
    if (floor > 0 && !firstFrames.empty() && !firstPages.empty()) {
        std::printf("first frame / bare window: %.2f (goal: at most 2)\n",
                    double(median(firstFrames)) / double(floor));
        std::printf("first page / bare window:  %.2f (goal: at most 3)\n",
                    double(median(firstPages)) / double(floor));
    } else {
        std::printf("no ratio: the bare window or the app did not start every time\n");
    }
    std::printf("scrolling through %lld games:\n", games);
    report("  time", "ms", scrolls, 0);
    report("  memory after the scroll (RSS)", "MB", rssMb, 60);
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        if (qstrcmp(argv[i], ProbeArgument) == 0)
            return runProbe(argc, argv);
    }
    return runBenchmark(argc, argv);
}
