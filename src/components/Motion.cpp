#include "components/Motion.h"

#include "components/DesktopMotion.h"
#include "components/SpringCurve.h"

#include <QtMath>

namespace brivane {

Motion::Motion()
    : m_enabled(desktopShowsAnimations())
{
}

Motion& Motion::instance()
{
    static Motion motion;
    return motion;
}

Motion* Motion::create(QQmlEngine*, QJSEngine*)
{
    QJSEngine::setObjectOwnership(&instance(), QJSEngine::CppOwnership);
    return &instance();
}

void Motion::setEnabled(bool enabled)
{
    if (m_enabled == enabled)
        return;
    m_enabled = enabled;
    Q_EMIT enabledChanged();
}

int Motion::springDuration(double response, double damping) const
{
    return milliseconds(qRound(SpringCurve::settlingTime(response, damping) * 1000));
}

QVariantList Motion::springCurve(double response, double damping)
{
    const QList<qreal> curve = SpringCurve::bezierCurve(response, damping);
    return {curve.begin(), curve.end()};
}

} // namespace brivane
