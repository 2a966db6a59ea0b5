#pragma once

#include "app/Q9FatherViewController.h"

#include <QString>
#include <QVariantMap>

// One push message in full: title, date and content. Tapping the page follows the message's
// address the way the list does.
class MyMessageDetailViewController : public Q9FatherViewController
{
    Q_OBJECT
    Q_PROPERTY(QVariantMap sourceDic READ sourceDic CONSTANT)
    Q_PROPERTY(QString messageTitle READ messageTitle CONSTANT)
    Q_PROPERTY(QString messageDate READ messageDate CONSTANT)
    Q_PROPERTY(QString messageContent READ messageContent CONSTANT)
    Q_PROPERTY(bool hasLink READ hasLink CONSTANT)
public:
    explicit MyMessageDetailViewController(const QVariantMap &sourceDic = {},
                                           QObject *parent = nullptr);

    QVariantMap sourceDic() const { return m_sourceDic; }
    QString messageTitle() const;
    QString messageDate() const;
    QString messageContent() const;
    QString url() const;
    bool hasLink() const { return !url().isEmpty(); }

    Q_INVOKABLE void clickButtonBg();

protected:
    void viewDidLoad() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    QString text(const QString &key) const;

    QVariantMap m_sourceDic;
};
