#include "screens/account/PlaceholderWebPage.h"

QString PlaceholderWebPage::text()
{
    // The ASCII comma is the text as it stands.
    return QStringLiteral("这是一个web页,尚未开发");
}

QString PlaceholderWebPage::html()
{
    return QStringLiteral("<!DOCTYPE html><html lang=\"zh-CN\"><head><meta charset=\"utf-8\">"
                          "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
                          "<title>%1</title></head><body style=\"margin:0;display:flex;"
                          "align-items:center;justify-content:center;height:100vh;"
                          "font-family:sans-serif;font-size:16px\"><p>%1</p></body>"
                          "</html>")
            .arg(text());
}
