#include "varnel/render/detail/scene.h"

#include <algorithm>
#include <cmath>

namespace varnel::detail {

Turned TurnedBy(const SceneLight& light, const Vec3& normal) {
    Turned turned{Dot(normal, light.direction), 0.0, 0.0};
    if (light.limited) {
        const double squared = normal.x * normal.x + normal.y * normal.y;
        const double whole = 1.0 + std::hypot(light.direction.x, light.direction.y);
        turned.aside = squared / whole;
        turned.toLight = std::sqrt(squared) / whole *
                         (normal.x * light.direction.x + normal.y * light.direction.y);
    }
    if (!(light.gloss > 0.0)) return turned;
    // Halfway between the directions to the light and to the viewer.
    const Vec3 half = Normalized({light.direction.x, light.direction.y, light.direction.z - 1.0});
    turned.toHighlight = Dot(normal, half);
    return turned;
}

double Highlight(const SceneLight& light, double toHighlight) {
    return light.gloss * std::pow(std::max(0.0, toHighlight), light.shininess);
}

double Facing(const SceneLight& light, const Turned& turned) {
    const double facing = Share(light, turned);
    if (light.limited) return facing;
    const double most = -light.direction.z;
    return most > 0.0 ? std::min(1.0, facing / most) : facing;
}

RGBDType TexturedColor(const SceneState& state, double coordinate, const RGBDType& color,
                       bool shaded) {
    if (state.textureSize == 0) return color;
    const auto index = static_cast<std::size_t>(TextureIndex(state, coordinate));
    const RGBDType texel = RGBBtoRGBD(state.texture[index]);
    if (shaded) return {color.r * texel.r, color.g * texel.g, color.b * texel.b, color.a};
    const auto mix = [&](double below, double above) {
        return below * (1.0 - texel.a) + above * texel.a;
    };
    return {mix(color.r, texel.r), mix(color.g, texel.g), mix(color.b, texel.b), color.a};
}

}  // namespace varnel::detail
