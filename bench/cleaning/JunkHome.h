#pragma once

#include <QStringList>

namespace brivane {

class SandboxMachine;

/// Fills the home of `machine` with about so many files, of up to 64 KiB that take no room, in
/// places of all eighteen categories of Smart Clean. How many there are.
int buildJunkHome(const SandboxMachine& machine, int files);

/// The folders that hold all that Smart Clean's scanners look at, none of them in another.
QStringList junkRoots(const SandboxMachine& machine);

} // namespace brivane
