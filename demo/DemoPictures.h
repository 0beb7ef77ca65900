#pragma once

#include <QByteArray>

namespace brivane {

/// A JPEG picture of a made-up landscape. Pictures of one `scene` resemble each other, `variant`
/// tells them apart (light, a shift of a few pixels); other scenes look different. The same numbers
/// give the same picture.
QByteArray demoPicture(unsigned scene, unsigned variant);

} // namespace brivane
