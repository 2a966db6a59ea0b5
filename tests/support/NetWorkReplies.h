#pragma once

#include "service/NetWorkHelper.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

namespace tarvel::test {

// The replies of NetWorkHelper not yet done with. Each is deleted once its outcome has been handed
// on, so none left means no request is under way and no callback can follow; a request that was
// never made leaves none either. Waiting for 0 replaces waiting "long enough" for nothing to
// happen.
inline qsizetype repliesAlive()
{
    return NetWorkHelper::shareInstance()->networkManager()->findChildren<QNetworkReply *>().size();
}

} // namespace tarvel::test
