#pragma once

#include <QString>

// The page the company's pages show until they are written.
class PlaceholderWebPage
{
public:
    PlaceholderWebPage() = delete;

    // The words the page says: "这是一个web页,尚未开发".
    static QString text();
    // A whole HTML page saying them, centred and readable on a phone.
    static QString html();
};
