#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

#include <optional>

// The signed-in user: the live one (ApplicationState's userLogin) and the stored one
// (Documents/User.plist), and two input checks of the sign-in forms.
class ICSessionHelper
{
public:
    ICSessionHelper() = delete;

    static const QString userFileName; // "User.plist"

    // Someone is signed in: the application state holds a user.
    static bool userIsLogin();
    // A stored user exists.
    static bool userIsLoginSelf();
    // Stores the user record (the sign-in answer's "data") with every value in its text form, as
    // a one-element array in User.plist.
    static void userSaveObjectUser(const QVariantMap &user);
    // The stored user record; nothing when the file is missing, unreadable or empty.
    static std::optional<QVariantMap> userGetinfo();
    static void userClearData();

    static bool stringCheckEmail(const QString &text);
    // For a text field or a text view (a platform::TextHolder): trims white space and line ends
    // from both ends of its text, writes the trimmed text back into it, and answers whether that
    // is exactly 11 digits. Any other object answers false and is left alone.
    static bool stringCheckMobile(QObject *textObject);
};
