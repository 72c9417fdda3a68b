#include "vx/core/VxConsts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace vx {

QString IniFileName;
QString ProgName;
QString ProgPath;
QString UserSettingsPath;
QString UserSettings;
QString UserDataPath;
QString LocalAppDataDir;

namespace {

// Index just behind the last path delimiter (0 when there is none).
qsizetype FileNameStart(const QString& path)
{
    return std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\'))) + 1;
}

// Replaces the extension of the file-name part (from its last '.') or appends one.
QString ChangeFileExt(const QString& path, const QString& extension)
{
    const qsizetype dot = path.lastIndexOf(QLatin1Char('.'));
    const qsizetype base = dot >= FileNameStart(path) ? dot : path.size();
    return path.left(base) + extension;
}

QString RunningExecutable()
{
    if (QCoreApplication::instance())
        return QCoreApplication::applicationFilePath();
    // Before the application object exists Qt cannot tell; Linux can.
    return QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
}

// The names are filled when the application object is constructed (or at once when the
// library is loaded into a running application) and cleared when it is destroyed.
void FillDirsAtStartup()
{
    VxFillDirs();
    qAddPostRoutine(VxDoneDirs);
}
Q_COREAPP_STARTUP_FUNCTION(FillDirsAtStartup)

} // namespace

void VxFillDirs(const QString& exeName)
{
    const QString exe = exeName.isEmpty() ? RunningExecutable() : exeName;
    const QString fileName = exe.mid(FileNameStart(exe));
    IniFileName = ChangeFileExt(exe, QStringLiteral(".INI"));
    ProgName = ChangeFileExt(fileName, QString());
    ProgPath = exe.left(FileNameStart(exe));
    UserSettingsPath = ProgPath;
    UserSettings = UserSettingsPath + ProgName + QStringLiteral(".usr");
    UserSettingsPath = ProgPath;
}

void VxDoneDirs()
{
    for (QString* name : {&IniFileName, &ProgName, &ProgPath, &UserSettingsPath, &UserSettings,
                          &UserDataPath, &LocalAppDataDir})
        name->clear();
}

void VxInitDirs()
{
    if (QFileInfo::exists(UserSettings))
        return;
    if (!QFileInfo::exists(UserSettingsPath))
        QDir().mkdir(UserSettingsPath);
    const QString shipped = ProgPath + ProgName + QStringLiteral(".usr");
    if (QFileInfo::exists(shipped))
        QFile::copy(shipped, UserSettings); // refuses to overwrite an existing target
}

} // namespace vx
