#pragma once

#include <QQuickItem>
#include <QQuickWindow>

namespace brivane::testing {

/// The item on screen with that objectName; null if there is none. Delegates are children on screen
/// only, so that QObject::findChild() does not see them.
inline QQuickItem* findItem(const QQuickWindow& window, const QString& name)
{
    QList<QQuickItem*> open{window.contentItem()};
    while (!open.isEmpty()) {
        QQuickItem* next = open.takeLast();
        if (next->objectName() == name && next->isVisible())
            return next;
        open += next->childItems();
    }
    return nullptr;
}

} // namespace brivane::testing
