#pragma once

#include <atomic>

namespace brivane {

/// A Boolean that one thread sets and another reads.
class AtomicFlag {
public:
    [[nodiscard]] bool value() const { return m_value.load(std::memory_order_acquire); }
    void setValue(bool value) { m_value.store(value, std::memory_order_release); }
    /// For those who poll it many times a second.
    [[nodiscard]] const std::atomic<bool>* raw() const { return &m_value; }

private:
    std::atomic<bool> m_value{false};
};

} // namespace brivane
