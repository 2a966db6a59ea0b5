#include "screens/store/ICPageControl.h"

ICPageControl::ICPageControl(const QColor &currentColor, const QColor &tintColor, QObject *parent)
    : QObject(parent)
    , m_currentColor(currentColor)
    , m_tintColor(tintColor)
{ }

void ICPageControl::setPageNum(int pageNum)
{
    m_pageNum = std::max(0, pageNum);
    rebuildDots();
}

void ICPageControl::setDotRadius(qreal radius)
{
    if (radius <= 0)
        return;
    m_dotRadius = radius;
    rebuildDots();
}

void ICPageControl::setCurrentPage(int page)
{
    m_currentPage = page;
    rebuildDots();
}

void ICPageControl::setDotCurrentColor(const QColor &currentColor, const QColor &tintColor)
{
    m_currentColor = currentColor;
    m_tintColor = tintColor;
    rebuildDots();
}

void ICPageControl::rebuildDots()
{
    m_dots.clear();
    for (int page = 0; page < m_pageNum; ++page)
        m_dots.append(page == m_currentPage ? m_currentColor : m_tintColor);
    emit dotsChanged();
}
