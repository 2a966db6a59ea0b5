#include "TestEnvironment.h"

#include "util/NSDateTools.h"

#include <QTest>

#include <ctime>

namespace {

QDateTime utc(const char *text)
{
    return QDateTime::fromString(QString::fromLatin1(text), Qt::ISODate);
}

} // namespace

class TestDateTools : public QObject
{
    Q_OBJECT

private slots:
    void countsWholeDays_data();
    void countsWholeDays();
    void countsCalendarDaysAcrossSummerTime();
};

void TestDateTools::countsWholeDays_data()
{
    QTest::addColumn<QDateTime>("from");
    QTest::addColumn<QDateTime>("to");
    QTest::addColumn<int>("days");

    QTest::newRow("same instant") << utc("2024-05-01T10:00:00Z") << utc("2024-05-01T10:00:00Z")
                                  << 0;
    QTest::newRow("one day") << utc("2024-05-01T10:00:00Z") << utc("2024-05-02T10:00:00Z") << 1;
    QTest::newRow("an hour short of a day")
            << utc("2024-05-01T10:00:00Z") << utc("2024-05-02T09:00:00Z") << 0;
    QTest::newRow("over midnight only")
            << utc("2024-05-01T23:59:00Z") << utc("2024-05-02T00:01:00Z") << 0;
    QTest::newRow("a second past a day")
            << utc("2024-05-01T10:00:00Z") << utc("2024-05-02T10:00:01Z") << 1;
    QTest::newRow("leap day") << utc("2024-02-28T00:00:00Z") << utc("2024-03-01T00:00:00Z") << 2;
    QTest::newRow("a year") << utc("2023-06-01T08:00:00Z") << utc("2024-06-01T08:00:00Z") << 366;
    QTest::newRow("one day back") << utc("2024-05-02T10:00:00Z") << utc("2024-05-01T10:00:00Z")
                                  << -1;
    QTest::newRow("less than a day back")
            << utc("2024-05-02T10:00:00Z") << utc("2024-05-01T11:00:00Z") << 0;
    QTest::newRow("days back with hours")
            << utc("2024-05-10T10:00:00Z") << utc("2024-05-01T11:00:00Z") << -8;
}

void TestDateTools::countsWholeDays()
{
    QFETCH(QDateTime, from);
    QFETCH(QDateTime, to);
    QFETCH(int, days);
    QCOMPARE(NSDateTools::getDaysToDate(from, to), days);
}

// 2024-03-31 in Berlin has 23 hours; noon to noon is still one calendar day.
void TestDateTools::countsCalendarDaysAcrossSummerTime()
{
    qputenv("TZ", "Europe/Berlin");
    tzset();
    const QDateTime from(QDate(2024, 3, 30), QTime(12, 0), Qt::LocalTime);
    const QDateTime to(QDate(2024, 3, 31), QTime(12, 0), Qt::LocalTime);
    const qint64 hours = from.secsTo(to) / 3600;
    const int days = NSDateTools::getDaysToDate(from, to);
    qputenv("TZ", "UTC");
    tzset();
    if (hours != 23)
        QSKIP("the Europe/Berlin time zone is not available here");
    QCOMPARE(days, 1);
}

TARVEL_TEST_MAIN(TestDateTools)
#include "tst_datetools.moc"
