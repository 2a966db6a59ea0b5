#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

class QQmlEngine;
class QJSEngine;

namespace platform {

// The app's progress and status overlay: one text at a time, a new one replaces the old. Progress
// stays until dismissed; success and error go by themselves after a short time. A masked overlay
// dims the screen and blocks input.
class Hud : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool visible READ isVisible NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(Kind kind READ kind NOTIFY changed)
    Q_PROPERTY(bool masked READ isMasked NOTIFY changed)

public:
    enum Kind { Progress, Success, Error };
    Q_ENUM(Kind)

    static constexpr int DefaultAutoDismissMs = 1500;

    static Hud &shared();
    static Hud *create(QQmlEngine *, QJSEngine *);

    void showWithStatus(const QString &text, bool mask = false);
    void showSuccessWithStatus(const QString &text, bool mask = false);
    void showErrorWithStatus(const QString &text, bool mask = false);
    Q_INVOKABLE void dismiss();

    bool isVisible() const { return m_visible; }
    QString text() const { return m_text; }
    Kind kind() const { return m_kind; }
    bool isMasked() const { return m_masked; }

    // How long success and error stay (tests shorten it).
    int autoDismissInterval() const { return m_autoDismiss.interval(); }
    void setAutoDismissInterval(int ms) { m_autoDismiss.setInterval(ms); }
    bool isAutoDismissScheduled() const { return m_autoDismiss.isActive(); }

signals:
    void changed();
    // Each text as it is shown; the HUD keeps no record of them (tests listen here).
    void shown(platform::Hud::Kind kind, const QString &text, bool masked);
    void dismissed();

private:
    Hud();
    void show(Kind kind, const QString &text, bool mask);

    bool m_visible = false;
    QString m_text;
    Kind m_kind = Progress;
    bool m_masked = false;
    QTimer m_autoDismiss;
};

} // namespace platform
