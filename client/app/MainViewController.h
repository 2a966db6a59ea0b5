#pragma once

#include "app/Q9FatherViewController.h"

// The centre screen of the sliding-panel root; its bar buttons open the side panels.
class MainViewController : public Q9FatherViewController
{
    Q_OBJECT
public:
    explicit MainViewController(QObject *parent = nullptr);

protected:
    void viewDidLoad() override;
    void setNavLeftAction() override;
    void setNavRightAction() override;
};
