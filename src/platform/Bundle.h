#pragma once

#include <QString>

#include <optional>

// What the bundle of an application tells of itself, in its "Contents/Info.plist". Any thread;
// blocks. A description that is missing, broken, unreasonably large or no plain file tells nothing.
namespace brivane::Bundle {

/// What stands under "CFBundleIdentifier" in the bundle at `path`, where that is a text.
[[nodiscard]] std::optional<QString> identifier(const QString& path);

} // namespace brivane::Bundle
