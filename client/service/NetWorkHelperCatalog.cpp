// Catalogue operations of NetWorkHelper: anonymous GETs answered with the store's envelope.
#include "service/NetWorkHelper.h"

void NetWorkHelper::getHomepageDataWithStartFn(const StartFn &startFn, const EndFn &endFn,
                                               const SuccessFn &successFn,
                                               const FailureFn &failureFn)
{
    // StartFn gets a dictionary of its own: whatever it does to it, this request has no query.
    if (startFn) {
        QVariantMap unsent;
        startFn(unsent);
    }
    sendForEnvelope(Verb::Get, {}, apiUrl(QStringLiteral("/store.json")), endFn, successFn,
                    failureFn);
}

void NetWorkHelper::getGameListWithType(const QString &type, const QString &page,
                                        const StartFn &startFn, const EndFn &endFn,
                                        const SuccessFn &successFn, const FailureFn &failureFn)
{
    RequestParams params;
    params.set(QStringLiteral("type"), type);
    params.set(QStringLiteral("page"), page);
    getWithParams(params, apiUrl(QStringLiteral("/products.json")), startFn, endFn, successFn,
                  failureFn);
}

void NetWorkHelper::getGameDetailWithGameId(const QString &gameId, const QString &verbose,
                                            const StartFn &startFn, const EndFn &endFn,
                                            const SuccessFn &successFn, const FailureFn &failureFn)
{
    const QString path = QStringLiteral("/products/%1.json").arg(gameId);
    RequestParams params;
    params.insert(QStringLiteral("verbose"), verbose);
    getWithParams(params, apiUrl(path), startFn, endFn, successFn, failureFn);
}

void NetWorkHelper::searchGameWithQ(const QString &q, const QString &page, const StartFn &startFn,
                                    const EndFn &endFn, const SuccessFn &successFn,
                                    const FailureFn &failureFn)
{
    RequestParams params;
    params.insert(QStringLiteral("q"), q);
    params.insert(QStringLiteral("page"), page);
    getWithParams(params, apiUrl(QStringLiteral("/store/search.json")), startFn, endFn, successFn,
                  failureFn);
}
