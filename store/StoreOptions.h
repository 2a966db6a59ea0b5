#pragma once

#include <QString>

#include <cstdio>

// How one tarvel-store runs.
struct StoreOptions
{
    QString host = QStringLiteral("127.0.0.1");
    int port = 8080; // 0 picks a free port
    QString databasePath = QStringLiteral("tarvel-store.sqlite");
    // Uploaded pictures; empty means a folder beside the database ("<database>.uploads").
    QString uploadsDirectory;
    // The outside parties (SMS and mail outbox, picture upload, WeChat payment, push channel).
    bool sandbox = true;
    // Addresses in answers (pictures, mail links, upload results) start with this; empty means
    // "http://" followed by the Host header of the request being answered.
    QString publicBaseUrl;
    // Each open keep-alive connection holds one while it lasts.
    int threads = 32;
    // One line per request goes here; nullptr keeps quiet.
    std::FILE *requestLog = stdout;
    // SMS and mails are also printed here when the sandbox is on; nullptr keeps quiet.
    std::FILE *outboxLog = stdout;
};
