// Catalogue operations of NetWorkHelper: anonymous GETs answered with the store's envelope. Their
// answers are kept and given again when the store cannot be reached.
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
                    failureFn, Keep::Yes);
}

void NetWorkHelper::getWithEditableParams(RequestParams params, const QString &url,
                                          const MutableStartFn &startFn, const EndFn &endFn,
                                          const SuccessFn &successFn, const FailureFn &failureFn)
{
    if (startFn) {
        QVariantMap sent = params.toVariantMap();
        startFn(sent);
        params.updateFrom(sent);
    }
    sendForEnvelope(Verb::Get, params, url, endFn, successFn, failureFn, Keep::Yes);
}

void NetWorkHelper::getGameListWithType(const QString &type, const QString &page,
                                        const MutableStartFn &startFn, const EndFn &endFn,
                                        const SuccessFn &successFn, const FailureFn &failureFn)
{
    RequestParams params;
    params.set(QStringLiteral("type"), type);
    params.set(QStringLiteral("page"), page);
    getWithEditableParams(params, apiUrl(QStringLiteral("/products.json")), startFn, endFn,
                          successFn, failureFn);
}

void NetWorkHelper::getGameDetailWithGameId(const QString &gameId, const QString &verbose,
                                            const MutableStartFn &startFn, const EndFn &endFn,
                                            const SuccessFn &successFn, const FailureFn &failureFn)
{
    const QString path = QStringLiteral("/products/%1.json").arg(gameId);
    RequestParams params;
    params.insert(QStringLiteral("verbose"), verbose);
    getWithEditableParams(params, apiUrl(path), startFn, endFn, successFn, failureFn);
}

void NetWorkHelper::searchGameWithQ(const QString &q, const QString &page,
                                    const MutableStartFn &startFn, const EndFn &endFn,
                                    const SuccessFn &successFn, const FailureFn &failureFn)
{
    RequestParams params;
    params.insert(QStringLiteral("q"), q);
    params.insert(QStringLiteral("page"), page);
    getWithEditableParams(params, apiUrl(QStringLiteral("/store/search.json")), startFn, endFn,
                          successFn, failureFn);
}
