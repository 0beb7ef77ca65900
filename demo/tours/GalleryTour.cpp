// The components that all screens are made of.

#include "demo/Tour.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<> showGallery(Tour& tour)
{
    QQuickView view;
    view.engine()->addImportPath(u"qrc:/qt/qml"_s);
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(1200, 750);
    view.setSource(QUrl(u"qrc:/qt/qml/Brivane/Components/Gallery.qml"_s));
    view.show();
    tour.takePicture(view, u"gallery"_s);
    auto* flickable = view.rootObject()->findChild<QQuickItem*>(u"galleryFlickable"_s);
    flickable->setProperty("contentY",
                           flickable->property("contentHeight").toReal() - flickable->height());
    tour.takePicture(view, u"gallery-end"_s);
    co_return;
}

const Tour::Chapter chapter(std::nullopt, &showGallery);

} // namespace

} // namespace brivane
