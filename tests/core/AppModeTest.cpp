#include "core/AppMode.h"

#include "core/FullDiskAccess.h"

#include <QDir>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTemporaryDir>
#include <QtQml/qqmlextensionplugin.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

Q_IMPORT_QML_PLUGIN(Brivane_CorePlugin)

using namespace brivane;
using namespace Qt::StringLiterals;

TEST(AppMode, TheSidebarReachesEveryModuleOnce)
{
    QList<AppMode::Mode> reached;
    for (const AppMode::NavSection section : AppMode::allSections())
        reached += AppMode::modes(section);
    std::sort(reached.begin(), reached.end());
    EXPECT_EQ(reached, AppMode::allModes());
    EXPECT_EQ(reached.size(), 16);
    for (int mode = 0; mode < 16; ++mode) // the rows stand in the order of the enumeration
        EXPECT_EQ(AppMode::allModes()[mode], mode);
}

TEST(AppMode, ScreensReachTablesAndFormatterThroughTheModule)
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(R"(
        import QtQml
        import Brivane.Core
        QtObject {
            property string size: ByteFormatter.format(1536)
            property string title: AppMode.title(4)
            property bool busy: ActivityTracker.isActive("Smart Clean")
        })",
                      QUrl());
    const std::unique_ptr<QObject> object(component.create());
    ASSERT_TRUE(object) << qPrintable(component.errorString());
    EXPECT_EQ(object->property("size"), u"1.50 KB"_s);
    EXPECT_EQ(object->property("title"), u"Uninstaller"_s);
    EXPECT_EQ(object->property("busy"), false);
}

TEST(FullDiskAccess, AnyOneReadableProbeIsEnough)
{
    for (const QString& probe :
         {u"~/Library/Safari"_s, u"~/Library/Messages"_s, u"~/Library/Cookies"_s,
          u"/Library/Application Support/com.apple.TCC"_s}) {
        const QTemporaryDir folder;
        const Locations locations = Locations::insideFolder(folder.path());
        EXPECT_FALSE(checkFullDiskAccess(locations));
        ASSERT_TRUE(QDir().mkpath(locations.path(probe)));
        EXPECT_TRUE(checkFullDiskAccess(locations)) << qPrintable(probe);
    }
}
