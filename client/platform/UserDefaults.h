#pragma once

#include <QObject>
#include <QSettings>
#include <QVariant>

#include <memory>

namespace platform {

// The app's key-value defaults, kept in Library/Preferences under the app home. Every write is
// observable through valueChanged (the cart badge watches "cartnum").
//
// Values are text (QString), bool and bytes (QByteArray); numbers are kept too. Each comes back
// with the type it was stored with, also after a restart. A preferences file that this class did
// not write (foreign or corrupt) reads as nothing stored; it is moved aside to "<file>.unreadable"
// so that nothing is lost when new values are written.
class UserDefaults : public QObject
{
    Q_OBJECT
public:
    static UserDefaults &standard();

    QVariant objectForKey(const QString &key) const; // invalid when absent
    void setObject(const QVariant &value, const QString &key); // an invalid value removes the key
    void removeObjectForKey(const QString &key);
    bool synchronize();

    // Re-reads the store from the current app home (tests switch TARVEL_HOME between cases).
    void reload();

    // The preferences file of the current app home.
    static QString filePath();

signals:
    // Emitted for every change of a stored value (old or new invalid when the key was absent or is
    // removed); writing the value a key already holds changes nothing and emits nothing.
    void valueChanged(const QString &key, const QVariant &oldValue, const QVariant &newValue);

private:
    UserDefaults();
    static std::unique_ptr<QSettings> openStore(const QString &path);
    static bool isOwnStore(const QSettings &settings);
    std::unique_ptr<QSettings> m_settings;
};

} // namespace platform
