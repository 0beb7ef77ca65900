#pragma once

#include <QObject>

class QQuickWindow;

namespace brivane {

/// Sees to it that the keyboard is somewhere, and shows whoever works by it where that is.
///
/// A control draws its ring only when Tab led to it. One that gets the keyboard otherwise, because
/// the screen changed or a popup closed, would leave the person guessing: here it gets its ring as
/// well, as long as the last thing that was pressed was a key.
///
/// A popup that goes with its screen cannot give the keyboard back. It would stay on the window's
/// content, on which no key does anything: it goes on where it was before. GUI thread.
class KeyboardFocus : public QObject {
    Q_OBJECT

public:
    /// Follows `window`, which owns this.
    explicit KeyboardFocus(QQuickWindow& window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();
    void giveBack();

    QQuickWindow& m_window;
    bool m_isByKeyboard = false;
};

} // namespace brivane
