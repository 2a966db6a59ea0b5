#include "util/AppConfig.h"

#include "TarvelConfig.h"

namespace tarvel::config {

QString apiBaseUrl()
{
    QString base = qEnvironmentVariable("TARVEL_API_BASE_URL");
    if (base.isEmpty())
        base = QString::fromUtf8(ApiBaseUrl);
    while (base.endsWith(QLatin1Char('/')))
        base.chop(1);
    return base;
}

namespace {

// A compiled-in page address: as it is when it begins with "http", else under the store.
QUrl pageUrl(const char *compiled)
{
    const QString address = QString::fromUtf8(compiled);
    if (address.startsWith(QLatin1String("http")))
        return QUrl(address);
    return QUrl(apiBaseUrl() + address);
}

} // namespace

QUrl helpSiteUrl()
{
    return pageUrl(HelpSiteUrl);
}

QUrl productPageUrl()
{
    return pageUrl(ProductPageUrl);
}

QUrl companyPageUrl()
{
    return pageUrl(CompanyPageUrl);
}

QString uploadUrl()
{
    const QString compiled = QString::fromUtf8(UploadUrl);
    return compiled.isEmpty() ? apiBaseUrl() + QStringLiteral("/sandbox/qiniu/upload") : compiled;
}

} // namespace tarvel::config

QString absoluteAddress(const QString &address)
{
    if (address.startsWith(QLatin1String("http")))
        return address;
    const QString base = tarvel::config::apiBaseUrl();
    return address.startsWith(QLatin1Char('/')) ? base + address
                                                : base + QLatin1Char('/') + address;
}
