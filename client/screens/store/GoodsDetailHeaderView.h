#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

// The head of a game's page: cover, Chinese and English names, prices with the discount badge,
// the pre-sale mark and one icon per supported system.
class GoodsDetailHeaderView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by GoodsDetailViewController")
    Q_PROPERTY(QString imageUrl READ imageUrl NOTIFY changed)
    Q_PROPERTY(QString labelNameCn READ labelNameCn NOTIFY changed)
    Q_PROPERTY(QString labelNameEn READ labelNameEn NOTIFY changed)
    Q_PROPERTY(QString labelOldPrice READ labelOldPrice NOTIFY changed)
    Q_PROPERTY(QString labelNewPrice READ labelNewPrice NOTIFY changed)
    Q_PROPERTY(QString labelDiscount READ labelDiscount NOTIFY changed)
    Q_PROPERTY(bool discountHidden READ isDiscountHidden NOTIFY changed)
    Q_PROPERTY(bool presellHidden READ isPresellHidden NOTIFY changed)
    Q_PROPERTY(QStringList osIcons READ osIcons NOTIFY changed)
public:
    // The cover spans the phone window.
    static constexpr double CoverWidth = 375;

    explicit GoodsDetailHeaderView(QObject *parent = nullptr);

    void setViewContentWithImage(const QString &image, const QString &nameCn, const QString &nameEn,
                                 const QString &oldPrice, const QString &newPrice,
                                 const QString &isPresell, const QVariantList &OSs);

    QString imageUrl() const { return m_imageUrl; }
    QString labelNameCn() const { return m_nameCn; }
    QString labelNameEn() const { return m_nameEn; }
    QString labelOldPrice() const { return m_oldPrice; }
    QString labelNewPrice() const { return m_newPrice; }
    QString labelDiscount() const { return m_discount; }
    bool isDiscountHidden() const { return m_discountHidden; }
    bool isPresellHidden() const { return m_presellHidden; }
    QStringList osIcons() const { return m_osIcons; }

    // The picture address asked of the image service for a view `pointWidth` points wide on a
    // screen of `scale`: the escaped address with "?imageView2/2/w/<pixels>/q/85". A relative
    // address is taken from the store.
    static QString imageUrlWithWidth(const QString &image, double pointWidth, double scale);
    // The screen's pixels per point (1 without a screen).
    static double screenScale();
    // (list - sale) / list * 100 as " %.0f%%OFF ", or empty when it cannot be computed.
    static QString discountText(const QString &listPrice, const QString &salePrice);
    // The picture for a system entry's "name"; empty for systems without one.
    static QString iconForSystem(const QString &name);

signals:
    void changed();

private:
    QString m_imageUrl;
    QString m_nameCn;
    QString m_nameEn;
    QString m_oldPrice;
    QString m_newPrice;
    QString m_discount;
    bool m_discountHidden = true;
    bool m_presellHidden = true;
    QStringList m_osIcons;
};
