#include "screens/purchase/PurchaseFailure.h"

#include "screens/account/FailureMessage.h"

#include <QRegularExpression>

QString PurchaseFailure::readable(const QString &message)
{
    static const QRegularExpression notFoundCode(QStringLiteral("^\\w*NotFound:\\s*"));
    QString text = FailureMessage::readable(message);
    text.remove(notFoundCode);
    return text;
}
