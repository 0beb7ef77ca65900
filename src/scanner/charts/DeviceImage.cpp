#include "scanner/charts/DeviceImage.h"

#include <QPainter>
#include <QSemaphore>
#include <QThreadPool>

namespace brivane {

void paintDeviceImage(QPainter& painter, const QRectF& area,
                      const std::function<void(QImage& image, const QTransform& toImage)>& draw)
{
    const QTransform toDevice = painter.deviceTransform();
    const QRect pixels = toDevice.mapRect(area).toAlignedRect();
    QImage image(pixels.size(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return;
    image.fill(Qt::transparent);
    draw(image, toDevice * QTransform::fromTranslate(-pixels.x(), -pixels.y()));
    painter.drawImage(toDevice.inverted().mapRect(QRectF(pixels)), image);
}

void paintUnsplit(QPainter& painter, const QRectF& area,
                  const std::function<void(QPainter& painter)>& paint)
{
    paintDeviceImage(painter, area, [&](QImage& image, const QTransform& toImage) {
        QSemaphore done;
        QThreadPool::globalInstance()->start([&] {
            {
                QPainter inImage(&image);
                inImage.setTransform(toImage);
                inImage.setRenderHint(QPainter::Antialiasing);
                paint(inImage);
            }
            done.release();
        });
        done.acquire();
    });
}

} // namespace brivane
