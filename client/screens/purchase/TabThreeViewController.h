#pragma once

#include "app/Q9FatherViewController.h"

#include <QtQml/qqmlregistration.h>

// The cart: the second tab (viewFather other than 1), or pushed from another screen (viewFather
// 1) with a back button and without the tab strip.
class TabThreeViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(int viewFather READ viewFather CONSTANT)
public:
    explicit TabThreeViewController(int viewFather = 0, QObject *parent = nullptr);

    int viewFather() const { return m_viewFather; }
    bool isPushed() const { return m_viewFather == 1; }

protected:
    void viewDidLoad() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    int m_viewFather = 0;
};
