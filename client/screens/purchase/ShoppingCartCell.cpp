#include "screens/purchase/ShoppingCartCell.h"

#include "screens/store/HomePageViewCell.h"
#include "util/NSStringUtils.h"

#include <cmath>

ShoppingCartCell::ShoppingCartCell(QObject *parent)
    : QObject(parent)
{ }

void ShoppingCartCell::setCellContentWithImage(const QString &image, const QString &title,
                                               const QString &price, bool isSelect)
{
    m_imageGoods = HomePageViewCell::imageUrlWithWidth(image, CoverWidth,
                                                       HomePageViewCell::screenScale());
    m_labelName = title;
    m_labelPrice = QStringLiteral("¥") + price;
    m_selected = isSelect;
    emit contentChanged();
}

void ShoppingCartCell::setListPrice(const QString &listPrice, const QString &salePrice)
{
    if (listPrice == salePrice) {
        m_cutOffHidden = true;
        m_labelCutOff.clear();
        m_labelOldPrice.clear();
    } else {
        const double list = NSStringUtils::doubleValue(listPrice);
        const double percent = (list - NSStringUtils::doubleValue(salePrice)) / list * 100;
        // A line without a list price has no discount to show.
        m_cutOffHidden = !std::isfinite(percent);
        m_labelCutOff = m_cutOffHidden ? QString() : QString::asprintf(" %.0f%%OFF ", percent);
        m_labelOldPrice = m_cutOffHidden ? QString() : QStringLiteral("¥") + listPrice;
    }
    emit contentChanged();
}

bool ShoppingCartCell::gestureShouldBegin(qreal translationX, qreal translationY) const
{
    Q_UNUSED(translationY)
    return translationX != 0;
}

void ShoppingCartCell::panBegan()
{
    m_settling = false;
    m_oldPointX = m_contentX;
    emit contentXChanged();
}

void ShoppingCartCell::panMoved(qreal translationX)
{
    const qreal x = m_startPointX + translationX;
    if (x > FarthestRightX)
        return;
    m_oldPointX = m_contentX;
    setContentX(x);
}

void ShoppingCartCell::panEnded()
{
    // Closed when the last step went right, open otherwise (a pan that never moved opens too).
    const qreal rest = m_oldPointX < m_contentX ? ClosedX : OpenX;
    m_startPointX = rest;
    m_settling = true;
    setContentX(rest);
    emit contentXChanged();
}

void ShoppingCartCell::clickDelete()
{
    if (m_block)
        m_block();
}

void ShoppingCartCell::setContentX(qreal x)
{
    if (m_contentX == x)
        return;
    m_contentX = x;
    emit contentXChanged();
}
