#pragma once

#include "platform/ui/Hud.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTest>

// What the HUD showed, as tests see it: every text since the last clear(), oldest first. The app
// keeps no such record; the recorder listens to Hud::shown from its first use on, so a test
// clears it (which also starts it) before the steps it looks at.
class HudRecorder : public QObject
{
public:
    struct Record
    {
        platform::Hud::Kind kind;
        QString text;
        bool masked;
        bool operator==(const Record &) const = default;
    };

    static HudRecorder &shared()
    {
        static HudRecorder *const recorder = new HudRecorder;
        return *recorder;
    }

    QList<Record> records() const { return m_records; }
    QStringList history() const
    {
        QStringList texts;
        for (const Record &record : m_records)
            texts.append(record.text);
        return texts;
    }
    void clear() { m_records.clear(); }

private:
    HudRecorder()
    {
        connect(&platform::Hud::shared(), &platform::Hud::shown, this,
                [this](platform::Hud::Kind kind, const QString &text, bool masked) {
                    m_records.append({kind, text, masked});
                });
    }

    QList<Record> m_records;
};

Q_DECLARE_METATYPE(HudRecorder::Record)

namespace QTest {
// A record reads as (kind, "text", mask) in failure messages.
template<>
inline char *toString(const HudRecorder::Record &record)
{
    return qstrdup(QStringLiteral("(%1, \"%2\", mask %3)")
                           .arg(int(record.kind))
                           .arg(record.text)
                           .arg(record.masked)
                           .toUtf8()
                           .constData());
}
} // namespace QTest
