#pragma once

#include <QDateTime>

namespace brivane {

class SandboxMachine;

/// Fills `machine` like a Mac that has been lived in for some years: programs, caches, projects,
/// films, photos; around 290 GB in many thousand files that take no room, and some real ones where
/// programs look inside (bundles, pictures, duplicates). Names are invented, but where a kind of
/// junk is known by its place. Ages are counted back from `now`. The same `now` gives the same
/// machine.
///
/// Large sizes never repeat, so that nobody reads gigabytes of zeros to compare them.
void fillWithDemoContent(const SandboxMachine& machine, const QDateTime& now);

} // namespace brivane
