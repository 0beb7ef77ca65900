#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QVariant>

// Whether and how long things move. While `enabled` is false every duration is 0 and nothing
// repeats: people who asked their desktop for less motion, tests and pictures see the final state
// at once.
//
// GUI thread only; one instance for the program, shared by all engines.
namespace brivane {

class Motion : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY enabledChanged)
    Q_PROPERTY(int quick READ quick NOTIFY enabledChanged)
    Q_PROPERTY(int standard READ standard NOTIFY enabledChanged)
    Q_PROPERTY(int slow READ slow NOTIFY enabledChanged)

public:
    static Motion& instance();
    static Motion* create(QQmlEngine* engine, QJSEngine* scriptEngine);

    /// Initially whether the desktop shows animations.
    [[nodiscard]] bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);

    [[nodiscard]] int quick() const { return milliseconds(120); }    ///< Hover and press.
    [[nodiscard]] int standard() const { return milliseconds(200); } ///< Things that come and go.
    [[nodiscard]] int slow() const { return milliseconds(350); }     ///< Values, bars, charts.

    /// `duration` in milliseconds, 0 while motion is off.
    [[nodiscard]] Q_INVOKABLE int milliseconds(int duration) const
    {
        return m_enabled ? duration : 0;
    }

    /// Duration in milliseconds and easing curve of a spring, see SpringCurve. Spring.qml uses
    /// both.
    [[nodiscard]] Q_INVOKABLE int springDuration(double response, double damping) const;
    [[nodiscard]] Q_INVOKABLE static QVariantList springCurve(double response, double damping);

Q_SIGNALS:
    void enabledChanged();

private:
    Motion();

    bool m_enabled;
};

} // namespace brivane
