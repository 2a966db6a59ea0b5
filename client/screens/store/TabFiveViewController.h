#pragma once

#include "app/Q9FatherViewController.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"

#include <QVariantList>
#include <QtQml/qqmlregistration.h>

// The news list: a fixed set of rows whose refresh and paging only pretend to load for a second;
// a row opens the news page.
class TabFiveViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are created by C++")
    Q_PROPERTY(platform::RowModel *mainTable READ mainTable CONSTANT)
    Q_PROPERTY(platform::RefreshHeader *refreshHeader READ refreshHeader CONSTANT)
    Q_PROPERTY(platform::RefreshFooter *refreshFooter READ refreshFooter CONSTANT)
    Q_PROPERTY(int pageMain READ pageMain NOTIFY pageMainChanged)
public:
    static constexpr int NumberOfRows = 23;
    // How long the pretended load takes.
    static constexpr int LoadDelayMs = 1000;

    explicit TabFiveViewController(QObject *parent = nullptr);

    platform::RowModel *mainTable() const { return m_mainTable; }
    platform::RefreshHeader *refreshHeader() const { return m_header; }
    platform::RefreshFooter *refreshFooter() const { return m_footer; }
    // Nothing fills it: there is no news service.
    QVariantList arraySource() const { return m_arraySource; }
    int pageMain() const { return m_pageMain; }

    int numberOfRows() const { return NumberOfRows; }
    qreal heightForRow(int row) const;

    // A row was tapped: opens the news page.
    Q_INVOKABLE void didSelectRowAtIndex(int row);

signals:
    void pageMainChanged();
    // The tapped row's highlight goes (animated).
    void rowDeselected(int row);

protected:
    void viewDidLoad() override;
    void setRefleshDataAction() override;

private:
    void pullDown();
    void pullUp();
    void setPageMain(int page);

    platform::RowModel *m_mainTable;
    platform::RefreshHeader *m_header;
    platform::RefreshFooter *m_footer;
    QVariantList m_arraySource;
    int m_pageMain = 1;
};
