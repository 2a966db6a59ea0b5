#pragma once

#include "app/Q9FatherViewController.h"

#include <QStringList>
#include <QtQml/qqmlregistration.h>

// The guide shown over the app the first time a version starts: its pictures side by side in a
// paged horizontal scroller; the see-through button on the last page (actionMoveOut) closes it.
class UserGuideViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(QStringList imageNames READ imageNames CONSTANT)
    Q_PROPERTY(int currentPage READ currentPage WRITE setCurrentPage NOTIFY currentPageChanged)
public:
    explicit UserGuideViewController(const QStringList &imageNames, QObject *parent = nullptr);

    QStringList imageNames() const { return m_imageNames; }
    int currentPage() const { return m_currentPage; }
    void setCurrentPage(int page);

    Q_INVOKABLE void actionMoveOut();

signals:
    void currentPageChanged();

protected:
    void viewDidLoad() override;

private:
    QStringList m_imageNames;
    int m_currentPage = 0;
};
