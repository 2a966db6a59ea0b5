#include "app/MainViewController.h"

#include "app/SlidePanelController.h"
#include "platform/ui/BarButtonItem.h"

namespace {

SlidePanelController *panelOf(platform::ViewController *screen)
{
    for (platform::ViewController *p = screen; p; p = p->parentViewController()) {
        if (auto *panel = qobject_cast<SlidePanelController *>(p))
            return panel;
    }
    return nullptr;
}

} // namespace

MainViewController::MainViewController(QObject *parent)
    : Q9FatherViewController(parent)
{ }

void MainViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("Tarvel游戏"));
    setNavLeftDefaultItemWithImageIcon(QString(), QStringLiteral("菜单"));
    setNavRightDefaultItemWithImageIcon(QString(), QStringLiteral("更多"));
}

void MainViewController::setNavLeftAction()
{
    if (SlidePanelController *panel = panelOf(this))
        panel->toggleLeftPanel();
}

void MainViewController::setNavRightAction()
{
    if (SlidePanelController *panel = panelOf(this))
        panel->toggleRightPanel();
}
