#pragma once

#include "models/GameRelease.h"

#include <QList>
#include <QString>
#include <QVariantMap>

#include <functional>

// One game of a store grid (home page and search results) as display-ready values: the cover's
// address, the price texts, the discount, pre-sale and owned badges, and what a tap on the cover
// does.
class HomePageViewCell
{
public:
    using Block = std::function<void()>;

    static const QString Identifier; // "HomePageViewCell"

    // Grid geometry in points: two columns with this spacing around and between them; the
    // cover keeps the catalogue's 16:9 pictures.
    static constexpr qreal GridSpacing = 10;
    static qreal itemWidthForScreenWidth(qreal screenWidth);
    static qreal coverHeightForItemWidth(qreal itemWidth);

    // The address a picture is loaded from: a relative address is put under the store's base,
    // the whole escaped, then "%@?imageView2/2/w/%.0f/q/85" with the display width in pixels.
    static QString imageUrlWithWidth(const QString &storedUrl, qreal widthInPoints,
                                     qreal screenScale);
    // The scale of the screen the app draws on (pixels per point).
    static qreal screenScale();

    // The discount of a list price against a sale price in "%.0f%%OFF " form, computed in single
    // precision; empty when it cannot be computed (no list price to compare with).
    static QString discountText(const QString &listPrice, const QString &salePrice);

    HomePageViewCell(qreal coverWidth = 0, qreal scale = 1);

    // The cell of one catalogue game (a home or a search record): cover, titles, prices and the
    // pre-sale badge from its release date; `onTap` runs when the cover is tapped.
    template<typename Game>
    static HomePageViewCell forGame(const Game &game, qreal coverWidth, Block onTap)
    {
        HomePageViewCell cell(coverWidth, screenScale());
        cell.setGameId(game.id);
        cell.setTitle(game.title);
        cell.setCellContentsWithImage(game.product_image, game.list_price, game.sale_price,
                                      isPreSale(game.release_date) ? QStringLiteral("1")
                                                                   : QStringLiteral("0"),
                                      std::move(onTap));
        return cell;
    }
    // What a grid binds for `cells`, one row each.
    static QList<QVariantMap> rowsOf(const QList<HomePageViewCell> &cells);

    // Fills the cell; `block` runs when the cover is tapped. `isPresell` "0" hides the pre-sale
    // badge, anything else shows it.
    void setCellContentsWithImage(const QString &image, const QString &oldPrice,
                                  const QString &newPrice, const QString &isPresell, Block block);
    void setTitle(const QString &title) { m_title = title; }
    // The game shown, whose "已拥有" mark follows the owned games.
    void setGameId(const QString &gameId) { m_gameId = gameId; }
    QString gameId() const { return m_gameId; }
    // The cover was tapped.
    void gotoProductDetialBtnClicked() const;

    QString imageGoods() const { return m_imageGoods; }
    QString labelOldPrice() const { return m_oldPrice; }
    QString labelNewPrice() const { return m_newPrice; }
    QString labelDiscount() const { return m_discount; }
    bool isDiscountHidden() const { return m_discountHidden; }
    QString labelPresell() const { return m_presellText; }
    bool isPresellHidden() const { return m_presellHidden; }
    QString title() const { return m_title; }
    const Block &myBlock() const { return m_myBlock; }

    // What the QML cell binds: the texts above plus the bare prices for the price label, the
    // game's id and whether the user owns it ("owned").
    QVariantMap row() const;

private:
    qreal m_coverWidth;
    qreal m_scale;
    QString m_gameId;
    QString m_imageGoods;
    QString m_title;
    QString m_oldPrice;
    QString m_newPrice;
    QString m_listPriceShown;
    QString m_salePrice;
    QString m_discount;
    bool m_discountHidden = true;
    QString m_presellText;
    bool m_presellHidden = true;
    Block m_myBlock;
};
