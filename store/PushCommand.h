#pragma once

#include <QStringList>

// `tarvel-store push --title T --content C [--url U] [--date D] [--client-id ID] [--server URL]`:
// sends a push message through a running store's sandbox channel, to one client or to all.
namespace PushCommand {
int run(const QStringList &arguments);
}
