#pragma once

#include <QStringView>

namespace brivane {

/// How a risk level is told, in the order of CleanerCategory::RiskLevel.
struct RiskBadge {
    QStringView label;
    QStringView symbol;
    float hue;
    float saturation;
    float brightness;
    QStringView help;
};

inline constexpr RiskBadge riskBadges[] = {
    {u"Safe", u"checkmark.shield.fill", 0.35F, 0.70F, 0.75F,
     u"Safe to delete, apps will recreate these files"},
    {u"Review", u"exclamationmark.circle.fill", 0.12F, 0.80F, 0.90F,
     u"Review before deleting, some files may be useful"},
    {u"Caution", u"exclamationmark.triangle.fill", 0.02F, 0.75F, 0.85F,
     u"Be careful, deletion may affect app behavior"},
};

} // namespace brivane
