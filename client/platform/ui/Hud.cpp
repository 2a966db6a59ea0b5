#include "platform/ui/Hud.h"

#include <QCoreApplication>
#include <QJSEngine>

namespace platform {

Hud::Hud()
{
    m_autoDismiss.setSingleShot(true);
    m_autoDismiss.setInterval(DefaultAutoDismissMs);
    connect(&m_autoDismiss, &QTimer::timeout, this, &Hud::dismiss);
    if (QCoreApplication *app = QCoreApplication::instance())
        connect(app, &QCoreApplication::aboutToQuit, &m_autoDismiss, &QTimer::stop);
}

Hud &Hud::shared()
{
    static Hud hud;
    return hud;
}

Hud *Hud::create(QQmlEngine *, QJSEngine *)
{
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

void Hud::showWithStatus(const QString &text, bool mask)
{
    show(Progress, text, mask);
}

void Hud::showSuccessWithStatus(const QString &text, bool mask)
{
    show(Success, text, mask);
    m_autoDismiss.start();
}

void Hud::showErrorWithStatus(const QString &text, bool mask)
{
    show(Error, text, mask);
    m_autoDismiss.start();
}

void Hud::show(Kind kind, const QString &text, bool mask)
{
    m_autoDismiss.stop();
    m_visible = true;
    m_kind = kind;
    m_text = text;
    m_masked = mask;
    emit changed();
    emit shown(kind, text, mask);
}

void Hud::dismiss()
{
    m_autoDismiss.stop();
    if (!m_visible)
        return;
    m_visible = false;
    m_masked = false;
    emit changed();
    emit dismissed();
}

} // namespace platform
