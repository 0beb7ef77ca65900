#pragma once

#include "platform/FileSystemProviding.h"

namespace brivane {

/// The machine's own file system. Has no state: any thread, any number at a time.
class DefaultFileSystem final : public FileSystemProviding {
public:
    Result<QString> trashItem(const QString& path,
                              const std::optional<FileIdentity>& expected = {}) override;
    [[nodiscard]] RemovalReport
    removeItem(const QString& path, const std::optional<FileIdentity>& expected = {}) override;
    Result<Moved> moveItem(const QString& from, const QString& to,
                           const MoveOptions& options = {}) override;
    Result<> makeDirectory(const QString& path, mode_t mode,
                           ParentLinks links = ParentLinks::Follow) override;
    Result<> writeAtomically(const QString& path, QByteArrayView bytes, mode_t mode) override;
    Result<> reserveSpace(const QString& path, std::uint64_t bytes) override;
    Result<> releaseSpace(const QString& path) override;
};

} // namespace brivane
