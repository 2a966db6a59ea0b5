#pragma once

#include "app/Q9FatherViewController.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"

#include <QList>
#include <QUrl>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

// "我的Tarvel", the signed-in user's own page: the avatar and nickname on the head picture, six
// menu buttons (games, orders, personal data, account security, preferences, help), sign-out and
// the about link.
class TabFourViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(platform::Label *labelName READ labelName CONSTANT)
    Q_PROPERTY(QUrl imageHead READ imageHead NOTIFY userShown)
    Q_PROPERTY(QString nickName READ nickName NOTIFY userShown)
    Q_PROPERTY(QList<QObject *> menuButtons READ menuButtonObjects CONSTANT)
    Q_PROPERTY(platform::Button *buttonLogOut READ buttonLogOut CONSTANT)
    Q_PROPERTY(platform::Button *buttonAbout READ buttonAbout CONSTANT)
public:
    static constexpr int MenuCount = 6;
    enum Menu { MyGames = 0, MyOrders, PersonalData, AccountSafe, Preferences, HelpAndFeedback };
    Q_ENUM(Menu)

    explicit TabFourViewController(QObject *parent = nullptr);

    platform::Label *labelName() const { return m_labelName; }
    // The signed-in user's nickname as last shown.
    QString nickName() const { return m_labelName->text(); }
    // The avatar's address; empty without one (the head shows its default picture).
    QUrl imageHead() const { return m_imageHead; }
    // The six menu buttons, tags 0 to 5, images "mine_menu1" to "mine_menu6".
    QList<platform::Button *> menuButtons() const { return m_menuButtons; }
    QList<QObject *> menuButtonObjects() const;
    platform::Button *buttonLogOut() const { return m_buttonLogOut; }
    platform::Button *buttonAbout() const { return m_buttonAbout; }

    // The avatar address to load: as is when it begins with "http", else under the store.
    static QUrl avatarUrl(const QString &avatar);

    // A menu button: pushes its screen; tags of 6 and above do nothing.
    void clickButtonMenu(int tag);
    // Signs out on this device only: no user, no stored user, no cookies; back to the home tab.
    void clickButtonLogOut();
    void clickButtonAbout();

signals:
    void userShown();

protected:
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void setRefleshDataAction() override;

private:
    platform::Button *makeButton(const QString &title, const QString &imageName, int tag);
    void push(platform::ViewController *screen);
    // The destinations still coming to the app open their placeholders.
    static platform::ViewController *personalDataScreen();
    static platform::ViewController *accountSafeScreen();

    platform::Label *m_labelName;
    QUrl m_imageHead;
    QList<platform::Button *> m_menuButtons;
    platform::Button *m_buttonLogOut;
    platform::Button *m_buttonAbout;
};
