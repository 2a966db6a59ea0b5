#pragma once

#include "app/Q9FatherViewController.h"

#include <QString>
#include <QtQml/qqmlregistration.h>

// A purchase screen whose function is still being built: its title and a short note, with the
// back button. The tab strip stays hidden while it shows.
class ComingSoonViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(QString note READ note CONSTANT)
public:
    ComingSoonViewController(const QString &title, const QString &note, QObject *parent = nullptr);

    QString note() const { return m_note; }

protected:
    void viewDidLoad() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    QString m_screenTitle;
    QString m_note;
};
