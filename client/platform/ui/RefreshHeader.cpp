#include "platform/ui/RefreshHeader.h"

namespace platform {

RefreshHeader::RefreshHeader(QObject *parent)
    : QObject(parent)
{ }

QString RefreshHeader::text() const
{
    switch (m_state) {
    case ReadyToRefresh:
        return QStringLiteral("释放刷新");
    case Refreshing:
        return QStringLiteral("正在刷新...");
    case Idle:
    case Pulling:
        break;
    }
    return QStringLiteral("下拉刷新");
}

void RefreshHeader::setThreshold(qreal threshold)
{
    if (threshold <= 0 || m_threshold == threshold)
        return;
    m_threshold = threshold;
    emit thresholdChanged();
}

void RefreshHeader::pull(qreal distance)
{
    if (m_state == Refreshing)
        return;
    if (distance <= 0)
        setState(Idle);
    else
        setState(distance >= m_threshold ? ReadyToRefresh : Pulling);
}

void RefreshHeader::release()
{
    if (m_state == ReadyToRefresh)
        beginRefreshing();
    else if (m_state == Pulling)
        setState(Idle);
}

void RefreshHeader::beginRefreshing()
{
    if (m_state == Refreshing)
        return;
    setState(Refreshing);
    emit refreshRequested();
}

void RefreshHeader::endRefreshing()
{
    setState(Idle);
}

void RefreshHeader::setState(State state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged();
}

} // namespace platform
