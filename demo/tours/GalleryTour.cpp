// The components that all screens are made of.

#include "demo/Tour.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

#include <algorithm>
#include <cmath>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

constexpr qreal overlap = 100; // what one page shows of the next

QCoro::Task<> showGallery(Tour& tour)
{
    QQuickView view;
    view.engine()->addImportPath(u"qrc:/qt/qml"_s);
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(1200, 750);
    view.setSource(QUrl(u"qrc:/qt/qml/Brivane/Components/Gallery.qml"_s));
    view.show();
    tour.settle();
    auto* flickable = view.rootObject()->findChild<QQuickItem*>(u"galleryFlickable"_s);
    const qreal end = flickable->property("contentHeight").toReal() - flickable->height();
    const auto pages = static_cast<int>(std::ceil(end / (flickable->height() - overlap))) + 1;
    for (int page = 0; page < pages; ++page) {
        const qreal top = (flickable->height() - overlap) * page;
        flickable->setProperty("contentY", std::min(end, top));
        tour.takePicture(view, u"gallery-%1"_s.arg(page + 1));
    }
    for (const char* opener : {"askOne", "askTwo", "openMenu", "openLines"}) {
        auto* button = view.rootObject()->findChild<QObject*>(QLatin1String(opener));
        QMetaObject::invokeMethod(button, "activate");
        tour.takePicture(view, u"gallery-"_s + QLatin1String(opener));
        QTest::keyClick(&view, Qt::Key_Escape);
        tour.settle();
    }
    co_return;
}

const Tour::Chapter chapter(std::nullopt, &showGallery);

} // namespace

} // namespace brivane
