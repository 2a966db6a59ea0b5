#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <functional>

class QQmlEngine;
class QJSEngine;

namespace platform {

// Alerts and action sheets waiting for the user. The QML shell shows the current request; the
// user's choice (choose) runs its handler with the button's index, then the next request shows.
//
// Indexes follow the platform's conventions. Alert: the cancel button is 0 and the other buttons
// follow from 1 (from 0 when there is no cancel button; an alert without any button gets a
// cancel button "确定"). Action sheet: the destructive button is
// 0, the other buttons follow, the cancel button comes last.
class AlertCenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool active READ isActive NOTIFY currentChanged)
    Q_PROPERTY(Style style READ style NOTIFY currentChanged)
    Q_PROPERTY(QString title READ title NOTIFY currentChanged)
    Q_PROPERTY(QString message READ message NOTIFY currentChanged)
    Q_PROPERTY(QVariantList buttons READ buttons NOTIFY currentChanged)
    Q_PROPERTY(int pendingCount READ pendingCount NOTIFY currentChanged)

public:
    enum Style { Alert, ActionSheet };
    Q_ENUM(Style)
    enum Role { Default, Cancel, Destructive };
    Q_ENUM(Role)
    using Handler = std::function<void(int index)>;

    static AlertCenter &shared();
    static AlertCenter *create(QQmlEngine *, QJSEngine *);

    void showAlert(const QString &title, const QString &message, const QString &cancelButtonTitle,
                   const QStringList &otherButtonTitles, Handler handler = {});
    void showActionSheet(const QString &title, const QString &cancelButtonTitle,
                         const QString &destructiveButtonTitle,
                         const QStringList &otherButtonTitles, Handler handler = {});

    // The user chose the button with `index`; false when nothing is shown or no such button.
    Q_INVOKABLE bool choose(int index);
    // Drops every request without running handlers.
    void clear();

    bool isActive() const { return !m_queue.isEmpty(); }
    Style style() const;
    QString title() const;
    QString message() const;
    // The current request's button titles by index.
    QStringList buttonTitles() const;
    int cancelButtonIndex() const; // -1 when there is none
    int destructiveButtonIndex() const; // -1 when there is none
    // The buttons in the order they are drawn: maps of "title", "index" and "role".
    QVariantList buttons() const;
    int pendingCount() const { return int(m_queue.size()); }

signals:
    void currentChanged();

private:
    struct Button
    {
        QString title;
        Role role;
    };
    struct Request
    {
        Style style;
        QString title;
        QString message;
        QList<Button> buttons; // by index
        Handler handler;
    };

    AlertCenter() = default;
    void enqueue(Request request);
    int indexOfRole(Role role) const;
    QList<int> drawingOrder() const;

    QList<Request> m_queue;
};

} // namespace platform
