#pragma once

#include <QMarginsF>
#include <QPointer>
#include <QQuickItem>

namespace brivane {

/// What the program's buttons and pills are made of: a ground, contents in their padding, and
/// whether the keyboard came by a key. GUI thread.
///
/// Not one of Qt Quick's templates: in Qt 6.4 these decide themselves what screen readers are told
/// of them, whatever `Accessible.role` and its like say. Of this it is told what is written.
class PlainControl : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem* background READ background WRITE setBackground NOTIFY partsChanged)
    Q_PROPERTY(QQuickItem* contentItem READ contentItem WRITE setContentItem NOTIFY partsChanged)
    Q_PROPERTY(qreal leftPadding READ leftPadding WRITE setLeftPadding NOTIFY leftPaddingChanged)
    Q_PROPERTY(
        qreal rightPadding READ rightPadding WRITE setRightPadding NOTIFY rightPaddingChanged)
    Q_PROPERTY(qreal topPadding READ topPadding WRITE setTopPadding NOTIFY topPaddingChanged)
    Q_PROPERTY(
        qreal bottomPadding READ bottomPadding WRITE setBottomPadding NOTIFY bottomPaddingChanged)
    Q_PROPERTY(qreal implicitContentWidth READ implicitContentWidth NOTIFY implicitContentChanged)
    Q_PROPERTY(qreal implicitContentHeight READ implicitContentHeight NOTIFY implicitContentChanged)
    Q_PROPERTY(
        Qt::FocusReason focusReason READ focusReason WRITE setFocusReason NOTIFY focusReasonChanged)
    /// It has the keyboard, and got it by a key: that is to be seen.
    Q_PROPERTY(bool visualFocus READ hasVisualFocus NOTIFY focusReasonChanged)

public:
    explicit PlainControl(QQuickItem* parent = nullptr);
    ~PlainControl() override;

    [[nodiscard]] QQuickItem* background() const { return m_background; }
    void setBackground(QQuickItem* item);
    [[nodiscard]] QQuickItem* contentItem() const { return m_content; }
    void setContentItem(QQuickItem* item);

    [[nodiscard]] qreal leftPadding() const { return m_padding.left(); }
    void setLeftPadding(qreal width);
    [[nodiscard]] qreal rightPadding() const { return m_padding.right(); }
    void setRightPadding(qreal width);
    [[nodiscard]] qreal topPadding() const { return m_padding.top(); }
    void setTopPadding(qreal height);
    [[nodiscard]] qreal bottomPadding() const { return m_padding.bottom(); }
    void setBottomPadding(qreal height);
    [[nodiscard]] qreal implicitContentWidth() const;
    [[nodiscard]] qreal implicitContentHeight() const;

    [[nodiscard]] Qt::FocusReason focusReason() const { return m_focusReason; }
    void setFocusReason(Qt::FocusReason reason);
    [[nodiscard]] bool hasVisualFocus() const;

Q_SIGNALS:
    void partsChanged();
    void leftPaddingChanged();
    void rightPaddingChanged();
    void topPaddingChanged();
    void bottomPaddingChanged();
    void implicitContentChanged();
    void focusReasonChanged();

protected:
    void geometryChange(const QRectF& geometry, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void arrange();

    QPointer<QQuickItem> m_background;
    QPointer<QQuickItem> m_content;
    QMarginsF m_padding;
    Qt::FocusReason m_focusReason = Qt::OtherFocusReason;
};

} // namespace brivane
