#include "TestEnvironment.h"

#include <QDir>
#include <QLocale>

#include <clocale>
#include <ctime>

namespace tarvel::test {

TestEnvironment::TestEnvironment()
{
    qputenv("TZ", "UTC");
    tzset();
    qputenv("LC_ALL", "C.UTF-8");
    std::setlocale(LC_ALL, "C.UTF-8");
    QLocale::setDefault(QLocale::c());
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("no_proxy", "*");
    qputenv("TARVEL_HOME", m_home.path().toUtf8());
}

QString TestEnvironment::artifactsDir()
{
    QString dir = qEnvironmentVariable("TARVEL_TEST_ARTIFACTS");
    if (dir.isEmpty())
        dir = QDir::temp().filePath(QStringLiteral("tarvel-test-artifacts"));
    QDir().mkpath(dir);
    return dir;
}

} // namespace tarvel::test
