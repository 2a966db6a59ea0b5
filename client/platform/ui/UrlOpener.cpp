#include "platform/ui/UrlOpener.h"

#include <QDesktopServices>

namespace platform {

UrlOpener &UrlOpener::shared()
{
    static UrlOpener opener;
    return opener;
}

bool UrlOpener::openURL(const QUrl &url)
{
    m_opened.append(url);
    if (url.isEmpty() || !url.isValid())
        return false;
    if (m_handler)
        return m_handler(url);
    return QDesktopServices::openUrl(url);
}

} // namespace platform
