#pragma once

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

// The look every screen starts with: the screen base's defaults. Theme reads its brand colours
// from here, so the bar blue and the page grey are defined once for C++ and QML alike.
class ScreenLook : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor backgroundColor READ backgroundColor CONSTANT)
    Q_PROPERTY(QColor navBarColor READ navBarColor CONSTANT)
    Q_PROPERTY(QColor navTitleColor READ navTitleColor CONSTANT)
    Q_PROPERTY(int navTitleFontSize READ navTitleFontSize CONSTANT)
    Q_PROPERTY(QColor itemTitleColor READ itemTitleColor CONSTANT)
public:
    using QObject::QObject;

    static QColor defaultBackgroundColor() { return QColor(210, 210, 210); }
    static QColor defaultNavBarColor() { return QColor(60, 102, 183); }
    static QColor defaultNavTitleColor() { return QColor(Qt::white); }
    static constexpr int DefaultNavTitleFontSize = 16;
    static QColor defaultItemTitleColor() { return QColor(110, 185, 43); }

    QColor backgroundColor() const { return defaultBackgroundColor(); }
    QColor navBarColor() const { return defaultNavBarColor(); }
    QColor navTitleColor() const { return defaultNavTitleColor(); }
    int navTitleFontSize() const { return DefaultNavTitleFontSize; }
    QColor itemTitleColor() const { return defaultItemTitleColor(); }
};
