#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <random>
#include <unordered_set>

namespace brivane {

class SandboxMachine;

// Bytes.
inline constexpr double kB = 1e3;
inline constexpr double MB = 1e6;
inline constexpr double GB = 1e9;

/// A heap of files that differ in size and age. In `folder` and `name`, "%" is the number of the
/// file; where `spread` is not 0 the folder's "%" is the number of one of so many folders.
struct DemoHeap {
    QStringView folder;
    QStringView name;
    int count;
    int spread;
    double smallest; ///< bytes
    double largest;
    int youngest; ///< days
    int oldest;
};

/// A property list in XML of `entries`, see demoEntry().
QByteArray demoPropertyList(const QString& entries);
QString demoEntry(QStringView key, QStringView value);

/// Lays files into a machine that take no room and are of some age. The same calls make the same
/// files; large sizes never repeat.
class DemoFiles {
public:
    /// Ages are counted back from `now`. `machine` is kept by reference.
    DemoFiles(const SandboxMachine& machine, const QDateTime& now)
        : m_machine(machine)
        , m_now(now)
    {
    }

    /// Evenly spread from 0 up to, not including, 1.
    double chance() { return static_cast<double>(m_random() >> 11) * 0x1p-53; }
    quint64 random() { return m_random(); }

    /// A file that reads as zeros, some days old.
    void sparse(const QString& path, double bytes, int youngest, int oldest);
    /// Makes a file that is there some days old.
    void age(const QString& path, int youngest, int oldest);
    /// Sizes are spread evenly in their logarithm, as on real disks: few are large.
    void pile(const DemoHeap& heap);

private:
    const SandboxMachine& m_machine;
    QDateTime m_now;
    std::mt19937_64 m_random{20240229};
    std::unordered_set<qint64> m_sizes;
};

} // namespace brivane
