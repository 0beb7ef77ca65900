#pragma once

namespace brivane {

class DemoFiles;
class SandboxMachine;

/// What programs leave lying about on the demo machine: something of each kind that Smart Clean
/// knows, and beside it what must not be taken for it.
void addDemoJunk(DemoFiles& files, const SandboxMachine& machine);

} // namespace brivane
