#pragma once

#include "platform/ui/Button.h"

#include <QRectF>
#include <QtQml/qqmlregistration.h>

// A button of the tab strip: the picture fills the button (fitted, aspect kept) except for a
// title line along the bottom when the button has a title.
class ICTabBarItem : public platform::Button
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Tab strip buttons belong to their tab bar controller")
    Q_PROPERTY(QRectF frame READ frame NOTIFY frameChanged)
    Q_PROPERTY(QRectF imageRect READ imageRect NOTIFY frameChanged)
    Q_PROPERTY(QRectF titleRect READ titleRect NOTIFY frameChanged)
    Q_PROPERTY(int titleFontSize READ titleFontSize CONSTANT)
public:
    static constexpr qreal TitleHeight = 14;
    static constexpr int TitleFontSize = 9;

    explicit ICTabBarItem(QObject *parent = nullptr);

    // Where the button sits in the strip.
    QRectF frame() const { return m_frame; }
    void setFrame(const QRectF &frame);
    // Inside the button.
    QRectF imageRect() const;
    QRectF titleRect() const;
    int titleFontSize() const { return TitleFontSize; }

signals:
    void frameChanged();

private:
    QRectF m_frame;
};
