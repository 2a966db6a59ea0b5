#pragma once

#include "app/Q9FatherViewController.h"

#include <QtQml/qqmlregistration.h>

// The signed-in user's own page, the third tab.
class TabFourViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(QString nickName READ nickName NOTIFY userShown)
public:
    explicit TabFourViewController(QObject *parent = nullptr);

    // The signed-in user's nickname as last shown.
    QString nickName() const { return m_nickName; }

signals:
    void userShown();

protected:
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void setRefleshDataAction() override;

private:
    QString m_nickName;
};
