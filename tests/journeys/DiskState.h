#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <map>
#include <string>

namespace brivane::testing {

/// What lies in a folder: each path in it with all that the system tells of it, but for the time of
/// the last look.
class DiskState {
public:
    static DiskState of(const QString& folder);

    /// The paths that are not in both, or differ.
    [[nodiscard]] QStringList differences(const DiskState& other) const;
    /// How many entries a walk of the folder gives: directories come twice.
    [[nodiscard]] long walkLength() const;

private:
    std::map<std::string, std::array<long, 10>> m_entries;
};

} // namespace brivane::testing
