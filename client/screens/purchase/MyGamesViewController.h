#pragma once

#include "app/Q9FatherViewController.h"
#include "models/Object_MyGameList.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"

#include <QList>
#include <QtQml/qqmlregistration.h>

// "我的游戏": the covers of the games the user owns, refreshed by pulling down; a cover opens the
// game's page.
class MyGamesViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(platform::RowModel *collectionMenu READ collectionMenu CONSTANT)
    Q_PROPERTY(platform::RefreshHeader *refreshHeader READ refreshHeader CONSTANT)
public:
    explicit MyGamesViewController(QObject *parent = nullptr);

    QList<Object_MyGameList> arraySource() const { return m_arraySource; }
    platform::RowModel *collectionMenu() const { return m_collectionMenu; }
    platform::RefreshHeader *refreshHeader() const { return m_refreshHeader; }

    Q_INVOKABLE void didSelectItemAtIndex(int index);

protected:
    void viewDidLoad() override;
    void setLoadViewAction() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    void loadGames();
    void showGames(const QVariant &data);

    QList<Object_MyGameList> m_arraySource;
    platform::RowModel *m_collectionMenu = nullptr;
    platform::RefreshHeader *m_refreshHeader = nullptr;
};
