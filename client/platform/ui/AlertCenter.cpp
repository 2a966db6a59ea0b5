#include "platform/ui/AlertCenter.h"

#include <QJSEngine>
#include <QVariantMap>

namespace platform {

AlertCenter &AlertCenter::shared()
{
    static AlertCenter center;
    return center;
}

AlertCenter *AlertCenter::create(QQmlEngine *, QJSEngine *)
{
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

void AlertCenter::showAlert(const QString &title, const QString &message,
                            const QString &cancelButtonTitle, const QStringList &otherButtonTitles,
                            Handler handler)
{
    Request request{Alert, title, message, {}, std::move(handler)};
    if (!cancelButtonTitle.isEmpty())
        request.buttons.append({cancelButtonTitle, Cancel});
    for (const QString &other : otherButtonTitles)
        request.buttons.append({other, Default});
    if (request.buttons.isEmpty()) // an alert nobody could close would block the app
        request.buttons.append({QStringLiteral("确定"), Cancel});
    enqueue(std::move(request));
}

void AlertCenter::showActionSheet(const QString &title, const QString &cancelButtonTitle,
                                  const QString &destructiveButtonTitle,
                                  const QStringList &otherButtonTitles, Handler handler)
{
    Request request{ActionSheet, title, QString(), {}, std::move(handler)};
    if (!destructiveButtonTitle.isEmpty())
        request.buttons.append({destructiveButtonTitle, Destructive});
    for (const QString &other : otherButtonTitles)
        request.buttons.append({other, Default});
    if (!cancelButtonTitle.isEmpty())
        request.buttons.append({cancelButtonTitle, Cancel});
    enqueue(std::move(request));
}

void AlertCenter::enqueue(Request request)
{
    m_queue.append(std::move(request));
    emit currentChanged();
}

bool AlertCenter::choose(int index)
{
    if (m_queue.isEmpty() || index < 0 || index >= m_queue.constFirst().buttons.size())
        return false;
    // The handler may show the next alert itself, so the request leaves the queue first.
    const Handler handler = m_queue.takeFirst().handler;
    emit currentChanged();
    if (handler)
        handler(index);
    return true;
}

void AlertCenter::clear()
{
    if (m_queue.isEmpty())
        return;
    m_queue.clear();
    emit currentChanged();
}

AlertCenter::Style AlertCenter::style() const
{
    return m_queue.isEmpty() ? Alert : m_queue.constFirst().style;
}

QString AlertCenter::title() const
{
    return m_queue.isEmpty() ? QString() : m_queue.constFirst().title;
}

QString AlertCenter::message() const
{
    return m_queue.isEmpty() ? QString() : m_queue.constFirst().message;
}

QStringList AlertCenter::buttonTitles() const
{
    QStringList titles;
    if (!m_queue.isEmpty()) {
        for (const Button &button : m_queue.constFirst().buttons)
            titles.append(button.title);
    }
    return titles;
}

int AlertCenter::indexOfRole(Role role) const
{
    if (m_queue.isEmpty())
        return -1;
    const QList<Button> &buttons = m_queue.constFirst().buttons;
    for (int i = 0; i < buttons.size(); ++i) {
        if (buttons.at(i).role == role)
            return i;
    }
    return -1;
}

int AlertCenter::cancelButtonIndex() const
{
    return indexOfRole(Cancel);
}

int AlertCenter::destructiveButtonIndex() const
{
    return indexOfRole(Destructive);
}

// An alert with two buttons draws them side by side, cancel on the left; with more, one per row
// and cancel last. A sheet draws by index, which already puts cancel last.
QList<int> AlertCenter::drawingOrder() const
{
    QList<int> order;
    if (m_queue.isEmpty())
        return order;
    const Request &request = m_queue.constFirst();
    const int cancel = cancelButtonIndex();
    for (int i = 0; i < request.buttons.size(); ++i) {
        if (i != cancel)
            order.append(i);
    }
    if (cancel < 0)
        return order;
    if (request.style == Alert && request.buttons.size() == 2)
        order.prepend(cancel);
    else
        order.append(cancel);
    return order;
}

QVariantList AlertCenter::buttons() const
{
    QVariantList result;
    for (int index : drawingOrder()) {
        const Button &button = m_queue.constFirst().buttons.at(index);
        result.append(QVariantMap{
                {QStringLiteral("title"), button.title},
                {QStringLiteral("index"), index},
                {QStringLiteral("role"), int(button.role)},
        });
    }
    return result;
}

} // namespace platform
