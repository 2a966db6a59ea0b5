#pragma once

#include <QStringList>

// `tarvel-store push --title T --content C [--url U] [--date D] [--client-id ID] [--db PATH]`:
// an operator's command on the store's machine; it puts a push message for one client or for all
// into the store's database, where a running store's push channel delivers it.
namespace PushCommand {
int run(const QStringList &arguments);
}
