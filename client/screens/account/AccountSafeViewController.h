#pragma once

#include "app/Q9FatherViewController.h"

#include <QList>
#include <QObject>
#include <QString>

class AccountSafeCell;

// "账户安全": the signed-in user's password, mobile number and e-mail address, three rows each
// with a button that changes or binds the item. The rows are not selectable; only their buttons
// react.
class AccountSafeViewController : public Q9FatherViewController
{
    Q_OBJECT
    Q_PROPERTY(QList<QObject *> tableMain READ tableMainObjects NOTIFY tableChanged)
public:
    explicit AccountSafeViewController(QObject *parent = nullptr);

    int numberOfSectionsInTableView() const { return 1; }
    int numberOfRowsInSection(int section) const;
    AccountSafeCell *cellForRowAtIndexPath(int row) const;
    QList<QObject *> tableMainObjects() const;

    // "*138****8000" for an 11-character number, else nothing.
    static QString maskedPhoneTip(const QString &phoneNumber);

signals:
    void tableChanged();

protected:
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    void fillPasswordRow(AccountSafeCell *cell);
    void fillMobileRow(AccountSafeCell *cell);
    void fillEmailRow(AccountSafeCell *cell);
    void push(platform::ViewController *controller);

    QList<AccountSafeCell *> m_cells;
};
