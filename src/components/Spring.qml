import QtQuick
import Brivane.Components

// A number that moves like a damped spring: `response` in seconds, `damping` 1 without overshoot.
NumberAnimation {
    property real response: 0.3
    property real damping: 0.8

    duration: Motion.springDuration(response, damping)
    easing.type: Easing.BezierSpline
    easing.bezierCurve: Motion.springCurve(response, damping)
}
