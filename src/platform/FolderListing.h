#pragma once

#include "platform/FileIdentity.h"

#include <QString>

#include <stop_token>
#include <vector>

namespace brivane {

/// What one folder holds directly, and what lstat says of it.
struct ListedEntry {
    QString name;
    FileIdentity identity; ///< whole; where it is a link, the link's
};

/// Lists the folder at `path`, or the one that a link there leads to, in the order of the file
/// system and without "." and "..". What vanishes meanwhile is left out; after a stop, all that
/// would have followed. Any thread; blocks.
Result<std::vector<ListedEntry>> listFolder(const QString& path, const std::stop_token& stop = {});

} // namespace brivane
