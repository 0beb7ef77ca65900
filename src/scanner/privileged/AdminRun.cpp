#include "scanner/privileged/AdminRun.h"

#include "platform/LiesIn.h"
#include "platform/PathText.h"
#include "scanner/privileged/AdminHelperScript.h"
#include "scanner/privileged/TreeMerger.h"

namespace brivane {

namespace {

QString withoutEndSlashes(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

/// The tree that entries of `path` belong to. Nodes know their path by their place, so entries from
/// elsewhere cannot be put into the tree that there is.
FileNodePtr rootFor(const QString& path, const FileNodePtr& existingRoot)
{
    if (existingRoot && liesIn(path, existingRoot->path()))
        return existingRoot;
    return FileTree::create(PathText::toBytes(path))->root()->shared();
}

} // namespace

AdminRun::AdminRun(Host& host, const QString& scannedPath, const FileNodePtr& existingRoot)
    : locations(host.locations)
    , path(withoutEndSlashes(scannedPath))
    , root(rootFor(path, existingRoot))
    , files(host.locations, host.fileSystem)
{
}

AdminRun::~AdminRun() = default;

void AdminRun::cancel()
{
    dropOutput();
    m_stop.request_stop();
}

void AdminRun::dropOutput()
{
    m_isDropped = true;
    lines->cancel();
}

void AdminRun::readOutput()
{
    // A walk of this tree that was stopped may not have ended yet.
    FileTree::BuildingRight right = root->tree().waitToBuild(&m_isDropped);
    if (!right.tree())
        return;
    m_merger = std::make_unique<TreeMerger>(std::move(right));
    AdminHelperScript::EntryDecoder decoder;
    lines->forEachLine([&](std::string_view line) {
        if (const AdminHelperScript::ScanEntry* entry = decoder.decode(line))
            m_merger->take(*entry);
    });
}

qint64 AdminRun::merge()
{
    if (m_isDropped)
        return -1;
    m_merger->merge();
    return m_merger->takenCount();
}

void AdminRun::clear()
{
    m_merger.reset();
    files.remove();
}

} // namespace brivane
