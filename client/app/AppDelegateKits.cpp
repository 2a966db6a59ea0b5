#include "app/AppDelegate.h"

// Registration of the sharing kit, the push kit and the payment paths; until the kits are wired
// these steps have nothing to start.

void AppDelegate::initWithShareSDK() { }

void AppDelegate::initWithGeTui(const QVariantMap &launchOptions)
{
    Q_UNUSED(launchOptions)
}

void AppDelegate::applicationDidBecomeActive() { }

void AppDelegate::applicationDidEnterBackground() { }
