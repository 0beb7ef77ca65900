#pragma once

#include "platform/ParentLinks.h"
#include "platform/Result.h"

#include <cstdint>
#include <optional>

namespace brivane {

/// An object as the system knows it, whatever it is named.
struct ObjectId {
    std::uint64_t device = 0; ///< as st_dev
    std::uint64_t inode = 0;

    bool operator==(const ObjectId&) const = default;
};

/// Which object stands behind a path, so that what was shown to the user can be told from what
/// took its place. A plain value; parts that are not known are not compared.
struct FileIdentity {
    std::uint64_t device = 0; ///< as st_dev
    std::uint64_t inode = 0;
    std::optional<std::uint64_t> size = {};      ///< logical bytes
    std::optional<std::int64_t> modifiedAt = {}; ///< nanoseconds since 1970
    std::optional<std::int64_t> changedAt = {};  ///< nanoseconds since 1970
    /// Which kind of object it is, as the type in st_mode: an inode is given again, to a link
    /// maybe.
    std::optional<std::uint32_t> type = {};
    /// The folder that the path led to. With it the object is meant in that very folder: when a
    /// parent was swapped for a link, the same path leads to another one.
    std::optional<ObjectId> folder = {};

    /// The whole identity of the object at `path`, a link itself where it is one. Any thread.
    /// `links` as for a move.
    [[nodiscard]] static Result<FileIdentity> of(const QString& path,
                                                 ParentLinks links = ParentLinks::Follow);
    /// The folder that `path` leads to the last component of, links on the way followed. Any
    /// thread.
    [[nodiscard]] static Result<ObjectId> folderOf(const QString& path);
    /// Whether `actual` is the object that this one describes. Of the folder that counts only where
    /// both know it; `actual` has every other part.
    [[nodiscard]] bool matches(const FileIdentity& actual) const;
    // By `type`; false where that is not known.
    [[nodiscard]] bool isDirectory() const;
    [[nodiscard]] bool isRegularFile() const;
    [[nodiscard]] bool isLink() const;
    /// Whether both are the same object, whatever was written to it in between.
    [[nodiscard]] bool isSameObject(const FileIdentity& other) const
    {
        return device == other.device && inode == other.inode;
    }
};

} // namespace brivane
