#pragma once

#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>

namespace tarvel::test {

// Makes a test run the same everywhere: UTC, the C.UTF-8 locale, offscreen Qt, and a fresh
// TARVEL_HOME that is removed when the test ends.
class TestEnvironment
{
public:
    TestEnvironment();
    QString home() const { return m_home.path(); }
    // Where tests write screenshots and other files meant for review.
    static QString artifactsDir();

private:
    QTemporaryDir m_home;
};

} // namespace tarvel::test

// Tests of the app's screens settle, before the application object, what the app's main() does.
#ifdef TARVEL_LAUNCHES_THE_APP
#include "app/AppLaunch.h"
#define TARVEL_PREPARE_LAUNCH() AppLaunch::prepare()
#else
#define TARVEL_PREPARE_LAUNCH()
#endif

#define TARVEL_TEST_MAIN(TestObject) \
    int main(int argc, char *argv[]) \
    { \
        tarvel::test::TestEnvironment environment; \
        TARVEL_PREPARE_LAUNCH(); \
        QGuiApplication app(argc, argv); \
        TestObject testObject; \
        QTEST_SET_MAIN_SOURCE_PATH \
        return QTest::qExec(&testObject, argc, argv); \
    }
