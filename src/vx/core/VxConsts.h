#pragma once
// Shared array, position and event types, the accuracy constant, and the
// process-wide file and directory names.

#include <QPoint>
#include <QString>
#include <functional>
#include <vector>

class QObject;

namespace vx {

class Exception;

using TVxRealArray = std::vector<double>;
using TVxIntegerArray = std::vector<int>;
using TVxBooleanArray = std::vector<bool>;
using TVxPointArray = std::vector<QPoint>;

// A position in world units; settings files store it as "X;Y".
struct TVxRealPos {
    double X = 0.0;
    double Y = 0.0;
    bool operator==(const TVxRealPos& o) const { return X == o.X && Y == o.Y; }
    bool operator!=(const TVxRealPos& o) const { return !(*this == o); }
};
using TVxRealPosArray = std::vector<TVxRealPos>;
using TVxRealMatrix = std::vector<TVxRealArray>;

using TVxCaption = QString;
using TVxIDString = QString;

using TNotifyEvent = std::function<void(QObject* Sender)>;
using TVxAnyEvent = std::function<void()>;
using TVxErrorEvent = std::function<void(Exception& Error)>;

// Relative precision of a double (2^-52); the solvers' zero threshold.
constexpr double CMaxAcurancy = 2.220446049250313E-16;

// Sentinels for a missing value in ranges and results.
constexpr double CVxMaxReal = 1.7E+308;
constexpr double CVxMinReal = -1.7E+308;

// Process-wide names derived from the running executable's path. They are filled when
// the QCoreApplication is constructed (at once if the library is loaded into a running
// application) and cleared when it is destroyed; before that they are empty, and
// VxFillDirs() may be called to fill them earlier. UserDataPath and LocalAppDataDir are
// left for the host application to fill.
extern QString IniFileName;
extern QString ProgName;
extern QString ProgPath;
extern QString UserSettingsPath;
extern QString UserSettings;
extern QString UserDataPath;
extern QString LocalAppDataDir;

// Fills the names above from QCoreApplication::applicationFilePath() (or the given path).
void VxFillDirs(const QString& exeName = QString());
// Clears all seven names.
void VxDoneDirs();
// Seeds the user's settings file from the copy beside the executable, see the source.
void VxInitDirs();

} // namespace vx
