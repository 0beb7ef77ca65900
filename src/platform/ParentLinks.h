#pragma once

namespace brivane {

/// Whether a link may stand for one of the folders that lead to a path.
///
/// Trusted: a link is followed when it belongs to root or to this user and lies in a folder that
/// only these two can write to; so is each link that it leads through, 40 at most. A folder that
/// others may write to does not qualify, sticky or not. Where the group may write, the folder
/// qualifies only if it is this user's, has no access list, and its group is the user's private
/// one: the process's own, of the user's name, and with no other member. (Whom root gave that group
/// as a primary one is not asked: that takes a look at every account.)
enum class ParentLinks { Follow, Trusted, Refuse };

} // namespace brivane
