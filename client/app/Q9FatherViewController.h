#pragma once

#include "platform/ui/ViewController.h"

#include <QColor>

namespace platform {
class BarButtonItem;
}

// The base of every screen. The template: on view load the screen gets the shared look (grey
// background, blue bar, white 16-point title, the two default bar items) and then, one pass of the
// main queue later, setLoadViewAction builds its view once; each time it is about to appear,
// setRefleshDataAction (deferred the same way) loads or reloads its data.
//
// The look set here is the screen's own state: the page and its navigation bar bind
// backgroundColor, navBarColor, navTitleColor and navTitleFontSize, so a screen that changes them
// is drawn that way. Everything else the views draw comes from Theme.qml.
class Q9FatherViewController : public platform::ViewController
{
    Q_OBJECT
    Q_PROPERTY(QColor backgroundColor READ backgroundColor NOTIFY appearanceStyleChanged)
    Q_PROPERTY(QColor navTitleColor READ navTitleColor NOTIFY appearanceStyleChanged)
    Q_PROPERTY(int navTitleFontSize READ navTitleFontSize NOTIFY appearanceStyleChanged)
    Q_PROPERTY(QColor navBarColor READ navBarColor NOTIFY appearanceStyleChanged)
public:
    explicit Q9FatherViewController(QObject *parent = nullptr);

    QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);
    QColor navTitleColor() const { return m_navTitleColor; }
    int navTitleFontSize() const { return m_navTitleFontSize; }
    QColor navBarColor() const { return m_navBarColor; }

    void setNavHidden(bool hidden);
    void setNavTitleWithString(const QString &title);
    void setNavTitleAttributesWithTextColor(const QColor &color, int fontSize);
    void setNavBarBackgroundColor(const QColor &color);
    // The default items: the picture and title in a 44-point button flush with the screen edge,
    // title colour RGB 110,185,43; tapping sends setNavLeftAction / setNavRightAction.
    void setNavLeftDefaultItemWithImageIcon(const QString &imageName, const QString &title);
    void setNavRightDefaultItemWithImageIcon(const QString &imageName, const QString &title);

    // Shows or hides the tab strip of the tab bar controller this screen lives in, if any.
    void hideTabBar(bool hidden);

    // The end-editing tap: ends editing of the whole view (QML drops the keyboard focus). The page
    // sends it for a touch on its background; whatever takes taps itself (fields, buttons, rows)
    // keeps the touch, so it never reaches the background.
    Q_INVOKABLE void setEndEdingAction();

signals:
    void appearanceStyleChanged();
    void endEditingRequested();

protected:
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;

    // The template's hooks, empty here.
    virtual void setNavLeftAction() { }
    virtual void setNavRightAction() { }
    virtual void setLoadViewAction() { }
    virtual void setRefleshDataAction() { }

private:
    QColor m_backgroundColor;
    QColor m_navTitleColor;
    int m_navTitleFontSize = 0;
    QColor m_navBarColor;
};
