#pragma once

#include <QObject>

class QQuickWindow;

namespace brivane {

/// Shows whoever works by keyboard where the keyboard is.
///
/// A control draws its ring only when Tab led to it. One that gets the keyboard otherwise, because
/// the screen changed or a popup closed, would leave the person guessing: here it gets its ring as
/// well, as long as the last thing that was pressed was a key. GUI thread.
class KeyboardFocus : public QObject {
    Q_OBJECT

public:
    /// Follows `window`, which owns this.
    explicit KeyboardFocus(QQuickWindow& window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void show();

    QQuickWindow& m_window;
    bool m_isByKeyboard = false;
};

} // namespace brivane
