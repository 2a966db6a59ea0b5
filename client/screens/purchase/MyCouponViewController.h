#pragma once

#include "app/Q9FatherViewController.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"

#include <QTimer>
#include <QtQml/qqmlregistration.h>

// "我的优惠券": a header and six coupon cards as laid out, not filled from the store; pulling down
// or up shows "加载中..." for a second and asks nobody.
class MyCouponViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(int rowCount READ rowCount CONSTANT)
    Q_PROPERTY(int rowHeight READ rowHeight CONSTANT)
    Q_PROPERTY(platform::RefreshHeader *refreshHeader READ refreshHeader CONSTANT)
    Q_PROPERTY(platform::RefreshFooter *refreshFooter READ refreshFooter CONSTANT)
public:
    static constexpr int RowCount = 6;
    static constexpr int RowHeight = 74;
    static constexpr int RefreshMs = 1000;

    explicit MyCouponViewController(QObject *parent = nullptr);

    int rowCount() const { return RowCount; }
    int rowHeight() const { return RowHeight; }
    int pageMain() const { return m_pageMain; }
    platform::RefreshHeader *refreshHeader() const { return m_refreshHeader; }
    platform::RefreshFooter *refreshFooter() const { return m_refreshFooter; }

    // A tapped row is only deselected.
    Q_INVOKABLE void didSelectRowAtIndex(int row) { Q_UNUSED(row) }

protected:
    void viewDidLoad() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    void refresh(bool firstPage);
    void endRefreshing();

    int m_pageMain = 1;
    platform::RefreshHeader *m_refreshHeader = nullptr;
    platform::RefreshFooter *m_refreshFooter = nullptr;
    QTimer m_endTimer;
};
