#pragma once

#include "app/Q9FatherViewController.h"

// The right panel of the sliding-panel root.
class RightViewController : public Q9FatherViewController
{
    Q_OBJECT
public:
    explicit RightViewController(QObject *parent = nullptr);

protected:
    void viewDidLoad() override;
};
