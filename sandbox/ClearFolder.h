#pragma once

#include <QByteArray>

namespace brivane {

/// Removes `folder` with all that is in it, however deep; folders that their owner has locked are
/// unlocked first. Follows no link. False when something would not go. Any thread.
///
/// Only for folders of the sandbox's own. What users own is removed by the program's own, far more
/// careful means, which this one is kept apart from so that it can clean up after their tests.
bool clearFolder(const QByteArray& folder);

} // namespace brivane
