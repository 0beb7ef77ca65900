#pragma once

#include "platform/FileIdentity.h"
#include "platform/Result.h"

#include <QString>

#include <cstddef>
#include <stop_token>
#include <vector>

namespace brivane {

/// What stands in one folder, in the file system's order, as far as reading it goes.
struct FolderListing {
    struct Item {
        QString name;
        /// Of what a link leads to, where it is one.
        enum class Kind { File, Folder, Other } kind = Kind::Other;
    };

    ObjectId folder; ///< tells a folder that was listed already, by whatever path
    std::vector<Item> items;
};

/// Lists the folder at `path`, or the one that a link there leads to. A folder of more than `limit`
/// entries is EFBIG. Any thread; blocks.
Result<FolderListing> listFolder(const QString& path, std::size_t limit = 200'000);

/// One entry of a folder, and what lstat says of it.
struct InspectedEntry {
    QString name;
    FileIdentity identity; ///< whole; where it is a link, the link's
};

/// The same folder with a look at each of its entries, in the file system's order. What vanishes
/// meanwhile is left out; after a stop, all that would have followed. Any thread; blocks.
Result<std::vector<InspectedEntry>> inspectFolder(const QString& path,
                                                  const std::stop_token& stop = {});

} // namespace brivane
