#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace brivane {

/// Tells screen readers what happens within a control: Qt 6.4 only does when the keyboard moves to
/// another item, and nothing in QML makes it. GUI thread.
class ScreenReader : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    explicit ScreenReader(QObject* parent = nullptr)
        : QObject(parent)
    {
    }

    /// The keys of the control that `item` lies in act on `item` by now.
    Q_INVOKABLE static void focusMoved(QQuickItem* item);
    /// `item` has something to say that nobody asked for.
    Q_INVOKABLE static void alert(QQuickItem* item);
};

} // namespace brivane
