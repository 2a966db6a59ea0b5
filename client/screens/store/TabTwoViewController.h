#pragma once

#include "app/Q9FatherViewController.h"
#include "platform/ui/RowModel.h"

#include <QtQml/qqmlregistration.h>

// The category screen: the store's four game lists to pick from. It is presented modally and
// dismisses itself; whoever presents it hears the choice through `categorySelected`.
class TabTwoViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are created by C++")
    Q_PROPERTY(platform::RowModel *categories READ categories CONSTANT)
public:
    explicit TabTwoViewController(QObject *parent = nullptr);

    platform::RowModel *categories() const { return m_categories; }

    // A category was tapped: reports its sort key and dismisses the screen.
    Q_INVOKABLE void didSelectCategoryAtIndex(int index);

signals:
    void categorySelected(const QString &sortKey);

protected:
    void viewDidLoad() override;
    void setNavLeftAction() override;

private:
    platform::RowModel *m_categories;
};
