#include "CleanerGround.h"
#include "platform/PathText.h"
#include "platform/PropertyList.h"

#include <sys/stat.h>

using namespace brivane;
using namespace brivane::testing;
using ::testing::UnorderedElementsAreArray;

namespace {

using ScannersTest = CleanerTest;

constexpr qint64 large = 2 << 20; // beyond every bound but one
constexpr qint64 veryLarge = 100 << 20;
constexpr int old = 40; // days

QByteArray list(const QVariant& value, PropertyList::Encoding encoding)
{
    return PropertyList::write(value, encoding).value();
}

} // namespace

TEST_F(ScannersTest, EachBoundIsInclusiveOrStrictAsItIsTold)
{
    enum Bound { AtLeast, Above };
    struct Row {
        Type type;
        QString file;
        QString name;
        qint64 bound;
        Bound kind;
    };
    const Row rows[] = {
        {Type::applicationCaches, u"~/Library/Caches/Tool/a"_s, u"Tool"_s, 1024, AtLeast},
        {Type::applicationLogs, u"~/Library/Logs/tool.log"_s, u"tool.log"_s, 1024, AtLeast},
        {Type::trash, u"~/.Trash/note"_s, u"note"_s, 0, AtLeast},
        {Type::browserCaches, u"~/Library/Caches/Firefox/a"_s, u"Firefox"_s, 0, Above},
        {Type::systemLogs, u"~/Library/Logs/CoreSimulator/a"_s, u"Analytics"_s, 1024, Above},
        {Type::iTunesTemp, u"~/Library/Caches/com.apple.Music/a"_s, u"Music Cache"_s, 0, Above},
        {Type::mailCaches, u"~/Library/Caches/com.apple.mail/a"_s, u"Mail Caches"_s, 0, Above},
        {Type::xcodeJunk, u"~/Library/Developer/Xcode/Archives/a"_s, u"Archives"_s, 1024, Above},
        {Type::dockerData, u"~/Library/Containers/com.docker.docker/Data/a"_s,
         u"Docker Desktop Data"_s, 1024, Above},
        {Type::homebrewCache, u"~/Library/Caches/Homebrew/a"_s, u"Homebrew Downloads"_s, 1024,
         Above},
        {Type::vsCodeCache, u"~/Library/Application Support/Code/logs/a"_s, u"VS Code Logs"_s, 1024,
         Above},
        {Type::nodeModules, u"~/.npm/_logs/a"_s, u"npm Logs"_s, 1024, Above},
        {Type::nodeModules, u"~/Projects/pier/node_modules/a"_s, u"node_modules (pier)"_s, 1 << 20,
         Above},
        {Type::unusedDiskImages, u"~/Downloads/deep/Tool.DMG"_s, u"Tool.DMG"_s, 0, Above},
        {Type::applicationLeftovers, u"~/Library/Application Support/com.gone.tool/a"_s,
         u"com.gone.tool"_s, 10240, Above},
        {Type::downloads, u"~/Downloads/Paper.pdf"_s, u"Paper.pdf"_s, 1024, Above},
        {Type::largeFiles, u"~/Library/Hidden/Pack.zip"_s, u"Pack.zip"_s, veryLarge, AtLeast},
        {Type::screenshots, u"~/Desktop/Screenshot 1.png"_s, u"Screenshot 1.png"_s, 0, Above},
        {Type::iOSBackups, u"~/Library/Application Support/MobileSync/Backup/phone/a"_s, u"phone"_s,
         1 << 20, Above},
    };
    for (const int beyond : {-1, 0, 1}) {
        for (const Row& row : rows)
            file(row.file, std::max<qint64>(row.bound + beyond, 0), old);
        scan();
        for (const Row& row : rows) {
            const bool isWanted =
                row.kind == AtLeast ? row.bound + std::min(beyond, 0) >= row.bound || row.bound == 0
                                    : beyond > 0;
            EXPECT_EQ(names(row.type).contains(row.name), isWanted)
                << qPrintable(row.file) << ' ' << row.bound + beyond;
        }
    }
}

TEST_F(ScannersTest, EachCategoryListsItsOwnAndNothingElse)
{
    struct Row {
        Type type;
        QStringList files; ///< old and large
        QStringList found;
    };
    const QString backups = u"~/Library/Application Support/MobileSync/Backup/"_s;
    const Row rows[] = {
        {Type::applicationCaches,
         {u"~/Library/Caches/Tool/a"_s, u"~/Library/Caches/.hidden/a"_s,
          u"~/Library/Caches/Google/Drive/a"_s, u"~/Library/Caches/com.apple.mail/a"_s,
          u"~/Library/Caches/google/a"_s, u"~/Library/Caches/loose"_s},
         {u"Tool"_s, u"google"_s, u"loose"_s}},
        {Type::trash,
         {u"~/.Trash/.hidden"_s, u"~/.Trash/.Trash/a"_s, u"~/.Trash/..two"_s},
         {u".Trash"_s}},
        {Type::browserCaches,
         {u"~/Library/Caches/Google/Chrome/a"_s, u"~/Library/Caches/BraveSoftware/.hidden/a"_s},
         {u"Chrome"_s, u"Brave"_s}},
        {Type::unusedDiskImages,
         {u"~/Downloads/a/b/c.iso"_s, u"~/Desktop/d.Pkg"_s, u"~/Desktop/bundle.pkg/inside"_s,
          u"~/Downloads/.hidden/e.img"_s, u"~/Downloads/.f.dmg"_s, u"~/Documents/g.dmg"_s,
          u"~/Downloads/h.zip"_s, u"~/Desktop/dmg"_s, u"~/Desktop/more.pkg/i.dmg"_s},
         {u"c.iso"_s, u"d.Pkg"_s, u"i.dmg"_s}},
        {Type::nodeModules,
         {u"~/Projects/node_modules/x/node_modules/a"_s, u"~/Projects/a/b/node_modules/a"_s,
          u"~/Projects/a/b/c/node_modules/a"_s, u"~/Developer/.git/node_modules/a"_s,
          u"~/Documents/Library/d/node_modules/a"_s, u"~/Desktop/Applications/node_modules/a"_s,
          u"~/Desktop/e/node_modules/.cache/a"_s, u"~/Movies/node_modules/a"_s,
          u"~/.npm/_logs/a"_s},
         {u"node_modules (Projects)"_s, u"node_modules (b)"_s, u"node_modules (e)"_s,
          u"npm Logs"_s}},
        {Type::largeFiles,
         {u"~/Library/a/b.tar"_s, u"~/Library/c.LOG"_s, u"~/Library/.d/e.zip"_s,
          u"~/Library/f.zip/g"_s, u"~/Library/h.mov"_s, u"~/Movies/i.zip"_s},
         {u"b.tar"_s, u"c.LOG"_s}},
        {Type::screenshots,
         {u"~/Desktop/Screen Shot 1.JPG"_s, u"~/Desktop/Capture d'écran.mov"_s,
          u"~/Desktop/Capture d'e\u0301cran.png"_s, u"~/Desktop/screenshot.png"_s,
          u"~/Desktop/Screenshot.txt"_s, u"~/Desktop/deep/Screenshot.png"_s,
          u"~/Desktop/My Screenshot.png"_s},
         {u"Screen Shot 1.JPG"_s, u"Capture d'écran.mov"_s, u"Capture d'e\u0301cran.png"_s}},
        {Type::downloads,
         {u"~/Downloads/.hidden"_s, u"~/Downloads/deep/a"_s, u"~/Downloads/b.pdf"_s},
         {u"b.pdf"_s}}, // the folder is of today
        {Type::iOSBackups, {backups + u"loose"_s, backups + u".hidden/a"_s}, {u".hidden"_s}},
    };
    for (const Row& row : rows) {
        CleanerGround ground;
        for (const QString& place : row.files)
            ground.file(place, row.type == Type::largeFiles ? veryLarge : large, old);
        ground.scan();
        EXPECT_THAT(ground.names(row.type), UnorderedElementsAreArray(row.found));
    }
}

TEST_F(ScannersTest, OldIsWhatWasWrittenBeforeTheCutoffAndNotAtIt)
{
    settings.setOldFileAgeDays(7);
    for (const int milliseconds : {-1, 0, 1}) {
        for (const QString& place : {u"~/Downloads/%1"_s, u"~/Desktop/Screenshot %1.png"_s}) {
            const QDateTime time = clock->now().addDays(-7).addMSecs(milliseconds);
            file(place.arg(milliseconds), large);
            machine.setTimes(place.arg(milliseconds), time, time);
        }
    }
    scan();
    EXPECT_EQ(names(Type::downloads), QStringList(u"-1"_s));
    EXPECT_EQ(names(Type::screenshots), QStringList(u"Screenshot -1.png"_s));
}

TEST_F(ScannersTest, AFolderForScreenshotsIsSearchedOnceWhateverItsSpelling)
{
    struct Row {
        QVariant location;
        QStringList found;
    };
    const QString desktop = u"Screenshot 1.png"_s;
    const QString other = u"Screenshot 2.png"_s;
    for (const Row& row :
         {Row{u"~/Pictures/Shots"_s, {desktop, other}}, Row{u"~/Desktop/"_s, {desktop}},
          Row{u"~/Pictures/../Pictures/Shots/"_s, {desktop, other}}, Row{42, {desktop}},
          Row{u""_s, {desktop}}, Row{u"/nowhere"_s, {desktop}}}) {
        for (const auto encoding : {PropertyList::Encoding::Xml, PropertyList::Encoding::Binary}) {
            CleanerGround ground;
            ground.file(u"~/Desktop/"_s + desktop, large, old);
            ground.file(u"~/Pictures/Shots/"_s + other, large, old);
            ground.machine.file(u"~/Library/Preferences/com.apple.screencapture.plist",
                                list(QVariantMap{{u"location"_s, row.location}}, encoding));
            ground.scan();
            EXPECT_THAT(ground.names(Type::screenshots), UnorderedElementsAreArray(row.found))
                << qPrintable(row.location.toString());
        }
    }
}

TEST_F(ScannersTest, ABackupIsNamedByItsListAndABrokenOneCostsTheNameAlone)
{
    const QString folder = u"~/Library/Application Support/MobileSync/Backup/"_s;
    const QVariantMap phone{{u"Device Name"_s, u"Ada’s phone"_s}};
    QByteArray billionLaughs = "<!DOCTYPE p [<!ENTITY a \"aaaaaaaaaa\">";
    for (char entity = 'b'; entity < 'z'; ++entity)
        billionLaughs += QByteArray("<!ENTITY ") + entity + " \"" +
                         ('&' + QByteArray(1, char(entity - 1)) + ';').repeated(10) + "\">";
    const std::pair<QByteArray, QString> rows[] = {
        {list(phone, PropertyList::Encoding::Xml), u"Ada’s phone"_s},
        {list(phone, PropertyList::Encoding::Binary), u"Ada’s phone"_s},
        {"", u"2"_s},
        {list(QVariantMap{{u"Device Name"_s, 7}}, PropertyList::Encoding::Xml), u"3"_s},
        {list(QVariantList{u"Device Name"_s}, PropertyList::Encoding::Binary), u"4"_s},
        {"bplist00" + QByteArray(4096, '\xff'), u"5"_s},
        {"<plist><dict>" + QByteArray("<array>").repeated(200'000), u"6"_s},
        {billionLaughs + "]><plist><dict><key>Device Name</key><string>&y;</string></dict></plist>",
         u"7"_s},
    };
    QStringList expected;
    for (const auto& [content, name] : rows) {
        const QString backup = folder + QString::number(expected.size());
        file(backup + u"/part"_s, large + expected.size());
        machine.file(QString(backup + u"/Info.plist"_s), content);
        expected += name;
    }
    file(folder + u"8/part"_s, large);
    const QByteArray pipe = PathText::toBytes(path(QString(folder + u"8/Info.plist"_s)));
    ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0); // nobody ever writes to it
    scan();
    EXPECT_THAT(names(Type::iOSBackups), UnorderedElementsAreArray(expected << u"8"_s));
}

TEST_F(ScannersTest, ALeftoverIsWhatHasTheWholeNameOfNothingInstalled)
{
    const QByteArray here = list(QVariantMap{{u"CFBundleIdentifier"_s, u"com.here.one"_s}},
                                 PropertyList::Encoding::Xml);
    const QByteArray there = list(QVariantMap{{u"CFBundleIdentifier"_s, u"com.here.two"_s}},
                                  PropertyList::Encoding::Binary);
    machine.file(u"/Applications/One.app/Contents/Info.plist", here);
    machine.file(u"~/Applications/Two.app/Contents/Info.plist", there);
    machine.file(u"/Applications/Broken.app/Contents/Info.plist", QByteArray("bplist00"));
    for (const QString& name :
         {u"com.here.one"_s, u"com.here.two"_s, u"com.gone.three"_s, u"Plain"_s}) {
        for (const QString& place : {u"Application Support/%1/a"_s, u"Preferences/%1.plist"_s,
                                     u"Saved Application State/%1.savedState/a"_s}) {
            if (name == u"Plain"_s && !place.startsWith(u"Application"_s))
                continue; // their endings hold a dot
            file(u"~/Library/"_s + place.arg(name), large);
        }
    }
    scan();
    EXPECT_THAT(names(Type::applicationLeftovers),
                UnorderedElementsAreArray(QStringList{
                    u"com.here.one.plist"_s, u"com.here.one.savedState"_s, u"com.here.two.plist"_s,
                    u"com.here.two.savedState"_s, u"com.gone.three"_s, u"com.gone.three.plist"_s,
                    u"com.gone.three.savedState"_s}));
}

TEST_F(ScannersTest, FiftyLargeFilesAreEnoughAndLinksLeadNowhere)
{
    for (int i = 0; i < 60; ++i)
        file(u"~/Library/Packs/%1.zip"_s.arg(i), veryLarge);
    file(u"~/Elsewhere/a"_s, large);
    machine.link(u"~/Library/Caches/Linked", PathText::toBytes(path(u"~/Elsewhere")));
    machine.link(u"~/Library/Caches/Firefox", PathText::toBytes(path(u"~/Elsewhere")));
    file(u"~/Library/Logs/Real/a"_s, 512);
    machine.link(u"~/Library/Logs/Real/more", PathText::toBytes(path(u"~/Elsewhere")));
    scan();
    EXPECT_EQ(names(Type::largeFiles).size(), 50);
    for (const Type type : {Type::applicationCaches, Type::browserCaches, Type::applicationLogs})
        EXPECT_EQ(names(type), QStringList());
}

TEST_F(ScannersTest, ALinkThatLeadsNowhereIsNoSignOfATool)
{
    machine.link(u"/opt/homebrew", PathText::toBytes(path(u"/opt/gone")));
    machine.link(u"/usr/local/bin/node",
                 PathText::toBytes(machine.file(u"/opt/node/bin/node", Size{1})));
    const LogCapture log;
    scan();
    EXPECT_THAT(cleanerLines(log), ::testing::Contains(u"Detected developer tools: nodeModules"_s));
}
