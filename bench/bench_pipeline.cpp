// Cost of the request pipeline: sequential GETs of one catalogue page through NetWorkHelper
// (parameters, callbacks, envelope parsing) against the same GETs sent by a bare
// QNetworkAccessManager set up alike (transfer timeout, shared cookie store), once only reading the
// body and once also decoding it to QVariant as any client of the store must. All talk to the same
// loopback server, interleaved.
#include "ScriptedHttpServer.h"
#include "platform/HTTPCookieStorage.h"
#include "service/NetWorkHelper.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using tarvel::test::ScriptedHttpServer;
using tarvel::test::ScriptedResponse;

namespace {

// A page of 20 games, about the size of a real "/products.json" answer.
QByteArray catalogPage()
{
    QByteArray games;
    for (int i = 0; i < 20; ++i) {
        if (i)
            games += ',';
        games += QByteArray(R"({"id":)") + QByteArray::number(i) + R"(,"title":"星际远征 第)"
                 + QByteArray::number(i)
                 + R"(章","price":"58.0","original_price":"98.0","img":"/images/)"
                 + QByteArray::number(i) + R"(.jpg","release_date":1700000000,"platform":"PC"})";
    }
    return R"({"status":"success","data":[)" + games + "]}";
}

// Runs `send(done)` and spins the event loop until it calls done.
void runOne(const std::function<void(std::function<void()>)> &send)
{
    QEventLoop loop;
    bool finished = false;
    send([&] {
        finished = true;
        loop.quit();
    });
    if (!finished)
        loop.exec();
}

double medianMicros(std::vector<double> samples)
{
    std::sort(samples.begin(), samples.end());
    return samples[samples.size() / 2];
}

} // namespace

int main(int argc, char *argv[])
{
    QTemporaryDir home;
    qputenv("TARVEL_HOME", home.path().toUtf8());
    qputenv("no_proxy", "*");
    QCoreApplication app(argc, argv);
    const int requests = argc > 1 ? std::max(10, atoi(argv[1])) : 2000;

    ScriptedHttpServer server;
    if (!server.listen()) {
        std::fprintf(stderr, "cannot listen on loopback\n");
        return 1;
    }
    server.setFallback(ScriptedResponse::json(catalogPage()));
    qputenv("TARVEL_API_BASE_URL", server.baseUrl().toUtf8());

    NetWorkHelper *helper = NetWorkHelper::shareInstance();
    int failures = 0;
    const auto throughHelper = [&](int page) {
        runOne([&](std::function<void()> done) {
            helper->getGameListWithType(
                    QStringLiteral("latest"), QString::number(page), {}, {},
                    [done](const QVariant &, const QVariant &) { done(); },
                    [done, &failures](const QVariant &, const QString &, const QVariant &) {
                        ++failures;
                        done();
                    });
        });
    };
    QNetworkAccessManager bare;
    // Same client settings, so that the difference is the pipeline alone.
    bare.setTransferTimeout(NetWorkHelper::DefaultTimeoutMs);
    platform::HTTPCookieStorage::attachTo(&bare);
    const auto throughBareManager = [&](int page, bool decode) {
        runOne([&](std::function<void()> done) {
            const QUrl url(server.baseUrl() + QStringLiteral("/products.json?type=latest&page=")
                           + QString::number(page));
            QNetworkReply *reply = bare.get(QNetworkRequest(url));
            QObject::connect(reply, &QNetworkReply::finished, [reply, done, decode] {
                const QByteArray body = reply->readAll();
                if (decode)
                    QJsonDocument::fromJson(body).toVariant();
                reply->deleteLater();
                done();
            });
        });
    };

    // Interleaved rounds so that drift of the machine hits both alike.
    std::vector<double> helperSamples, bareSamples, decodingSamples;
    for (int i = 0; i < 50; ++i) {
        throughHelper(i);
        throughBareManager(i, false);
        throughBareManager(i, true);
    }
    QElapsedTimer timer;
    for (int i = 0; i < requests; ++i) {
        timer.start();
        throughHelper(i);
        helperSamples.push_back(timer.nsecsElapsed() / 1000.0);
        timer.start();
        throughBareManager(i, false);
        bareSamples.push_back(timer.nsecsElapsed() / 1000.0);
        timer.start();
        throughBareManager(i, true);
        decodingSamples.push_back(timer.nsecsElapsed() / 1000.0);
    }

    const double helperMedian = medianMicros(helperSamples);
    const double bareMedian = medianMicros(bareSamples);
    const double decodingMedian = medianMicros(decodingSamples);
    std::printf("bench_pipeline: %d sequential GETs of a %lld-byte catalogue page\n", requests,
                static_cast<long long>(catalogPage().size()));
    std::printf("  NetWorkHelper              median %8.1f us/request\n", helperMedian);
    std::printf("  bare manager, read only    median %8.1f us/request\n", bareMedian);
    std::printf("  bare manager, JSON decode  median %8.1f us/request\n", decodingMedian);
    std::printf("  ratio to read only         %8.3f (the difference includes the JSON decode)\n",
                helperMedian / bareMedian);
    std::printf("  pipeline overhead ratio    %8.3f (to read + decode; goal: under 1.10)\n",
                helperMedian / decodingMedian);
    if (failures)
        std::printf("  note: %d helper requests failed\n", failures);
    return 0;
}
