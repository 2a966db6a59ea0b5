#include "screens/account/MyMessageViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/RowModel.h"
#include "screens/account/MessageLink.h"
#include "screens/account/MyMessageCell.h"
#include "screens/account/MyMessageDetailViewController.h"
#include "service/ICDataHelper.h"

const QString MyMessageViewController::messagesFileName = QStringLiteral("GTMessage.plist");

namespace {
// Stored dates carry the year ("2024-07-01 10:00"); the list shows the rest.
constexpr int YearPrefixLength = 5;
} // namespace

MyMessageViewController::MyMessageViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_tableMain(new platform::RowModel(
              {QStringLiteral("imageName"), QStringLiteral("title"), QStringLiteral("time")}, this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/MyMessageView.qml")));
    m_tableMain->setProvider([this] {
        QList<QVariantMap> rows;
        rows.reserve(m_arraySource.size());
        for (const QVariant &message : std::as_const(m_arraySource))
            rows.append(rowForMessage(message));
        return rows;
    });
}

QVariantMap MyMessageViewController::rowForMessage(const QVariant &message)
{
    const QVariantMap values = message.toMap();
    MyMessageCell cell;
    cell.setCellContentWithType(
            MyMessageCell::NotRead, values.value(QStringLiteral("title")).toString(),
            values.value(QStringLiteral("date")).toString().mid(YearPrefixLength));
    return cell.row();
}

void MyMessageViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("我的消息"));
    leftBarItem()->setHidden(true);
    rightBarItem()->setHidden(true);
}

void MyMessageViewController::viewWillAppear(bool animated)
{
    Q9FatherViewController::viewWillAppear(animated);
    setNavigationBarTransparent(true);
}

void MyMessageViewController::setLoadViewAction()
{
    refreshData();
}

void MyMessageViewController::setRefleshDataAction()
{
    hideTabBar(false);
    // Messages that arrived while another tab was shown appear when this one comes back.
    refreshData();
}

void MyMessageViewController::refreshData()
{
    m_arraySource = ICDataHelper::GetFileWithName(messagesFileName).value_or(QVariantList());
    m_tableMain->reloadData();
}

void MyMessageViewController::didSelectRowAtIndex(int row)
{
    if (row < 0 || row >= m_arraySource.size())
        return;
    const QVariantMap message = m_arraySource.at(row).toMap();
    const QString url = message.value(QStringLiteral("url")).toString();
    if (!url.isEmpty()) {
        MessageLink::follow(url, navigationController());
        return;
    }
    if (platform::NavigationController *navigation = navigationController())
        navigation->pushViewController(new MyMessageDetailViewController(message), true);
}
