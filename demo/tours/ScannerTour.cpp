// The scanner: its volumes, a scan from its beginning to its end, its rows, as administrator,
// failed.

#include "app/ShellViewModel.h"
#include "demo/DemoMachine.h"
#include "demo/tours/FolderTour.h"
#include "sandbox/HoldableClock.h"
#include "scanner/FileTree.h"
#include "scanner/ScanViewModel.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace brivane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto promptTime = 1500ms; // until the administrator agrees
constexpr auto adminTime = 4200ms;  // that it takes, as the screen tells it
constexpr int sealedEntries = 1260; // that only the administrator sees

/// The child of `node` with this name; null if there is none.
FileNode* childOf(const FileNode& node, QStringView name)
{
    for (FileNode* child : node.children()) {
        if (child->name() == name)
            return child;
    }
    return nullptr;
}

QCoro::Task<> showScan(Tour& tour, ScanViewModel& scan)
{
    const QString disk = tour.machine().volumes().startupDisk();
    tour.clock().holdAfter(100);
    scan.startScan(disk);
    tour.takePicture(u"scanner-initializing"_s);
    tour.clock().release();
    const auto isFinished = [&] { return scan.scanState() == ScanViewModel::Completed; };
    co_await tour.waitFor(u"first scan"_s, isFinished);

    tour.clock().holdAfter(6000);
    scan.startScan(disk);
    const auto hasReported = [&] { return scan.progress().filesScanned > 4500; };
    co_await tour.waitFor(u"report"_s, hasReported);
    tour.takePicture(u"scanner-scanning"_s);
    tour.point(u"treemapToggle"_s, 0, Qt::LeftButton);
    tour.takePicture(u"scanner-scanning-treemap"_s);
    scan.togglePause();
    tour.takePicture(u"scanner-paused"_s);
    scan.togglePause();
    tour.clock().release();
    co_await tour.waitFor(u"second scan"_s, isFinished);
    tour.takePicture(u"scanner-completed"_s);
    tour.point(u"treemapToggle"_s, 0, Qt::LeftButton);
    tour.takePicture(u"scanner-completed-treemap"_s);
}

/// What the helper prints of a file.
QByteArray entryLine(const QString& folder, const QString& name, qint64 size)
{
    const QJsonObject entry{{u"path"_s, QString(folder + u'/' + name)},
                            {u"name"_s, name},
                            {u"size"_s, size},
                            {u"isDir"_s, false},
                            {u"parentPath"_s, folder}};
    return QJsonDocument(entry).toJson(QJsonDocument::Compact) + '\n';
}

// What can be done in a finished scan.
QCoro::Task<> showRows(Tour& tour, ScanViewModel& scan)
{
    enterFolder(scan, {});
    tour.takePicture(u"scanner-folder"_s);
    tour.point(u"folderTreeRow"_s, 3, Qt::NoButton);
    tour.takePicture(u"scanner-row-hovered"_s);
    tour.point(u"folderTreeRow"_s, 4, Qt::RightButton);
    tour.takePicture(u"scanner-row-menu"_s);
    tour.press(Qt::Key_Escape);
    enterFolder(scan, {u"Downloads"_s});
    tour.point(u"folderTreeRow"_s, 2, Qt::LeftButton);
    for (const int row : {0, 1, 4}) {
        tour.point(u"folderTreeRow"_s, row, Qt::NoButton);
        tour.point(u"stageRow"_s, 0, Qt::LeftButton);
    }
    tour.point(QString(), 0, Qt::NoButton);
    tour.takePicture(u"scanner-staged"_s);
    tour.point(u"stagedButton"_s, 0, Qt::LeftButton);
    tour.takePicture(u"scanner-staged-list"_s);
    tour.point(u"popupAction"_s, 0, Qt::LeftButton);
    enterFolder(scan, {u"Library"_s, u"Application Support"_s});
    tour.takePicture(u"scanner-unreadable-folder"_s);
    tour.point(u"issuesButton"_s, 0, Qt::LeftButton);
    tour.takePicture(u"scanner-unreadable-list"_s);
    tour.point(QString(), 0, Qt::LeftButton);
    co_return;
}

QCoro::Task<> showAdminScan(Tour& tour, ScanViewModel& scan)
{
    const QString sealed =
        tour.machine().machine().path(u"~/Library/Application Support/Sealed Vault");
    CommandAnswer answer;
    for (int entry = 0; entry < sealedEntries; ++entry)
        answer.output += entryLine(sealed, u"entry-%1.vault"_s.arg(entry), 160'000);
    answer.delay = promptTime;
    SandboxCommand prompt = tour.machine().machine().command(u"/usr/bin/osascript");
    prompt.answer(answer);
    tour.machine().machine().command(u"/usr/bin/swiftc");
    enterFolder(scan, {});
    scan.scanAsAdmin(tour.machine().volumes().startupDisk());
    tour.takePicture(u"scanner-admin"_s);
    const auto isFinished = [&] { return scan.scanState() == ScanViewModel::Completed; };
    tour.clock().letPass(adminTime);
    co_await tour.waitFor(u"scan as administrator"_s, isFinished);
    prompt.forgetAnswers();
    tour.takePicture(u"scanner-admin-completed"_s);
}

QCoro::Task<> showScanner(Tour& tour)
{
    ScanViewModel& scan = *tour.shell().viewModel<ScanViewModel>(AppMode::scanner);
    const auto isListed = [&] { return scan.volumes().size() == 2; };
    co_await tour.waitFor(u"volumes"_s, isListed);
    tour.takePicture(u"scanner-volumes"_s);
    scan.startScan(tour.machine().machine().path(u"/Volumes/Backup"));
    const auto hasFailed = [&] { return scan.scanState() == ScanViewModel::Error; };
    co_await tour.waitFor(u"failed scan"_s, hasFailed);
    tour.takePicture(u"scanner-error"_s);
    scan.showVolumes();
    co_await showScan(tour, scan);
    co_await showRows(tour, scan);
    co_await showCharts(tour, scan);
    co_await showAdminScan(tour, scan);
}

const Tour::Chapter chapter(AppMode::scanner, &showScanner);

} // namespace

void enterFolder(ScanViewModel& scan, const QStringList& path)
{
    scan.drillToRoot();
    for (const QString& name : QStringList{u"Users"_s, u"robin"_s} + path) {
        if (FileNode* folder = childOf(*scan.focusedNode().node(), name))
            scan.drillDown(FileNodeRef(folder->shared()));
    }
}

} // namespace brivane
