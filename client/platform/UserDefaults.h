#pragma once

#include <QObject>
#include <QSettings>
#include <QVariant>

#include <memory>

namespace platform {

// The app's key-value defaults, kept in Library/Preferences under the app home. Every write is
// observable through valueChanged (the cart badge watches "cartnum").
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

signals:
    void valueChanged(const QString &key, const QVariant &oldValue, const QVariant &newValue);

private:
    UserDefaults();
    std::unique_ptr<QSettings> m_settings;
};

} // namespace platform
