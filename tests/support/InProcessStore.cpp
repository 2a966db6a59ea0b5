#include "InProcessStore.h"

#include "StoreContext.h"
#include "StoreServer.h"

#include <QDir>

namespace tarvel::test {

InProcessStore::InProcessStore(StoreOptions options, Sandbox sandbox)
    : m_options(std::move(options))
{
    m_options.sandbox = sandbox == Sandbox::On;
    m_options.host = QStringLiteral("127.0.0.1");
    m_options.port = 0;
    m_options.databasePath = QDir(m_directory.path()).filePath(QStringLiteral("store.sqlite"));
    m_options.uploadsDirectory = QDir(m_directory.path()).filePath(QStringLiteral("uploads"));
    const bool log = qEnvironmentVariableIsSet("TARVEL_STORE_LOG");
    m_options.requestLog = log ? stderr : nullptr;
    m_options.outboxLog = log ? stderr : nullptr;
    if (m_options.threads < 2)
        m_options.threads = 8;
    start();
}

InProcessStore::~InProcessStore()
{
    stop();
}

QString InProcessStore::baseUrl() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_port);
}

StoreContext &InProcessStore::context()
{
    return m_server->context();
}

void InProcessStore::advanceClock(qint64 seconds)
{
    m_server->context().clock().advance(seconds);
}

void InProcessStore::start()
{
    m_server = std::make_unique<StoreServer>(m_options);
    if (!m_server->bind()) {
        m_server.reset();
        m_port = 0;
        return;
    }
    m_port = m_server->port();
    m_thread = std::thread([server = m_server.get()] { server->listen(); });
    // stop() only reaches a server that is already listening
    for (int waited = 0; !m_server->isRunning() && waited < 5000; ++waited)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void InProcessStore::stop()
{
    if (!m_server)
        return;
    m_server->stop();
    if (m_thread.joinable())
        m_thread.join();
    m_server.reset();
    m_stoppedPort = m_port;
    m_port = 0;
}

void InProcessStore::startAgain()
{
    if (m_server)
        return;
    m_options.port = m_stoppedPort;
    start();
    m_options.port = 0;
}

void InProcessStore::restart()
{
    stop();
    startAgain();
}

QString InProcessStore::executablePath()
{
    return QStringLiteral(TARVEL_STORE_EXECUTABLE);
}

} // namespace tarvel::test
