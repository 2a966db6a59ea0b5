#pragma once

#include "app/Q9FatherViewController.h"

class TabOneViewController : public Q9FatherViewController
{
    Q_OBJECT
public:
    explicit TabOneViewController(QObject *parent = nullptr);

protected:
    void viewDidLoad() override;
};
