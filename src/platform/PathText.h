#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

// The one pair of conversions between a path as the file system has it (bytes) and a path as the
// program passes it around (QString), and the text of a path for the eye.
//
// Names are bytes and need not be UTF-8. A byte that is not part of valid UTF-8 becomes the lone
// surrogate U+DC00 + byte, which no valid text contains, and comes back as that byte. Everything
// else is its character, a byte order mark too: different bytes have different texts. All functions
// are pure and may be called from any thread.
namespace brivane::PathText {

/// The text of `bytes`. Never fails; toBytes() gives back exactly `bytes`.
[[nodiscard]] QString fromBytes(QByteArrayView bytes);

/// The bytes of `path`. A lone surrogate that fromBytes() does not produce becomes "?".
[[nodiscard]] QByteArray toBytes(QStringView path);

/// `path` as it may be shown: control characters, bidirectional and byte order marks and bytes that
/// are no text stand as U+FFFD, so that a name can neither break a line nor pose as another name.
[[nodiscard]] QString forDisplay(QStringView path);

/// What follows the last "/" of `path`, trailing slashes ignored; empty for "/" and "".
[[nodiscard]] QString lastComponent(QStringView path);

/// What follows the last dot in the last component of `path`, in small letters; empty where there
/// is none, or only one in front.
[[nodiscard]] QString extension(QStringView path);

} // namespace brivane::PathText
