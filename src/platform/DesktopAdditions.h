#pragma once

#include "platform/Locations.h"

#include <map>

namespace brivane {

struct AliasBases;

/// What a desktop has beyond the places of the catalogue, by the name of the table that it adds to,
/// read against the directories of this user. Rows stand in linux/DesktopAdditions.cpp.
std::map<QString, QList<Locations::Addition>> desktopAdditions(const AliasBases& bases);

} // namespace brivane
