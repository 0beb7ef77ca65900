#pragma once

#include "platform/FileSystemProviding.h"
#include "platform/Locations.h"

namespace brivane {

/// The helper's source and binary, on the disk for as long as one scan as administrator takes.
///
/// What lies here is going to run as root, so nobody else may have a hand in it. Both files are in
/// the private temporary directory, which only this user can enter; whatever stood at their places
/// before is removed, links not followed; and the binary is run only when it is a plain file of
/// this user's that has no other name and that others cannot write. What remains is the user: who
/// already runs programs under the same account can exchange the binary before it starts, just as
/// they could change the prompt, the command line or Brivane itself.
///
/// Every function blocks for as long as the disk takes. One thread at a time.
class HelperFiles {
public:
    HelperFiles(Locations locations, FileSystemProviding& fileSystem);

    /// Makes room for both files and writes the source.
    Result<> write();
    /// Whether what the compiler has made may be run. Nothing there is nothing wrong: the shell
    /// will say so.
    [[nodiscard]] bool isBinaryTrustworthy() const;
    /// Removes both files; a failure to do so is nobody's concern.
    void remove();

    /// Where the files lie; empty before write().
    [[nodiscard]] const QString& source() const { return m_source; }
    [[nodiscard]] const QString& binary() const { return m_binary; }

private:
    const Locations m_locations;
    FileSystemProviding& m_fileSystem;
    QString m_source;
    QString m_binary;
};

} // namespace brivane
