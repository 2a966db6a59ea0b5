#include "platform/ui/AppearanceTransition.h"

namespace platform {

namespace {

QList<QPointer<ViewController>> guarded(const QList<ViewController *> &controllers)
{
    QList<QPointer<ViewController>> result;
    for (ViewController *controller : controllers)
        result.append(controller);
    return result;
}

} // namespace

void AppearanceTransition::start(ViewController::Appearance container, Change change,
                                 bool finishLater)
{
    finish(); // a new change never overlaps an unfinished one

    if (change.from == change.to)
        change.from = change.to = nullptr;
    if (container != ViewController::Appeared) {
        settleOffscreen(container, change);
        release(guarded(change.removed));
        if (change.completion)
            change.completion();
        return;
    }

    m_pending = true;
    m_from = change.from;
    m_to = change.to;
    m_removed = guarded(change.removed);
    m_completion = std::move(change.completion);
    if (m_from)
        m_from->beginAppearanceTransition(false, change.animated);
    if (m_to)
        m_to->beginAppearanceTransition(true, change.animated);
    if (!finishLater || !change.animated)
        finish();
}

void AppearanceTransition::finish()
{
    if (!m_pending)
        return;
    m_pending = false;
    const QPointer<ViewController> from = std::exchange(m_from, nullptr);
    const QPointer<ViewController> to = std::exchange(m_to, nullptr);
    const QList<QPointer<ViewController>> removed = std::exchange(m_removed, {});
    const Completion completion = std::exchange(m_completion, {});
    if (from)
        from->endAppearanceTransition();
    if (to)
        to->endAppearanceTransition();
    release(removed);
    if (completion)
        completion();
}

// A container that is coming on screen takes the new child along with it; one that is going (or
// gone) lets the old child finish leaving and leaves the new one off screen.
void AppearanceTransition::settleOffscreen(ViewController::Appearance container,
                                           const Change &change)
{
    if (change.from && change.from->appearance() != ViewController::Disappeared) {
        change.from->beginAppearanceTransition(false, false);
        change.from->endAppearanceTransition();
    }
    if (change.to && container == ViewController::Appearing)
        change.to->beginAppearanceTransition(true, change.animated);
}

void AppearanceTransition::release(const QList<QPointer<ViewController>> &removed)
{
    for (const QPointer<ViewController> &controller : removed) {
        if (controller)
            controller->deleteLater();
    }
}

} // namespace platform
