#include "components/ScreenReader.h"

#include <QAccessible>

namespace brivane {

namespace {

void send(QQuickItem* item, QAccessible::Event what)
{
    if (!item || !QAccessible::isActive())
        return;
    QAccessibleEvent event(item, what);
    QAccessible::updateAccessibility(&event);
}

} // namespace

void ScreenReader::focusMoved(QQuickItem* item)
{
    send(item, QAccessible::Focus);
}

void ScreenReader::alert(QQuickItem* item)
{
    send(item, QAccessible::Alert);
}

} // namespace brivane
