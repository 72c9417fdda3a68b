#include "vx/core/VxConsts.h"

namespace vx {

QString IniFileName;
QString ProgName;
QString ProgPath;
QString UserSettingsPath;
QString UserSettings;
QString UserDataPath;
QString LocalAppDataDir;

void VxFillDirs(const QString&) {}
void VxDoneDirs() {}
void VxInitDirs() {}

} // namespace vx
