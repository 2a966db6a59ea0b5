#include "platform/ui/RefreshFooter.h"

namespace platform {

RefreshFooter::RefreshFooter(QObject *parent)
    : QObject(parent)
{ }

QString RefreshFooter::text() const
{
    switch (m_state) {
    case Loading:
        return QStringLiteral("正在加载...");
    case NoMoreData:
        return QStringLiteral("没有更多了");
    case Idle:
        break;
    }
    return QStringLiteral("上拉加载更多");
}

void RefreshFooter::setHidden(bool hidden)
{
    if (m_hidden == hidden)
        return;
    m_hidden = hidden;
    emit hiddenChanged();
}

void RefreshFooter::reachEnd()
{
    if (m_state == Idle && !m_hidden)
        beginRefreshing();
}

void RefreshFooter::pullUp()
{
    if (m_state != Loading && !m_hidden)
        beginRefreshing();
}

void RefreshFooter::beginRefreshing()
{
    if (m_state == Loading)
        return;
    setState(Loading);
    emit loadMoreRequested();
}

void RefreshFooter::endRefreshing()
{
    if (m_state == Loading)
        setState(Idle);
}

void RefreshFooter::noticeNoMoreData()
{
    setState(NoMoreData);
}

void RefreshFooter::resetNoMoreData()
{
    if (m_state == NoMoreData)
        setState(Idle);
}

void RefreshFooter::setState(State state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged();
}

} // namespace platform
