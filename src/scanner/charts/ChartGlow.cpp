#include "scanner/charts/ChartGlow.h"

#include <algorithm>

namespace brivane {

void ChartGlow::light(std::optional<const FileNode*> node)
{
    m_lit = node;
    if (node && std::ranges::find(m_lights, *node, &Light::node) == m_lights.end())
        m_lights.push_back({*node, 0});
}

bool ChartGlow::advance(int milliseconds, int duration)
{
    const double step = static_cast<double>(milliseconds) / duration;
    bool isMoving = false;
    for (Light& light : m_lights) {
        const double target = isLit(light) ? 1 : 0;
        light.level = target > light.level ? std::min(target, light.level + step)
                                           : std::max(target, light.level - step);
        isMoving = isMoving || light.level != target;
    }
    std::erase_if(m_lights,
                  [this](const Light& light) { return light.level == 0 && !isLit(light); });
    return isMoving;
}

void ChartGlow::finish()
{
    for (Light& light : m_lights)
        light.level = isLit(light) ? 1 : 0;
}

void ChartGlow::clear()
{
    m_lights.clear();
    m_lit.reset();
}

double ChartGlow::of(const FileNode* node) const
{
    const auto found = std::ranges::find(m_lights, node, &Light::node);
    if (found == m_lights.end())
        return 0;
    return 1 - (1 - found->level) * (1 - found->level); // ease out
}

} // namespace brivane
