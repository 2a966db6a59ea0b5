#pragma once

#include "app/Q9FatherViewController.h"
#include "platform/ui/Button.h"

#include <QtQml/qqmlregistration.h>

// "关于Tarvel游戏": the app's name and version, and two links into the company's web site (the
// app's page and the company's own page), opened in the browser.
class AboutViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are created by C++")
    Q_PROPERTY(platform::Button *buttonTarvel READ buttonTarvel CONSTANT)
    Q_PROPERTY(platform::Button *buttonQMRT READ buttonQMRT CONSTANT)
    Q_PROPERTY(QString versionText READ versionText CONSTANT)
public:
    explicit AboutViewController(QObject *parent = nullptr);

    platform::Button *buttonTarvel() const { return m_buttonTarvel; }
    platform::Button *buttonQMRT() const { return m_buttonQMRT; }
    QString versionText() const;

    void clickButtonTarvel();
    void clickButtonQMRT();

protected:
    void viewDidLoad() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    platform::Button *makeButton(const QString &title);

    platform::Button *m_buttonTarvel;
    platform::Button *m_buttonQMRT;
};
