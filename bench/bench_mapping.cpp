// Mapping cost of a catalogue page: decoding "/products.json" and mapping its games onto
// Object_HomeGames, against a bare QJsonDocument::fromJson of the same bytes.

#include "models/Object_HomeGames.h"
#include "util/ICRuntimeHelper.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QTextStream>

#include <algorithm>
#include <functional>

namespace {

const QStringList Titles{QStringLiteral("古墓丽影：暗影"), QStringLiteral("巫师3：狂猎 年度版"),
                         QStringLiteral("文明VI 完整版"),  QStringLiteral("全面战争：三国"),
                         QStringLiteral("仙剑奇侠传七"),   QStringLiteral("黑暗之魂III 豪华版"),
                         QStringLiteral("星露谷物语"),     QStringLiteral("赛博朋克2077")};

QJsonObject game(int index)
{
    const double listPrice = 48 + (index % 17) * 10;
    QJsonObject entry;
    entry.insert("id", 10000 + index);
    entry.insert("title", Titles.at(index % Titles.size()) + QString::number(index));
    entry.insert("alias_name", QStringLiteral("Sample Game %1").arg(index));
    entry.insert("game_status", index % 5 == 0 ? "presale" : "on_sale");
    entry.insert("list_price", QString::number(listPrice));
    entry.insert("sale_price",
                 index % 3 == 0 ? QJsonValue(listPrice * 0.75) : QJsonValue(listPrice));
    entry.insert("install_type", "steam");
    entry.insert("code_type", "cdkey");
    entry.insert("product_image",
                 QStringLiteral("http://img.tarvel.example/products/%1/cover.jpg").arg(index));
    entry.insert("release_date", QString::number(1500000000 + index * 86400));
    entry.insert("type_name", QStringLiteral("游戏本体"));
    entry.insert("available", true);
    return entry;
}

QByteArray productsPage(int games)
{
    QJsonArray data;
    for (int i = 0; i < games; ++i)
        data.append(game(i));
    QJsonObject envelope{{"status", "success"}, {"message", QString()}, {"data", data}};
    return QJsonDocument(envelope).toJson(QJsonDocument::Compact);
}

// Median nanoseconds of one run of `work`, over enough runs to take about `budgetMs`.
qint64 medianNanoseconds(const std::function<qsizetype()> &work, int budgetMs)
{
    QList<qint64> samples;
    QElapsedTimer total;
    total.start();
    qsizetype sink = 0;
    while (samples.size() < 15 || (total.elapsed() < budgetMs && samples.size() < 5000)) {
        QElapsedTimer timer;
        timer.start();
        sink += work();
        samples.append(timer.nsecsElapsed());
    }
    std::sort(samples.begin(), samples.end());
    if (sink < 0)
        qWarning("unreachable");
    return samples.at(samples.size() / 2);
}

QList<Object_HomeGames> mapPage(const QVariant &decoded)
{
    const QVariant data = decoded.toMap().value(QStringLiteral("data"));
    return ICRuntimeHelper::analysArrayData<Object_HomeGames>(data).value_or(
            QList<Object_HomeGames>());
}

// The same mapping done the obvious way, looking each key up by name per record: the baseline the
// cached property tables are measured against.
QList<Object_HomeGames> mapPageByName(const QVariant &decoded)
{
    QList<Object_HomeGames> games;
    const QMetaObject &type = Object_HomeGames::staticMetaObject;
    for (const QVariant &element : decoded.toMap().value(QStringLiteral("data")).toList()) {
        Object_HomeGames game;
        const QVariantMap dictionary = element.toMap();
        for (auto it = dictionary.cbegin(); it != dictionary.cend(); ++it) {
            const int index = type.indexOfProperty(it.key().toLatin1().constData());
            const QString text = JSONModel::textFromJSON(it.value());
            if (index >= 0 && !text.isNull())
                type.property(index).writeOnGadget(&game, text);
        }
        games.append(game);
    }
    return games;
}

void report(QTextStream &out, int games)
{
    const QByteArray bytes = productsPage(games);
    const QVariant decoded = QJsonDocument::fromJson(bytes).toVariant();
    if (mapPage(decoded).size() != games)
        qFatal("the page did not map onto %d games", games);

    const qint64 bare = medianNanoseconds(
            [&] { return QJsonDocument::fromJson(bytes).object().size(); }, 2000);
    const qint64 decode = medianNanoseconds(
            [&] { return QJsonDocument::fromJson(bytes).toVariant().toMap().size(); }, 2000);
    const qint64 map = medianNanoseconds([&] { return mapPage(decoded).size(); }, 2000);
    const qint64 byName = medianNanoseconds([&] { return mapPageByName(decoded).size(); }, 2000);
    const qint64 both = medianNanoseconds(
            [&] { return mapPage(QJsonDocument::fromJson(bytes).toVariant()).size(); }, 2000);

    const auto ms = [](qint64 ns) { return QString::number(ns / 1e6, 'f', 3); };
    const auto ratio
            = [bare](qint64 ns) { return QString::number(double(ns) / double(bare), 'f', 2); };
    out << games << " games (" << QString::number(bytes.size() / 1024.0, 'f', 1) << " KiB)\n"
        << "  bare QJsonDocument::fromJson      " << ms(bare) << " ms\n"
        << "  decode to QVariant                " << ms(decode) << " ms  (" << ratio(decode)
        << "x)\n"
        << "  map decoded page (cached tables)  " << ms(map) << " ms  (" << ratio(map) << "x)\n"
        << "  map, properties looked up by name " << ms(byName) << " ms  (" << ratio(byName)
        << "x)\n"
        << "  decode + map                      " << ms(both) << " ms  (" << ratio(both) << "x)\n";
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    out << "Mapping \"/products.json\" pages onto Object_HomeGames: median per page, ratios\n"
           "against the bare parse (goal: mapping at most 2x the bare parse)\n";
    report(out, 50);
    report(out, 1000);
    return 0;
}
