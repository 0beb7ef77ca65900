#pragma once

#include <QList>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>

namespace brivane {

/// Gives the keyboard back to where it was before a popup opened; if that is gone, to the next stop
/// of the Tab key after it, or in what is left of its surroundings. GUI thread.
///
/// Qt 6.4 leaves the keyboard on the window's content, on which no key does anything. What has been
/// given the keyboard meanwhile, as by a press outside of the popup, keeps it.
class FocusReturn : public QObject {
    Q_OBJECT
    QML_ELEMENT

public:
    using QObject::QObject;

    /// To be called before the popup takes the keyboard; `anchor` is anything in its window.
    Q_INVOKABLE void remember(const QQuickItem* anchor);
    /// To be called when the popup goes and when it is gone: Qt takes the keyboard away at both.
    Q_INVOKABLE void giveBack();

private:
    [[nodiscard]] bool isLost() const;
    [[nodiscard]] QQuickItem* heir() const;

    QPointer<QQuickWindow> m_window;
    /// What had the keyboard, and all that it lay in.
    QList<QPointer<QQuickItem>> m_places;
    Qt::FocusReason m_reason = Qt::PopupFocusReason;
};

} // namespace brivane
