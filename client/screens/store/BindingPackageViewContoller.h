#pragma once

#include "app/Q9FatherViewController.h"
#include "models/Object_DLCOrBind.h"
#include "platform/ui/RowModel.h"

#include <QList>
#include <QString>
#include <QtQml/qqmlregistration.h>

// The DLCs or the bundles of one game, opened from its page with the list and the title
// ("%@的DLC", "%@的捆绑包"). A row opens that item's page.
class BindingPackageViewContoller : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(platform::RowModel *tableMain READ tableMain CONSTANT)
    Q_PROPERTY(int rowHeight READ rowHeight CONSTANT)
public:
    static constexpr int RowHeight = 55;

    explicit BindingPackageViewContoller(QObject *parent = nullptr);
    BindingPackageViewContoller(const QString &navTitle, const QList<Object_DLCOrBind> &arraySource,
                                QObject *parent = nullptr);

    QString navTitle() const { return m_navTitle; }
    void setNavTitle(const QString &navTitle);
    QList<Object_DLCOrBind> arraySource() const { return m_arraySource; }
    void setArraySource(const QList<Object_DLCOrBind> &arraySource);

    platform::RowModel *tableMain() const { return m_tableMain; }
    int rowHeight() const { return RowHeight; }

    // Opens the page of the item in `row`.
    Q_INVOKABLE void didSelectRowAtIndex(int row);

protected:
    void viewDidLoad() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    QString m_navTitle;
    QList<Object_DLCOrBind> m_arraySource;
    platform::RowModel *m_tableMain = nullptr;
};
