#pragma once

#include <QColor>
#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

// The carousel's position dots: one round dot per page, the current one in the current colour and
// the others in the tint colour.
class ICPageControl : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Page controls belong to their screen")
    Q_PROPERTY(int numberOfPages READ numberOfPages NOTIFY dotsChanged)
    Q_PROPERTY(int currentPage READ currentPage NOTIFY dotsChanged)
    Q_PROPERTY(qreal dotRadius READ dotRadius NOTIFY dotsChanged)
    Q_PROPERTY(QVariantList dots READ dots NOTIFY dotsChanged)
public:
    static constexpr qreal DefaultDotSize = 5;

    // Where the dots sit is the view's business; the control holds what they show.
    ICPageControl(const QColor &currentColor, const QColor &tintColor, QObject *parent = nullptr);

    int numberOfPages() const { return m_pageNum; }
    int currentPage() const { return m_currentPage; }
    // The dots' size in points (5 unless changed).
    qreal dotRadius() const { return m_dotRadius; }
    QColor currentColor() const { return m_currentColor; }
    QColor tintColor() const { return m_tintColor; }
    // One colour per dot, in page order.
    QVariantList dots() const { return m_dots; }

    // Rebuilds the dots for `pageNum` pages (none for 0 or less).
    void setPageNum(int pageNum);
    // Changes the dots' size and rebuilds them.
    void setDotRadius(qreal radius);
    // Colours the dot of `page`; a page outside the dots leaves all of them in the tint.
    void setCurrentPage(int page);
    void setDotCurrentColor(const QColor &currentColor, const QColor &tintColor);

signals:
    void dotsChanged();

private:
    void rebuildDots();

    QColor m_currentColor;
    QColor m_tintColor;
    int m_pageNum = 0;
    int m_currentPage = 0;
    qreal m_dotRadius = DefaultDotSize;
    QVariantList m_dots;
};
