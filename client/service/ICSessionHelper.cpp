#include "service/ICSessionHelper.h"

#include "platform/TextHolder.h"
#include "service/ApplicationState.h"
#include "service/ICDataHelper.h"
#include "util/ObjectDescription.h"

#include <QDir>
#include <QRegularExpression>

const QString ICSessionHelper::userFileName = QStringLiteral("User.plist");

bool ICSessionHelper::userIsLogin()
{
    return ApplicationState::shared().userLogin().has_value();
}

bool ICSessionHelper::userIsLoginSelf()
{
    return userGetinfo().has_value();
}

void ICSessionHelper::userSaveObjectUser(const QVariantMap &user)
{
    QVariantMap stored;
    for (auto it = user.cbegin(); it != user.cend(); ++it)
        stored.insert(it.key(), objectDescription(it.value()));
    ICDataHelper::SaveFileWithName(userFileName, QVariantList{stored});
}

std::optional<QVariantMap> ICSessionHelper::userGetinfo()
{
    const std::optional<QVariantList> list = ICDataHelper::GetFileWithName(userFileName);
    if (!list || list->isEmpty() || list->first().typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    return list->first().toMap();
}

void ICSessionHelper::userClearData()
{
    ICDataHelper::DeleteFile(QDir(ICDataHelper::docPath()).filePath(userFileName));
}

bool ICSessionHelper::stringCheckEmail(const QString &text)
{
    static const QRegularExpression pattern(QRegularExpression::anchoredPattern(
            QStringLiteral("[A-Z0-9a-z._%+-]+@[A-Z0-9a-z._]+\\.[A-Za-z]{2,4}")));
    return pattern.match(text).hasMatch();
}

bool ICSessionHelper::stringCheckMobile(QObject *textObject)
{
    auto *holder = qobject_cast<platform::TextHolder *>(textObject);
    if (!holder)
        return false;
    const QString trimmed = holder->text().trimmed();
    holder->setText(trimmed);
    static const QRegularExpression pattern(
            QRegularExpression::anchoredPattern(QStringLiteral("[0-9]{11}")));
    return pattern.match(trimmed).hasMatch();
}
