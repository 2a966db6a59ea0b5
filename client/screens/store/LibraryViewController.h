#pragma once

#include "app/Q9FatherViewController.h"
#include "platform/ui/RowModel.h"

#include <QStringList>
#include <QtQml/qqmlregistration.h>

// "库": a two-entry menu leading to the user's coupons and games. The counts in the titles are
// fixed text.
class LibraryViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(platform::RowModel *mainTable READ mainTable CONSTANT)
public:
    explicit LibraryViewController(QObject *parent = nullptr);

    QStringList arraySource() const { return m_arraySource; }
    platform::RowModel *mainTable() const { return m_mainTable; }

    // Row 0 opens the coupons, row 1 the games.
    Q_INVOKABLE void didSelectRowAtIndex(int row);

protected:
    void viewDidLoad() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    QStringList m_arraySource;
    platform::RowModel *m_mainTable = nullptr;
};
