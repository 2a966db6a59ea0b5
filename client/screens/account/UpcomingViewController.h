#pragma once

#include "screens/account/ComingSoonViewController.h"

// A screen of the my page that is not in the app yet, named by its title, with a short note.
class UpcomingViewController : public ComingSoonViewController
{
    Q_OBJECT
public:
    UpcomingViewController(const QString &title, const QString &note, QObject *parent = nullptr);

protected:
    void setRefleshDataAction() override { hideTabBar(true); }
    QString screenTitle() const override { return m_title; }
    QString screenNote() const override { return m_note; }

private:
    QString m_title;
    QString m_note;
};
