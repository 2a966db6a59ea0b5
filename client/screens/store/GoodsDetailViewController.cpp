#include "screens/store/GoodsDetailViewController.h"

#include "app/AppDelegate.h"
#include "models/GameRelease.h"
#include "platform/UserDefaults.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "screens/store/BindingPackageViewContoller.h"
#include "screens/store/OwnedMarks.h"
#include "service/ICCookiesHelper.h"
#include "service/NetWorkHelper.h"
#include "service/OwnedGames.h"
#include "util/AppConfig.h"

#include <QDateTime>
#include <QPointer>

using platform::Hud;

namespace {

const QString AddToCartPath = QStringLiteral("/cart/add.json");

QString storedCartNum()
{
    return platform::UserDefaults::standard().objectForKey(ICCookiesHelper::cartNumKey).toString();
}

} // namespace

GoodsDetailViewController::GoodsDetailViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_headerView(new GoodsDetailHeaderView(this))
    , m_footerView(new GoodsDetailBottomView(this))
    , m_webView(new GoodsDetailWebView(this))
    , m_shareView(new ICShareView(this))
    , m_tableMain(new platform::RowModel(
              {QStringLiteral("kind"), QStringLiteral("section"), QStringLiteral("rowIndex"),
               QStringLiteral("identifier"), QStringLiteral("tag"), QStringLiteral("title"),
               QStringLiteral("titleParts"), QStringLiteral("icon"), QStringLiteral("type"),
               QStringLiteral("lookTag"), QStringLiteral("hidden")},
              this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/store/GoodsDetailView.qml")));
    connect(&OwnedGames::shared(), &OwnedGames::changed, this,
            &GoodsDetailViewController::ownedChanged);
}

bool GoodsDetailViewController::isOwned() const
{
    return OwnedMarks::isOwned(m_gameId);
}

void GoodsDetailViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("商品详情"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    setNavRightDefaultItemWithImageIcon(QStringLiteral("goodsDetail_share"), QString());
}

void GoodsDetailViewController::setLoadViewAction()
{
    if (m_viewBuilt)
        return;
    m_viewBuilt = true;
    m_footerView->setButtonCartBlock([this](int index) { clickBottomButton(index); });
    connect(m_webView, &GoodsDetailWebView::didFinishLoad, this,
            &GoodsDetailViewController::webViewDidFinishLoad);
    // The count also changes while the page is covered (a sign-in reads the cart afterwards).
    connect(&platform::UserDefaults::standard(), &platform::UserDefaults::valueChanged, this,
            [this](const QString &key, const QVariant &, const QVariant &value) {
                if (key == ICCookiesHelper::cartNumKey)
                    m_footerView->setCartNum(value.toString());
            });
    refreshData();
}

void GoodsDetailViewController::setRefleshDataAction()
{
    hideTabBar(true);
    m_footerView->setCartNum(storedCartNum());
}

void GoodsDetailViewController::refreshData()
{
    QPointer<GoodsDetailViewController> self(this);
    NetWorkHelper::shareInstance()->getGameDetailWithGameId(
            m_gameId, QStringLiteral("1"),
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在加载"), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &data, const QVariant &) {
                if (self)
                    self->showDetail(data);
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                Hud::shared().showErrorWithStatus(message.contains(QLatin1String("NotFound"))
                                                          ? QStringLiteral("未找到该游戏")
                                                          : message);
            });
}

void GoodsDetailViewController::showDetail(const QVariant &data)
{
    if (data.typeId() == QMetaType::QVariantMap) {
        const QVariantMap raw = data.toMap();
        Object_GameDetail game = JSONModel::initWithDictionary<Object_GameDetail>(data).value();
        game.completeWithRaw(raw);
        m_parentID = game.baseGameId();
        m_isPresell = isPreSale(game.release_date) ? QStringLiteral("1") : QStringLiteral("0");
        const QVariant systems = raw.value(QStringLiteral("os"));
        m_headerView->setViewContentWithImage(
                game.product_image, game.title, game.alias_name, game.list_price, game.sale_price,
                m_isPresell,
                systems.typeId() == QMetaType::QVariantList ? systems.toList() : QVariantList());
        m_footerView->setPrice(game.sale_price);
        m_sourceModel = std::move(game);
        m_webView->loadHTMLString(m_sourceModel->raw_summary);
        m_tableHeaderShown = true;
        emit sourceModelChanged();
    }
    reloadData();
}

void GoodsDetailViewController::webViewDidFinishLoad()
{
    if (!m_sourceModel)
        return;
    // The HTML is replaced by its plain text on purpose (the share text uses it too).
    m_sourceModel->raw_summary = m_webView->innerText();
    reloadData();
}

void GoodsDetailViewController::reloadData()
{
    m_sections.clear();
    if (m_sourceModel)
        m_sections = GoodsDetailSections::build(*m_sourceModel, m_isPresell,
                                                QDateTime::currentDateTime());
    // Until the description is rendered its row stays empty rather than showing the HTML.
    if (m_webView->isLoading() && numberOfSections() == 4)
        m_sections[3][0].setCellContentWithContent(QString());
    QList<QVariantMap> rows;
    for (int section = 0; section < numberOfSections(); ++section) {
        rows.append({{QStringLiteral("kind"), QStringLiteral("section")},
                     {QStringLiteral("section"), section},
                     {QStringLiteral("title"), titleForHeaderInSection(section)}});
        for (int row = 0; row < numberOfRowsInSection(section); ++row) {
            QVariantMap cell = cellForRowAtIndexPath(section, row).toRow();
            cell.insert(QStringLiteral("kind"), QStringLiteral("cell"));
            cell.insert(QStringLiteral("section"), section);
            cell.insert(QStringLiteral("rowIndex"), row);
            rows.append(cell);
        }
    }
    m_tableMain->setRows(rows);
}

int GoodsDetailViewController::numberOfRowsInSection(int section) const
{
    return int(m_sections.value(section).size());
}

GoodsDetailCell GoodsDetailViewController::cellForRowAtIndexPath(int section, int row) const
{
    return m_sections.value(section).value(row);
}

QString GoodsDetailViewController::titleForHeaderInSection(int section) const
{
    return GoodsDetailSections::headerTitle(section);
}

void GoodsDetailViewController::clickButtonLook(int tag)
{
    if (tag == GoodsDetailSections::LookBaseGame) {
        // A base game without an id has nothing to open: the tap does nothing the user sees.
        if (m_parentID.isEmpty()) {
            qInfo("GoodsDetailViewController: the base game of %s has no id, nothing to open",
                  qUtf8Printable(m_gameId));
            return;
        }
        auto *baseGame = new GoodsDetailViewController;
        baseGame->setGameId(m_parentID);
        pushViewController(baseGame);
        return;
    }
    if (!m_sourceModel)
        return;
    const bool bundles = tag == GoodsDetailSections::LookBundles;
    const QList<Object_DLCOrBind> &items
            = bundles ? m_sourceModel->included_bundles : m_sourceModel->dlcs;
    if ((!bundles && tag != GoodsDetailSections::LookDlcs) || items.isEmpty())
        return;
    const QString title = bundles ? QStringLiteral("%1的捆绑包") : QStringLiteral("%1的DLC");
    pushViewController(new BindingPackageViewContoller(title.arg(m_sourceModel->title), items));
}

void GoodsDetailViewController::clickBottomButton(int index)
{
    if (!AppDelegate::shared()->isSignedIn()) {
        presentSignIn();
        return;
    }
    switch (index) {
    case GoodsDetailBottomView::CartButton:
        openCart();
        break;
    case GoodsDetailBottomView::OneKeyBuyButton:
        pushViewController(new ConfirmOrderViewController({m_gameId},
                                                          ConfirmOrderViewController::BuyDirectly));
        break;
    case GoodsDetailBottomView::AddToCartButton:
        addGoodsToCart();
        break;
    default:
        break;
    }
}

void GoodsDetailViewController::addGoodsToCart()
{
    QPointer<GoodsDetailViewController> self(this);
    NetWorkHelper::shareInstance()->addGoodsToCartWithGameIds(
            m_gameId,
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在添加..."), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &, const QVariant &) {
                if (ICCookiesHelper::updateCartNumFromCookiesForPath(AddToCartPath) && self)
                    self->m_footerView->setCartNum(storedCartNum());
                Hud::shared().showSuccessWithStatus(QStringLiteral("添加成功"));
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                Hud::shared().showErrorWithStatus(message);
            });
}

void GoodsDetailViewController::setNavRightAction()
{
    const Object_GameDetail game = m_sourceModel.value_or(Object_GameDetail());
    m_shareView->setShareTitle(game.title, game.raw_summary, game.product_image,
                               ApiBaseUrl() + QStringLiteral("/products/%1").arg(m_gameId));
    m_shareView->showView();
}

// Leaving a chain of detail pages (a game, its DLC, that DLC's base game ...) goes back in one step
// to the screen the first of them was opened from.
void GoodsDetailViewController::setNavLeftAction()
{
    platform::NavigationController *navigation = navigationController();
    if (!navigation)
        return;
    const QList<platform::ViewController *> stack = navigation->viewControllers();
    for (qsizetype i = 1; i < stack.size(); ++i) {
        if (isDetailPage(stack.at(i))) {
            navigation->popToViewController(stack.at(i - 1), true);
            return;
        }
    }
    navigation->popViewController(true);
}

bool GoodsDetailViewController::isDetailPage(const platform::ViewController *controller)
{
    return controller->inherits("GoodsDetailViewController")
           || controller->inherits("MyMessageDetailViewController");
}

void GoodsDetailViewController::pushViewController(platform::ViewController *controller)
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->pushViewController(controller, true);
    else
        delete controller;
}
