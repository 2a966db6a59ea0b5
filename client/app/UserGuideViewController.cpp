#include "app/UserGuideViewController.h"

UserGuideViewController::UserGuideViewController(const QStringList &imageNames, QObject *parent)
    : Q9FatherViewController(parent)
    , m_imageNames(imageNames)
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/app/UserGuideView.qml")));
}

void UserGuideViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setBackgroundColor(Qt::white);
    setNavHidden(true);
}

void UserGuideViewController::setCurrentPage(int page)
{
    const int last = int(m_imageNames.size()) - 1;
    page = qBound(0, page, qMax(0, last));
    if (m_currentPage == page)
        return;
    m_currentPage = page;
    emit currentPageChanged();
}

void UserGuideViewController::actionMoveOut()
{
    dismissViewController(true);
}
