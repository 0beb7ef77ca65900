#pragma once

#include <QQuickItem>
#include <QQuickView>
#include <QStringList>

#include <memory>

// A piece of QML in a window of its own, offscreen, without motion, with everything that the engine
// warns about.
class QmlScene {
public:
    /// `body` is the one object of a document that imports QtQuick and Brivane.Components.
    explicit QmlScene(const QByteArray& body, QSize size = {400, 300});
    ~QmlScene();

    QQuickView& view() { return *m_view; }
    QQuickItem* root() const { return m_view->rootObject(); }
    /// The item with that objectName; a failed test, and null, if there is none.
    QQuickItem* item(const QString& name) const;
    /// A child of the item with that objectName, focused as if by Tab.
    QQuickItem* focused(const QString& name) const;
    void press(Qt::Key key);
    void click(QQuickItem* item);
    QStringList warnings() const;

private:
    std::unique_ptr<QQuickView> m_view;
};
