#include "screens/purchase/MyGamesViewController.h"

MyGamesViewController::MyGamesViewController(QObject *parent)
    : ComingSoonViewController(parent)
{ }
