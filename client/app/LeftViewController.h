#pragma once

#include "app/Q9FatherViewController.h"

// The left panel of the sliding-panel root.
class LeftViewController : public Q9FatherViewController
{
    Q_OBJECT
public:
    explicit LeftViewController(QObject *parent = nullptr);

protected:
    void viewDidLoad() override;
};
