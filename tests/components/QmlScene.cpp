#include "QmlScene.h"

#include "components/ColorPalette.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QStringList* collectedWarnings = nullptr;
QtMessageHandler previousHandler = nullptr;

void collect(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type != QtDebugMsg && type != QtInfoMsg && collectedWarnings)
        collectedWarnings->append(message);
    previousHandler(type, context, message);
}

} // namespace

QmlScene::QmlScene(const QByteArray& body, QSize size)
    : m_view(std::make_unique<QQuickView>())
{
    static QStringList warnings;
    warnings.clear();
    collectedWarnings = &warnings;
    previousHandler = qInstallMessageHandler(collect);

    m_view->engine()->addImportPath(u"qrc:/qt/qml"_s);
    m_view->setColor(brivane::ColorPalette::windowBackground());
    m_view->setResizeMode(QQuickView::SizeRootObjectToView);
    auto* component = new QQmlComponent(m_view->engine(), m_view.get());
    component->setData("import QtQuick\nimport Brivane.Components\n" + body,
                       QUrl(u"qrc:/scene.qml"_s));
    QObject* object = component->create();
    if (!object) {
        ADD_FAILURE() << qPrintable(component->errorString());
        object = new QQuickItem;
    }
    m_view->setContent(component->url(), component, object);
    m_view->resize(size);
    m_view->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(m_view.get(), 5000));
}

QmlScene::~QmlScene()
{
    m_view.reset();
    qInstallMessageHandler(previousHandler);
    collectedWarnings = nullptr;
}

QQuickItem* QmlScene::item(const QString& name) const
{
    auto* found = root()->objectName() == name ? root() : root()->findChild<QQuickItem*>(name);
    // Delegates of a Repeater are children on screen only.
    QList<QQuickItem*> open{root()};
    while (!found && !open.isEmpty()) {
        QQuickItem* next = open.takeLast();
        found = next->objectName() == name ? next : nullptr;
        open += next->childItems();
    }
    EXPECT_TRUE(found) << qPrintable(name);
    return found;
}

QQuickItem* QmlScene::focused(const QString& name) const
{
    QQuickItem* result = item(name);
    result->forceActiveFocus(Qt::TabFocusReason);
    return result;
}

void QmlScene::press(Qt::Key key)
{
    QTest::keyClick(m_view.get(), key);
}

void QmlScene::click(QQuickItem* item)
{
    const QPointF centre = item->mapToScene(QPointF(item->width(), item->height()) / 2);
    QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, centre.toPoint());
}

QStringList QmlScene::warnings() const
{
    return *collectedWarnings;
}
