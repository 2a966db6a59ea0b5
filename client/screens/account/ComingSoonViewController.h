#pragma once

#include "app/Q9FatherViewController.h"

#include <QString>

// A screen whose function is not in the app yet: its title, the back item, and a short note
// telling the user that the function comes soon.
class ComingSoonViewController : public Q9FatherViewController
{
    Q_OBJECT
    Q_PROPERTY(QString note READ note NOTIFY noteChanged)
public:
    explicit ComingSoonViewController(QObject *parent = nullptr);

    QString note() const { return m_note; }

signals:
    void noteChanged();

protected:
    void viewDidLoad() override;
    void setNavLeftAction() override;

    // What the page says; screens set it from their viewDidLoad.
    void setNote(const QString &note);
    // The title and note this screen shows, decided when its view loads.
    virtual QString screenTitle() const = 0;
    virtual QString screenNote() const = 0;

private:
    QString m_note;
};
