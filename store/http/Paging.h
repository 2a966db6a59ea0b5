#pragma once

class Exchange;

namespace Paging {
// The 1-based "page" field; 1 when absent. Throws ApiError for anything but a page number.
int page(Exchange &exchange);
} // namespace Paging
