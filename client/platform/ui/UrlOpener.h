#pragma once

#include <QList>
#include <QUrl>

#include <functional>

namespace platform {

// Hands addresses to the system (browser or another app). Tests replace the system with a handler
// and read back what was opened.
class UrlOpener
{
public:
    using Handler = std::function<bool(const QUrl &url)>;

    static UrlOpener &shared();

    // Records `url` and passes it on; false when it is empty or nobody could open it.
    bool openURL(const QUrl &url);

    // An empty handler goes back to the system.
    void setHandler(Handler handler) { m_handler = std::move(handler); }
    QList<QUrl> openedURLs() const { return m_opened; }
    QUrl lastOpenedURL() const { return m_opened.isEmpty() ? QUrl() : m_opened.constLast(); }
    void clearHistory() { m_opened.clear(); }

private:
    UrlOpener() = default;

    Handler m_handler;
    QList<QUrl> m_opened;
};

} // namespace platform
