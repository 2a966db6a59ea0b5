#pragma once

#include <QFileDevice>
#include <QString>

namespace platform {

// The app's private folders. Everything lives under the app home: TARVEL_HOME when it is set,
// otherwise the platform's app-data folder. Each folder getter creates its folder on first use and
// answers an empty string when that is impossible.
class SandboxPaths
{
public:
    static QString home();
    static QString documents(); // <home>/Documents
    static QString library(); // <home>/Library
    static QString preferences(); // <home>/Library/Preferences
    static QString caches(); // <home>/Library/Caches
    static QString tmp(); // <home>/Library/tmp, not the system's temporary folder
    static QString applications(); // <home>/Applications; only named, never created

    // "~" and "~/..." refer to the app home; other paths are returned unchanged.
    static QString expandTilde(const QString &path);

    // Permissions of files that hold the session (user record, cookies).
    static constexpr QFileDevice::Permissions ownerOnly
            = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

    // Creates an empty file readable and writable by the owner only; an existing file keeps its
    // content and loses every permission beyond those. Answers whether the file is now owner-only.
    static bool createOwnerOnlyFile(const QString &path);

private:
    static QString ensureFolder(const QString &relativePath);
};

} // namespace platform
