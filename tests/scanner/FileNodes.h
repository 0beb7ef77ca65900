#pragma once

#include "core/Log.h"
#include "scanner/FileTree.h"

#include <QStringList>

#include <algorithm>
#include <map>

// What the tests of trees share.
namespace brivane::testing {

inline FileNode* addFile(FileNode* parent, std::string_view name, std::uint64_t size)
{
    FileNode* node = parent->tree().make(name, false, size);
    parent->tree().attach(node, parent);
    return node;
}

inline FileNode* addFolder(FileNode* parent, std::string_view name)
{
    FileNode* node = parent->tree().make(name, true, 0);
    parent->tree().attach(node, parent);
    return node;
}

/// Null when there is none of that name.
inline FileNode* childOf(const FileNode& node, std::string_view name)
{
    const std::vector<FileNode*> children = node.children();
    const auto found = std::ranges::find(children, name, &FileNode::nameBytes);
    return found == children.end() ? nullptr : *found;
}

/// What a node is, and what of a directory's own counting and sorting shows.
struct Facts {
    bool isDirectory = false;
    std::uint64_t size = 0;
    std::int64_t files = 0;
    std::vector<QByteArray> children = {}; ///< paths, in their order
    bool operator==(const Facts&) const = default;
};
using FactsByPath = std::map<QByteArray, Facts>;

inline FactsByPath factsOf(const FileNode* root)
{
    FactsByPath all;
    std::vector<const FileNode*> open{root};
    while (!open.empty()) {
        const FileNode* node = open.back();
        open.pop_back();
        Facts& facts = all[node->pathBytes()];
        facts = {node->isDirectory(), node->size(), node->fileCount()};
        for (const FileNode* child : node->children()) {
            facts.children.push_back(child->pathBytes());
            open.push_back(child);
        }
    }
    return all;
}

/// The first path of which the facts differ; empty when there is none.
inline std::string differenceOf(const FactsByPath& actual, const FactsByPath& expected)
{
    const auto [is, should] =
        std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
    if (is != actual.end())
        return "is: " + is->first.toStdString();
    return should == expected.end() ? "" : "should be: " + should->first.toStdString();
}

/// "category: text" of each line.
inline QStringList linesOf(const LogCapture& log)
{
    QStringList lines;
    for (const LogLine& line : log.lines())
        lines += line.category + QStringLiteral(": ") + line.text;
    return lines;
}

} // namespace brivane::testing
