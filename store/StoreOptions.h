#pragma once

#include <QString>

#include <chrono>
#include <cstdio>

// How one tarvel-store runs.
struct StoreOptions
{
    QString host = QStringLiteral("127.0.0.1");
    int port = 8080; // 0 picks a free port
    QString databasePath = QStringLiteral("tarvel-store.sqlite");
    // Uploaded pictures; empty means a folder beside the database ("<database>.uploads").
    QString uploadsDirectory;
    // Scaled copies of pictures, kept up to this many bytes; empty means a folder beside the
    // database ("<database>.pictures").
    QString picturesDirectory;
    qint64 picturesBytes = 192LL * 1024 * 1024;
    // Scale the seeded catalogue's pictures for the app's screens at start (those not kept yet).
    // The tarvel-store program does; stores started inside tests leave it off, as it takes seconds.
    bool scalePicturesAhead = false;
    // The outside parties (SMS and mail outbox, picture upload, WeChat payment, push channel).
    // They hand out secrets (SMS codes, mail links, captcha answers) and complete payments, so
    // they are off unless asked for, and only ever served on a loopback address.
    bool sandbox = false;
    // Addresses in answers start with this. When empty, pictures and upload results use
    // "http://" followed by the request's Host header; mail links never do, they use the
    // address the request arrived at.
    QString publicBaseUrl;
    // Each open keep-alive connection holds one while it lasts.
    int threads = 32;
    // A client has this long for its request line and headers, then this long for its body;
    // slower ones are cut off.
    std::chrono::milliseconds headerDeadline{10'000};
    std::chrono::milliseconds bodyDeadline{60'000};
    // One line per request goes here; nullptr keeps quiet.
    std::FILE *requestLog = stdout;
    // SMS and mails are also printed here when the sandbox is on; nullptr keeps quiet.
    std::FILE *outboxLog = stdout;
};
