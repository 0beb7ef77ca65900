#pragma once

#include <QImage>
#include <QRectF>
#include <QTransform>

#include <functional>

class QPainter;

namespace brivane {

/// Lets `draw` fill a transparent image, and paints that over `area`, one pixel of the image for
/// one of the device. The transform leads from the painter's coordinates to the image's. `painter`
/// may be moved and scaled, not turned. Any thread.
void paintDeviceImage(QPainter& painter, const QRectF& area,
                      const std::function<void(QImage& image, const QTransform& toImage)>& draw);

/// Calls `paint` with an antialiasing painter of the same coordinates, and shows over `area` what
/// it painted. Qt's raster engine gives a part of every larger fill to the threads of its pool and
/// waits for them, which in a picture of a hundred fills takes longer than filling. A thread of the
/// pool fills by itself: `paint` runs there, while this one waits, and should paint no text, for
/// which each thread loads its fonts anew.
void paintUnsplit(QPainter& painter, const QRectF& area,
                  const std::function<void(QPainter& painter)>& paint);

} // namespace brivane
