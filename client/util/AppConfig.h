#pragma once

#include <QString>
#include <QUrl>

namespace tarvel::config {

// The store service's base (scheme and host, no trailing slash). Compiled in; development and tests
// may override it with TARVEL_API_BASE_URL.
QString apiBaseUrl();

// The object-storage upload address for avatars. Compiled in (UploadUrl); when that is empty, the
// store's own sandbox upload at <apiBaseUrl>/sandbox/qiniu/upload.
QString uploadUrl();

// The help site's start page and the company's two pages (the app's and its own). Compiled in
// (HelpSiteUrl, ProductPageUrl, CompanyPageUrl); an address that does not begin with "http" is a
// path of the store.
QUrl helpSiteUrl();
QUrl productPageUrl();
QUrl companyPageUrl();

} // namespace tarvel::config

// An address from an answer made whole: one that begins with "http" stays as it is; any other is
// a path of the store and goes under ApiBaseUrl, with the "/" supplied when the path lacks it
// ("news/3" and "/news/3" both give <base>/news/3). Links the user follows (carousel entries,
// message addresses) all go through here, so a relative one opens the same way everywhere.
QString absoluteAddress(const QString &address);

// The name the rest of the code uses for the store's base address.
inline QString ApiBaseUrl()
{
    return tarvel::config::apiBaseUrl();
}
