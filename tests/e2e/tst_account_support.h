#pragma once

// What the account-security and personal-data tests share: signing in through the app's own
// request path, reading the codes tarvel-store put in its outbox, a test account of its own, and
// a readable HUD record in failure messages.

#include "HudRecorder.h"
#include "InProcessStore.h"
#include "StoreContext.h"

#include "accounts/Accounts.h"
#include "app/AppDelegate.h"
#include "core/Crypto.h"
#include "models/JSONModel.h"
#include "models/Object_User.h"
#include "platform/ui/Hud.h"
#include "sandbox/Outbox.h"
#include "service/ICSessionHelper.h"
#include "service/NetWorkHelper.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

#include <SQLiteCpp/Database.h>

namespace tarvel::test {

inline HudRecorder::Record hudError(const QString &text)
{
    return {platform::Hud::Error, text, true};
}
inline HudRecorder::Record hudProgress(const QString &text)
{
    return {platform::Hud::Progress, text, true};
}
inline HudRecorder::Record hudSuccess(const QString &text)
{
    return {platform::Hud::Success, text, true};
}

// A confirmed account of the test's own.
inline void createAccount(InProcessStore &store, const QString &phone, const QString &email,
                          const QString &password, const QString &nickName)
{
    const QString hash = Crypto::hashPassword(password);
    store.context().database().write([&](SQLite::Database &db) {
        return Accounts::create(db, phone, email, hash, nickName, true, store.context().now());
    });
}

// The newest SMS code tarvel-store sent to `phone`, or nothing.
inline QString lastSmsCode(InProcessStore &store, const QString &phone)
{
    const QJsonArray messages = store.context().database().read(
            [&](SQLite::Database &db) { return Outbox::list(db, phone, 1); });
    return messages.isEmpty()
                   ? QString()
                   : messages.first().toObject().value(QStringLiteral("code")).toString();
}

// Signs in the way the sign-in screen does: the session cookie stays in the shared store, the
// user becomes the delegate's and User.plist's. False when the service refused.
inline bool signIn(const QString &account, const QString &password)
{
    bool done = false;
    bool succeeded = false;
    NetWorkHelper::shareInstance()->signInWithAccountEmail(
            account, password, {}, {},
            [&](const QVariant &data, const QVariant &) {
                AppDelegate::shared()->setUserLogin(
                        JSONModel::initWithDictionary<Object_User>(data));
                ICSessionHelper::userSaveObjectUser(data.toMap());
                succeeded = done = true;
            },
            [&](const QVariant &, const QString &, const QVariant &) { done = true; });
    return QTest::qWaitFor([&] { return done; }, 10000) && succeeded;
}

} // namespace tarvel::test
