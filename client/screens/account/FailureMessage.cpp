#include "screens/account/FailureMessage.h"

#include "util/NSStringTools.h"

#include <QStringList>

namespace {
const QString MessageKey = QStringLiteral("message");
const QString HumanNameKey = QStringLiteral("human_name");

// The key of one "key = value" piece of a printed description, without braces, quotes and blanks.
QString keyOf(const QString &piece)
{
    const qsizetype equals = piece.indexOf(QLatin1Char('='));
    if (equals < 0)
        return {};
    QString key = piece.left(equals);
    key.remove(QLatin1Char('{'));
    key.remove(QLatin1Char('"'));
    return key.trimmed();
}

} // namespace

QString FailureMessage::messageAndHumanName(const QString &text)
{
    QString message;
    QString humanName;
    const QStringList pieces = text.split(QLatin1Char(';'));
    for (const QString &piece : pieces) {
        // "human_name" never holds "message", so one piece feeds at most one part.
        if (piece.contains(HumanNameKey))
            humanName = NSStringTools::replaceString(piece);
        else if (piece.contains(MessageKey))
            message = NSStringTools::replaceString(piece);
    }
    return message + humanName;
}

bool FailureMessage::isFieldDescription(const QString &text)
{
    const QStringList pieces = text.split(QLatin1Char(';'));
    for (const QString &piece : pieces) {
        const QString key = keyOf(piece);
        if (key == MessageKey || key == HumanNameKey)
            return true;
    }
    return false;
}

QString FailureMessage::readable(const QString &text)
{
    return isFieldDescription(text) ? messageAndHumanName(text) : text;
}
