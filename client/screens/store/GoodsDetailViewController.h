#pragma once

#include "app/Q9FatherViewController.h"
#include "device/ICShareView.h"
#include "models/Object_GameDetail.h"
#include "platform/ui/RowModel.h"
#include "screens/store/GoodsDetailBottomView.h"
#include "screens/store/GoodsDetailCell.h"
#include "screens/store/GoodsDetailHeaderView.h"
#include "screens/store/GoodsDetailSections.h"
#include "screens/store/GoodsDetailWebView.h"

#include <QList>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <optional>

// One game's page (also a DLC's or a bundle's), opened by id: the header, a grouped table of
// notices, facts, related items and the description, and the fixed bottom bar. Set `gameId`, then
// push it; the detail loads once per page, each appearance refreshes the cart badge.
class GoodsDetailViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(QString gameId READ gameId CONSTANT)
    Q_PROPERTY(bool loaded READ isLoaded NOTIFY sourceModelChanged)
    Q_PROPERTY(
            GoodsDetailHeaderView *tableHeaderView READ tableHeaderView NOTIFY sourceModelChanged)
    Q_PROPERTY(GoodsDetailBottomView *footerView READ footerView CONSTANT)
    Q_PROPERTY(platform::RowModel *tableMain READ tableMain CONSTANT)
    Q_PROPERTY(ICShareView *shareView READ shareView CONSTANT)
    Q_PROPERTY(bool owned READ isOwned NOTIFY ownedChanged)
public:
    explicit GoodsDetailViewController(QObject *parent = nullptr);

    QString gameId() const { return m_gameId; }
    void setGameId(const QString &gameId) { m_gameId = gameId; }

    const std::optional<Object_GameDetail> &sourceModel() const { return m_sourceModel; }
    bool isLoaded() const { return m_sourceModel.has_value(); }
    // The signed-in user owns this game: the page shows "已拥有" beside the price (its buttons
    // stay as they are; the store refuses what an owner cannot do).
    bool isOwned() const;
    QString isPresell() const { return m_isPresell; }
    QString parentID() const { return m_parentID; }

    GoodsDetailHeaderView *headerView() const { return m_headerView; }
    // The table's header: the header view once the game is loaded, else none.
    GoodsDetailHeaderView *tableHeaderView() const
    {
        return m_tableHeaderShown ? m_headerView : nullptr;
    }
    GoodsDetailBottomView *footerView() const { return m_footerView; }
    GoodsDetailWebView *webView() const { return m_webView; }
    ICShareView *shareView() const { return m_shareView; }
    // The table as the view draws it: a "section" row before each section's cells.
    platform::RowModel *tableMain() const { return m_tableMain; }

    // The table's data source.
    int numberOfSections() const { return int(m_sections.size()); }
    int numberOfRowsInSection(int section) const;
    GoodsDetailCell cellForRowAtIndexPath(int section, int row) const;
    QString titleForHeaderInSection(int section) const;

    // Loads the detail of `gameId`.
    Q_INVOKABLE void refreshData();
    // The see button of a link row, by its tag: base game 0, bundles 1, DLCs 2.
    Q_INVOKABLE void clickButtonLook(int tag);
    // The description has been rendered: its text replaces the HTML.
    void webViewDidFinishLoad();

signals:
    void sourceModelChanged();
    void ownedChanged();

protected:
    void viewDidLoad() override;
    void setLoadViewAction() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;
    void setNavRightAction() override;

private:
    void showDetail(const QVariant &data);
    void reloadData();
    void clickBottomButton(int index);
    void addGoodsToCart();
    void pushViewController(platform::ViewController *controller);
    // The screens of other parts of the app (GoodsDetailViewControllerRoutes.cpp).
    void presentSignIn();
    void openCart();
    static bool isDetailPage(const platform::ViewController *controller);

    QString m_gameId;
    std::optional<Object_GameDetail> m_sourceModel;
    QString m_isPresell = QStringLiteral("0");
    QString m_parentID;
    QList<GoodsDetailSections::Section> m_sections;
    bool m_viewBuilt = false;
    bool m_tableHeaderShown = false;
    GoodsDetailHeaderView *m_headerView = nullptr;
    GoodsDetailBottomView *m_footerView = nullptr;
    GoodsDetailWebView *m_webView = nullptr;
    ICShareView *m_shareView = nullptr;
    platform::RowModel *m_tableMain = nullptr;
};
