#include "vx/core/VxConsts.h"

#include <gtest/gtest.h>
#include "support/QStringPrintTo.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace vx;

namespace {

void WriteFile(const QString& path, const QByteArray& content)
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(content);
}

// Restores the names of the running executable after a test changed them.
struct DirsRestorer {
    ~DirsRestorer() { VxFillDirs(); }
};

} // namespace

TEST(VxConsts, NamesDerivedFromAnExecutablePath)
{
    const QFileInfo running(QCoreApplication::applicationFilePath()); // filled at startup
    EXPECT_EQ(ProgName, running.completeBaseName());
    EXPECT_EQ(ProgPath, running.absolutePath() + QLatin1Char('/'));
    EXPECT_TRUE(UserDataPath.isEmpty() && LocalAppDataDir.isEmpty());

    DirsRestorer restore;
    const struct {
        const char *exe, *ini, *name, *path;
    } rows[] = {
        {"/opt/app/bin/demo.exe", "/opt/app/bin/demo.INI", "demo", "/opt/app/bin/"},
        {"/opt/app.d/demo", "/opt/app.d/demo.INI", "demo", "/opt/app.d/"},
        {"C:\\Apps\\Plot.v2.exe", "C:\\Apps\\Plot.v2.INI", "Plot.v2", "C:\\Apps\\"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.exe);
        VxFillDirs(QString::fromLatin1(row.exe));
        EXPECT_EQ(IniFileName, QString::fromLatin1(row.ini));
        EXPECT_EQ(ProgName, QString::fromLatin1(row.name));
        EXPECT_EQ(ProgPath, QString::fromLatin1(row.path));
        EXPECT_EQ(UserSettingsPath, ProgPath);
        EXPECT_EQ(UserSettings, ProgPath + ProgName + QStringLiteral(".usr"));
    }
    UserDataPath = QStringLiteral("/data");
    VxDoneDirs();
    for (const QString* name : {&IniFileName, &ProgName, &ProgPath, &UserSettingsPath,
                                &UserSettings, &UserDataPath, &LocalAppDataDir})
        EXPECT_TRUE(name->isEmpty());
}

TEST(VxConsts, InitDirsSeedsTheUserCopyOnce)
{
    DirsRestorer restore;
    QTemporaryDir tmp;
    QDir(tmp.path()).mkdir(QStringLiteral("bin"));
    VxFillDirs(tmp.filePath(QStringLiteral("bin/demo")));
    WriteFile(ProgPath + QStringLiteral("demo.usr"), "shipped");
    auto initIn = [&](const char* dir) {
        UserSettingsPath = tmp.filePath(QString::fromLatin1(dir));
        UserSettings = UserSettingsPath + QStringLiteral("demo.usr");
        VxInitDirs();
        QFile f(UserSettings);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
    };
    EXPECT_EQ(initIn("user/"), QByteArray("shipped"));
    WriteFile(UserSettings, "mine");
    EXPECT_EQ(initIn("user/"), QByteArray("mine")); // an existing user copy is never replaced
    // Only one directory level is created; a deeper target is silently skipped.
    EXPECT_EQ(initIn("a/b/"), QByteArray("<missing>"));
}
