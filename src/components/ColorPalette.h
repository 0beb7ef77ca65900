#pragma once

#include <QColor>
#include <QObject>
#include <QQmlEngine>

// The fixed colours of the program. One dark appearance, so there is nothing to switch.
//
// Constant data: everything may be called from any thread.
namespace brivane {

class ColorPalette : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor sidebarBackground READ sidebarBackground CONSTANT)
    Q_PROPERTY(QColor surface READ surface CONSTANT)
    Q_PROPERTY(QColor cardBackground READ cardBackground CONSTANT)
    Q_PROPERTY(QColor surfaceLight READ surfaceLight CONSTANT)
    Q_PROPERTY(QColor subtleText READ subtleText CONSTANT)
    Q_PROPERTY(QColor secondaryText READ secondaryText CONSTANT)
    Q_PROPERTY(QColor primaryText READ primaryText CONSTANT)
    Q_PROPERTY(QColor accent READ accent CONSTANT)
    Q_PROPERTY(QColor danger READ danger CONSTANT)
    Q_PROPERTY(QColor warning READ warning CONSTANT)
    Q_PROPERTY(QColor success READ success CONSTANT)
    Q_PROPERTY(QColor windowBackground READ windowBackground CONSTANT)
    Q_PROPERTY(QColor hairline READ hairline CONSTANT)
    Q_PROPERTY(QColor hairlineStrong READ hairlineStrong CONSTANT)
    Q_PROPERTY(QColor blue READ blue CONSTANT)
    Q_PROPERTY(QColor brown READ brown CONSTANT)
    Q_PROPERTY(QColor cyan READ cyan CONSTANT)
    Q_PROPERTY(QColor gray READ gray CONSTANT)
    Q_PROPERTY(QColor green READ green CONSTANT)
    Q_PROPERTY(QColor indigo READ indigo CONSTANT)
    Q_PROPERTY(QColor mint READ mint CONSTANT)
    Q_PROPERTY(QColor orange READ orange CONSTANT)
    Q_PROPERTY(QColor pink READ pink CONSTANT)
    Q_PROPERTY(QColor purple READ purple CONSTANT)
    Q_PROPERTY(QColor red READ red CONSTANT)
    Q_PROPERTY(QColor teal READ teal CONSTANT)
    Q_PROPERTY(QColor yellow READ yellow CONSTANT)

public:
    static QColor sidebarBackground();
    static QColor surface();
    static QColor cardBackground();
    static QColor surfaceLight();
    static QColor
    subtleText(); ///< Under 4.5:1 on cards: for captions of values, not for sentences.
    static QColor secondaryText();
    static QColor primaryText();

    static QColor accent();
    static QColor danger();
    static QColor warning();
    static QColor success();

    static QColor windowBackground(); ///< Behind the content of every window.
    static QColor hairline();         ///< One-pixel borders and dividers.
    static QColor hairlineStrong();   ///< The same while the pointer is over them.

    // Colours that screens ask for by name, tuned for dark ground.
    static QColor blue();
    static QColor brown();
    static QColor cyan();
    static QColor gray();
    static QColor green();
    static QColor indigo();
    static QColor mint();
    static QColor orange();
    static QColor pink();
    static QColor purple();
    static QColor red();
    static QColor teal();
    static QColor yellow();

    /// The colour of a bar that is filled to `fraction`: danger above 0.9, warning above 0.75, else
    /// accent.
    [[nodiscard]] Q_INVOKABLE static QColor usageColor(double fraction);

    /// Black or white, whichever can be read better on `color`: at least 4.5:1.
    [[nodiscard]] Q_INVOKABLE static QColor textOn(const QColor& color);

    /// `color` with its opacity set to `opacity` (0 to 1).
    [[nodiscard]] Q_INVOKABLE static QColor faded(const QColor& color, double opacity);

    /// `color` moved towards white by `amount` (0 to 1); its opacity stays.
    [[nodiscard]] Q_INVOKABLE static QColor lightened(const QColor& color, double amount);
};

} // namespace brivane
