#pragma once

namespace brivane {

/// From here on the permissions of files bind this thread, and those that it starts, also when root
/// started the program: a demo machine has folders that its user may not read.
void obeyPermissions();

} // namespace brivane
