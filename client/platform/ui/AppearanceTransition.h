#pragma once

#include "platform/ui/ViewController.h"

#include <QList>
#include <QPointer>

#include <functional>

namespace platform {

// One change of what is on screen inside a container: `from` goes, `to` comes. Starting it sends
// the will-callbacks; finishing it sends the did-callbacks, deletes the controllers that left for
// good and runs the completion. An animated change that the QML shell draws is finished by the
// shell when its animation ends; every other change finishes at once.
class AppearanceTransition
{
public:
    using Completion = std::function<void()>;

    struct Change
    {
        ViewController *from = nullptr;
        ViewController *to = nullptr;
        bool animated = false;
        QList<ViewController *> removed; // deleted later once the change is finished
        Completion completion;
    };

    // Starts `change` inside a container in the state `container`. Only a container that is fully
    // on screen runs the change; one that is itself coming or going settles its children at once.
    void start(ViewController::Appearance container, Change change, bool finishLater);
    void finish();
    bool isPending() const { return m_pending; }

private:
    static void settleOffscreen(ViewController::Appearance container, const Change &change);
    static void release(const QList<QPointer<ViewController>> &removed);

    bool m_pending = false;
    QPointer<ViewController> m_from;
    QPointer<ViewController> m_to;
    QList<QPointer<ViewController>> m_removed;
    Completion m_completion;
};

} // namespace platform
