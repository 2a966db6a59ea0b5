#include "screens/account/UpcomingViewController.h"

UpcomingViewController::UpcomingViewController(const QString &title, const QString &note,
                                               QObject *parent)
    : ComingSoonViewController(parent)
    , m_title(title)
    , m_note(note)
{ }
