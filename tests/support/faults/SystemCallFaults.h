#pragma once

#include <functional>

// Lets a test see, fail or disturb any system call on files that the program makes.
//
// A test program links brivane_system_call_faults, whose link options divert the calls that
// SystemCallFaults.cpp lists to wrappers there. While a SystemCallFaults lives, each of them asks
// it first; otherwise they go straight on.
namespace brivane {

/// One call on its way. A call that syncs does nothing in such a program but to be asked about.
struct SystemCall {
    const char* name;  ///< the C library's
    bool changesFiles; ///< what is on the disk, or syncs it; false for a mere look
    int index;         ///< how many calls came before it
};

class SystemCallFaults {
public:
    /// Asked before each call, on the calling thread, one at a time. An errno value makes the call
    /// fail with that, undone; 0 lets it through. It may make calls on files itself, which nobody
    /// is asked about, and may as well end the process.
    using Decision = std::function<int(const SystemCall&)>;

    explicit SystemCallFaults(Decision decide);
    ~SystemCallFaults();
    SystemCallFaults(const SystemCallFaults&) = delete;
    SystemCallFaults& operator=(const SystemCallFaults&) = delete;

    /// How many calls have come by so far.
    [[nodiscard]] int calls() const { return m_calls; }

    /// Whether the call is to fail, with errno set. For the wrappers.
    static bool strike(const char* name, bool changesFiles);

private:
    Decision m_decide;
    int m_calls = 0;
};

/// What `act` returns when `strike` decides about its `n`th call; `wasReached` tells whether there
/// was one.
template<typename Act>
auto withFaultAt(int n, bool& wasReached, const SystemCallFaults::Decision& strike, const Act& act)
{
    wasReached = false;
    const SystemCallFaults faults([&](const SystemCall& call) {
        wasReached |= call.index == n;
        return call.index == n ? strike(call) : 0;
    });
    return act();
}

} // namespace brivane
