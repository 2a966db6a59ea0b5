#pragma once

#include "app/Q9FatherViewController.h"

class MyMessageViewController : public Q9FatherViewController
{
    Q_OBJECT
public:
    explicit MyMessageViewController(QObject *parent = nullptr);

protected:
    void viewDidLoad() override;
};
