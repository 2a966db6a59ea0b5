#pragma once

#include <QString>

namespace tarvel::config {

// The store service's base (scheme and host, no trailing slash). Compiled in; development and tests
// may override it with TARVEL_API_BASE_URL.
QString apiBaseUrl();

} // namespace tarvel::config

// The name the rest of the code uses for the store's base address.
inline QString ApiBaseUrl()
{
    return tarvel::config::apiBaseUrl();
}
