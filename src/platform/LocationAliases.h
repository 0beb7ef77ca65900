#pragma once

#include "platform/UserFolders.h"

#include <QString>
#include <QStringView>

#include <vector>

// The one table that tells where places of the catalogue lie when they do not lie where their path
// says. Rows stand in linux/LocationAliases.cpp.
namespace brivane {

/// The directories that the rows of the table are relative to: absolute, no slash at the end.
struct AliasBases {
    QString home;
    QString cache;      ///< $XDG_CACHE_HOME
    QString config;     ///< $XDG_CONFIG_HOME
    QString data;       ///< $XDG_DATA_HOME
    QString state = {}; ///< $XDG_STATE_HOME
    UserFolders user = {};
};

/// A row read against the directories of this user. Stands for the place and all that is below it.
struct ResolvedAlias {
    QStringView cataloguePath;
    QString target;
    /// A folder that the user put there, be it into another place of the catalogue.
    bool isUserFolder = false;
};

/// All rows, in the order of the table, without those of user folders that there are none of.
std::vector<ResolvedAlias> resolvedAliases(const AliasBases& bases);

/// Where the stand-ins for system commands lie: beside the build when the program runs from a build
/// tree, else where they are installed.
QString libexecDirectory();

} // namespace brivane
