#pragma once

#include "StoreOptions.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>
#include <thread>

class StoreServer;
class StoreContext;

namespace tarvel::test {

// A tarvel-store running inside the test process: a fresh database in a temporary folder, a free
// loopback port, served from its own thread until the object is destroyed. Requests are not
// logged unless TARVEL_STORE_LOG is set.
class InProcessStore
{
public:
    // The tests play the outside parties through the sandbox, so it is on unless `sandbox` says
    // Off (the store as it runs by default). `options` may set anything else; the address and
    // the database are always the store's own.
    enum class Sandbox { On, Off };
    explicit InProcessStore(StoreOptions options = {}, Sandbox sandbox = Sandbox::On);
    ~InProcessStore();
    InProcessStore(const InProcessStore &) = delete;
    InProcessStore &operator=(const InProcessStore &) = delete;

    bool isRunning() const { return m_server != nullptr && m_port > 0; }
    QString baseUrl() const; // "http://127.0.0.1:<port>"
    int port() const { return m_port; }
    QString databasePath() const { return m_options.databasePath; }
    QString directory() const { return m_directory.path(); }
    StoreServer &server() { return *m_server; }
    StoreContext &context();

    // Moves the store's clock forward (expiry of codes, sessions, credentials).
    void advanceClock(qint64 seconds);
    // Stops and starts the service again on the same database and port when it is free.
    void restart();
    // The two halves of restart(), for tests that act while the store is away.
    void stop();
    void startAgain();

    // Where the tarvel-store executable was built, for tests that run it as its own process.
    static QString executablePath();

private:
    void start();

    QTemporaryDir m_directory;
    StoreOptions m_options;
    std::unique_ptr<StoreServer> m_server;
    std::thread m_thread;
    int m_port = 0;
    int m_stoppedPort = 0;
};

} // namespace tarvel::test
