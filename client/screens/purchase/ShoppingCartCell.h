#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <functional>

// One cart line: the cover, the name, the sale price, the list price struck through with the
// discount badge beside it, the tick, and a content card that slides left to uncover a delete
// button. The slide's state and rules live here; the QML cell only forwards the finger.
class ShoppingCartCell : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by TabThreeViewController")
    Q_PROPERTY(QString imageGoods READ imageGoods NOTIFY contentChanged)
    Q_PROPERTY(QString labelName READ labelName NOTIFY contentChanged)
    Q_PROPERTY(QString labelPrice READ labelPrice NOTIFY contentChanged)
    Q_PROPERTY(QString labelOldPrice READ labelOldPrice NOTIFY contentChanged)
    Q_PROPERTY(QString labelCutOff READ labelCutOff NOTIFY contentChanged)
    Q_PROPERTY(bool cutOffHidden READ isCutOffHidden NOTIFY contentChanged)
    Q_PROPERTY(bool selected READ isSelected NOTIFY contentChanged)
    Q_PROPERTY(qreal contentX READ contentX NOTIFY contentXChanged)
    Q_PROPERTY(bool settling READ isSettling NOTIFY contentXChanged)
    Q_PROPERTY(int settleDuration READ settleDuration CONSTANT)
    Q_PROPERTY(qreal closedX READ closedX CONSTANT)
    Q_PROPERTY(bool open READ isOpen NOTIFY contentXChanged)
public:
    // Rest positions of the content card and how long it takes to get there.
    static constexpr qreal ClosedX = 10;
    static constexpr qreal OpenX = -40;
    static constexpr qreal FarthestRightX = 20;
    static constexpr int SettleDurationMs = 250;
    // The cover's width in points, for the picture's size suffix.
    static constexpr qreal CoverWidth = 96;

    using Block = std::function<void()>;

    explicit ShoppingCartCell(QObject *parent = nullptr);

    // The picture from `image` (escaped, sized for the cover), the title, the sale price through
    // "¥%@" and the tick.
    void setCellContentWithImage(const QString &image, const QString &title, const QString &price,
                                 bool isSelect);
    // The badge " %.0f%%OFF " and the list price through "¥%@"; both hidden when the two prices
    // are the same text.
    void setListPrice(const QString &listPrice, const QString &salePrice);
    void setBlock(Block block) { m_block = std::move(block); }

    QString imageGoods() const { return m_imageGoods; }
    QString labelName() const { return m_labelName; }
    QString labelPrice() const { return m_labelPrice; }
    QString labelOldPrice() const { return m_labelOldPrice; }
    QString labelCutOff() const { return m_labelCutOff; }
    bool isCutOffHidden() const { return m_cutOffHidden; }
    bool isSelected() const { return m_selected; }

    // The slide: x of the content card, the position before the last step and the rest position
    // the current pan started from.
    qreal contentX() const { return m_contentX; }
    qreal oldPointX() const { return m_oldPointX; }
    qreal startPointX() const { return m_startPointX; }
    bool isSettling() const { return m_settling; }
    int settleDuration() const { return SettleDurationMs; }
    qreal closedX() const { return ClosedX; }
    // Anywhere but closed: a tap then does not tick the line.
    bool isOpen() const { return m_contentX != ClosedX; }

    // A pan begins only when it moves sideways.
    Q_INVOKABLE bool gestureShouldBegin(qreal translationX, qreal translationY) const;
    Q_INVOKABLE void panBegan();
    // The finger is `translationX` points right of where the pan began.
    Q_INVOKABLE void panMoved(qreal translationX);
    // Ended, cancelled or failed: the card goes to the closed or the open rest position.
    Q_INVOKABLE void panEnded();
    // The delete button.
    Q_INVOKABLE void clickDelete();

signals:
    void contentChanged();
    void contentXChanged();

private:
    void setContentX(qreal x);

    QString m_imageGoods;
    QString m_labelName;
    QString m_labelPrice;
    QString m_labelOldPrice;
    QString m_labelCutOff;
    bool m_cutOffHidden = true;
    bool m_selected = false;
    qreal m_contentX = ClosedX;
    qreal m_oldPointX = ClosedX;
    qreal m_startPointX = ClosedX;
    bool m_settling = false;
    Block m_block;
};
