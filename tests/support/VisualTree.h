#pragma once

#include <QQuickItem>
#include <QQuickWindow>

#include <functional>

namespace brivane::testing {

/// The items for which `isWanted` and of which something is to be seen, as far as their place
/// tells, those in front first. Delegates are children on screen only, so that QObject::findChild()
/// does not see them.
inline QList<QQuickItem*> findItems(const QQuickWindow& window,
                                    const std::function<bool(const QQuickItem&)>& isWanted)
{
    struct Open {
        QQuickItem* item;
        QRectF inSight; ///< in the window's coordinates
    };
    QList<QQuickItem*> found;
    QList<Open> open{{window.contentItem(), QRectF(QPointF(), window.size())}};
    while (!open.isEmpty()) {
        auto [next, inSight] = open.takeLast();
        if (!next->isVisible())
            continue;
        const auto place = [next = next] {
            return next->mapRectToScene({0, 0, next->width(), next->height()});
        };
        if (isWanted(*next) && inSight.intersects(place()))
            found += next;
        if (next->clip())
            inSight &= place();
        for (QQuickItem* child : next->childItems())
            open += {child, inSight};
    }
    return found;
}

/// The item on screen with that objectName; null if there is none.
inline QQuickItem* findItem(const QQuickWindow& window, const QString& name)
{
    const auto found =
        findItems(window, [&](const QQuickItem& item) { return item.objectName() == name; });
    return found.isEmpty() ? nullptr : found.first();
}

/// The item on screen that shows exactly this text; null if there is none.
inline QQuickItem* findText(const QQuickWindow& window, const QString& text)
{
    const auto found = findItems(window, [&](const QQuickItem& item) {
        return item.inherits("QQuickText") && item.property("text") == text;
    });
    return found.isEmpty() ? nullptr : found.first();
}

} // namespace brivane::testing
