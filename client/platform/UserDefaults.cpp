#include "platform/UserDefaults.h"

#include "platform/SandboxPaths.h"

#include <QDir>
#include <QFile>

namespace platform {
namespace {

const QString kFileName = QStringLiteral("Tarvel.ini");
const QString kFormatKey = QStringLiteral("FormatVersion");
const QString kFormatVersion = QStringLiteral("1");
// Values live in one group; the type of each value that the INI form turns into text (bools and
// numbers) is noted in another, so that it comes back with its type after a restart.
const QString kValuesGroup = QStringLiteral("Values/");
const QString kTypesGroup = QStringLiteral("Types/");

bool isFlattenedToText(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

bool isSameValue(const QVariant &a, const QVariant &b)
{
    return a.isValid() == b.isValid() && a.typeId() == b.typeId() && a == b;
}

} // namespace

UserDefaults &UserDefaults::standard()
{
    static UserDefaults defaults;
    return defaults;
}

UserDefaults::UserDefaults()
{
    reload();
}

QString UserDefaults::filePath()
{
    const QString folder = SandboxPaths::preferences();
    return folder.isEmpty() ? QString() : folder + QLatin1Char('/') + kFileName;
}

QVariant UserDefaults::objectForKey(const QString &key) const
{
    if (!m_settings || key.isEmpty())
        return {};
    QVariant value = m_settings->value(kValuesGroup + key);
    const QString typeName = m_settings->value(kTypesGroup + key).toString();
    if (value.isValid() && !typeName.isEmpty()) {
        QVariant typed = value;
        if (typed.convert(QMetaType::fromName(typeName.toLatin1())))
            return typed;
    }
    return value;
}

void UserDefaults::setObject(const QVariant &value, const QString &key)
{
    if (!m_settings || key.isEmpty())
        return;
    const QVariant oldValue = objectForKey(key);
    if (isSameValue(oldValue, value))
        return;
    if (value.isValid()) {
        m_settings->setValue(kValuesGroup + key, value);
        if (isFlattenedToText(value))
            m_settings->setValue(kTypesGroup + key, QString::fromLatin1(value.typeName()));
        else
            m_settings->remove(kTypesGroup + key);
    } else {
        m_settings->remove(kValuesGroup + key);
        m_settings->remove(kTypesGroup + key);
    }
    emit valueChanged(key, oldValue, value);
}

void UserDefaults::removeObjectForKey(const QString &key)
{
    setObject(QVariant(), key);
}

bool UserDefaults::synchronize()
{
    if (!m_settings)
        return false;
    m_settings->sync();
    return m_settings->status() == QSettings::NoError;
}

void UserDefaults::reload()
{
    if (m_settings)
        m_settings->sync();
    m_settings.reset();
    const QString path = filePath();
    if (!path.isEmpty())
        m_settings = openStore(path);
}

std::unique_ptr<QSettings> UserDefaults::openStore(const QString &path)
{
    QFile file(path);
    if (file.exists() && file.size() > 0) {
        {
            const QSettings existing(path, QSettings::IniFormat);
            if (isOwnStore(existing))
                return std::make_unique<QSettings>(path, QSettings::IniFormat);
        }
        const QString asideName = path + QStringLiteral(".unreadable");
        QFile::remove(asideName);
        if (!file.rename(asideName))
            file.remove();
    }
    // The file holds the session's cookies: it is never readable by others.
    SandboxPaths::createOwnerOnlyFile(path);
    auto settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
    settings->setValue(kFormatKey, kFormatVersion);
    settings->sync();
    return settings;
}

bool UserDefaults::isOwnStore(const QSettings &settings)
{
    return settings.status() == QSettings::NoError
           && settings.value(kFormatKey).toString() == kFormatVersion;
}

} // namespace platform
