#include "scanner/ScanStats.h"

#include "core/ByteFormatter.h"
#include "platform/PathText.h"
#include "scanner/FileTree.h"
#include "scanner/ScanViewModel.h"

#include <cstring>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

/// A path may be of any length, and laying out a text costs its length at every report.
constexpr qsizetype longestShownPath = 400;

/// A size below which something could not be read is a lower bound.
QString sizeText(const FileNode& node)
{
    const QString size = ByteFormatter::format(node.size());
    return node.isIncomplete() ? u"at least "_s + size : size;
}

} // namespace

ScanStats::ScanStats(const ScanViewModel& viewModel, Locations locations, const Clock& clock,
                     QObject* parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_locations(std::move(locations))
    , m_clock(clock)
{
    connect(&viewModel, &ScanViewModel::progressChanged, this, &ScanStats::progressChanged);
    connect(&viewModel, &ScanViewModel::focusedNodeChanged, this, &ScanStats::focusChanged);
    connect(&viewModel, &ScanViewModel::scanTickChanged, this, &ScanStats::focusChanged);
    connect(&viewModel, &ScanViewModel::scanResultChanged, this, &ScanStats::focusChanged);
    connect(&viewModel, &ScanViewModel::scanResultChanged, this, &ScanStats::resultChanged);
    // What could not be read is told with the progress; a scan as administrator ends without one,
    // and the first tree comes after one.
    connect(&viewModel, &ScanViewModel::rootNodeChanged, this, &ScanStats::progressChanged);
    connect(&viewModel, &ScanViewModel::scanResultChanged, this, &ScanStats::progressChanged);
}

QString ScanStats::shown(const QString& path) const
{
    const QString shown = m_locations.shown(path);
    if (shown.size() <= longestShownPath)
        return shown;
    constexpr qsizetype half = longestShownPath / 2;
    return shown.left(half) + u'…' + shown.right(half);
}

QString ScanStats::filesText() const
{
    return m_viewModel.progress().formattedFilesScanned();
}

QString ScanStats::bytesText() const
{
    return ByteFormatter::format(m_viewModel.progress().bytesProcessed);
}

QString ScanStats::rateText() const
{
    const ScanProgress& progress = m_viewModel.progress();
    const double seconds = static_cast<double>(progress.startTime.msecsTo(m_clock.now())) / 1000;
    const double rate = seconds > 0 ? static_cast<double>(progress.filesScanned) / seconds : 0;
    return u"%1 f/s"_s.arg(static_cast<qint64>(rate));
}

QString ScanStats::currentPath() const
{
    return shown(m_viewModel.progress().currentPath);
}

QString ScanStats::focusPath() const
{
    const FileNodeRef& focus = m_viewModel.focusedNode();
    return focus.isValid() ? shown(focus.node()->path()) : QString();
}

QString ScanStats::focusName() const
{
    const FileNodeRef& focus = m_viewModel.focusedNode();
    return focus.isValid() ? PathText::forDisplay(focus.node()->name()) : QString();
}

QString ScanStats::focusSizeText() const
{
    const FileNodeRef& focus = m_viewModel.focusedNode();
    return focus.isValid() ? sizeText(*focus.node()) : QString();
}

bool ScanStats::canGoUp() const
{
    return m_viewModel.focusedNode().isValid() &&
           m_viewModel.focusedNode() != m_viewModel.rootNode();
}

QString ScanStats::resultFilesText() const
{
    const auto& result = m_viewModel.scanResult();
    if (!result)
        return {};
    ScanProgress counted;
    counted.filesScanned = result->totalFilesScanned;
    return counted.formattedFilesScanned();
}

QString ScanStats::resultSizeText() const
{
    const auto& result = m_viewModel.scanResult();
    return result ? sizeText(*result->rootNode) : QString();
}

QString ScanStats::durationText() const
{
    const auto& result = m_viewModel.scanResult();
    return result ? result->formattedDuration() : QString();
}

QString ScanStats::hiddenSpaceText() const
{
    const auto& result = m_viewModel.scanResult();
    if (!result || result->hiddenSpaceBytes == 0)
        return {};
    return ByteFormatter::format(result->hiddenSpaceBytes);
}

int ScanStats::issueCount() const
{
    const FileNodeRef& root = m_viewModel.rootNode();
    return root.isValid() ? static_cast<int>(root.node()->tree().issueCount()) : 0;
}

QStringList ScanStats::issueLines() const
{
    QStringList lines;
    if (!m_viewModel.rootNode().isValid())
        return lines;
    for (const ScanIssue& issue : m_viewModel.rootNode().node()->tree().issues()) {
        lines += m_locations.shown(PathText::fromBytes(issue.path)) + u": "_s +
                 QString::fromLocal8Bit(std::strerror(issue.error));
    }
    return lines;
}

} // namespace brivane
