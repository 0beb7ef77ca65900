#pragma once

#include "scanner/FileNode.h"

#include <optional>

namespace brivane {

/// How far the items of a chart are lit up: the one that is hovered comes on, those that were go
/// out. An item is known by its node, null for the group. Nodes are compared only. GUI thread.
class ChartGlow {
public:
    /// From now on this one is lit; nothing for none.
    void light(std::optional<const FileNode*> node);
    /// Moves by so many milliseconds of the `duration` that an item takes; whether some still move.
    bool advance(int milliseconds, int duration);
    /// Everything is as it will be.
    void finish();
    /// None has been lit.
    void clear();
    /// From 0 to 1.
    [[nodiscard]] double of(const FileNode* node) const;

private:
    struct Light {
        const FileNode* node = nullptr;
        double level = 0;
    };

    [[nodiscard]] bool isLit(const Light& light) const { return m_lit == light.node; }

    std::vector<Light> m_lights; ///< of the few that are or were hovered
    std::optional<const FileNode*> m_lit;
};

} // namespace brivane
