#include "varnel/render/detail/scene.h"

#include <algorithm>
#include <cmath>

namespace varnel::detail {
namespace {

/// By the direction halfway between those to the light and to the viewer.
double Highlight(const SceneLight& light, const Vec3& normal) {
    const Vec3 half = Normalized({light.direction.x, light.direction.y, light.direction.z - 1.0});
    return light.gloss * std::pow(std::max(0.0, Dot(normal, half)), light.shininess);
}

}  // namespace

RGBDType LitColor(const SceneLight& light, const Vec3& normal, const RGBDType& color) {
    // OpenGL's sum for one directional light: the material's ambient and diffuse
    // colour is the current one, and a face that looks away from the light gets the ambient alone.
    const double facing = std::max(0.0, Dot(normal, light.direction));
    const double highlight = light.gloss > 0.0 && facing > 0.0 ? Highlight(light, normal) : 0.0;
    const auto component = [=](double material, float scene, float ambient, float diffuse) {
        const double sum = static_cast<double>(scene) + static_cast<double>(ambient) +
                           facing * static_cast<double>(diffuse);
        return std::clamp(material * sum + highlight, 0.0, 1.0);
    };
    return {component(color.r, light.sceneAmbient.r, light.ambient.r, light.diffuse.r),
            component(color.g, light.sceneAmbient.g, light.ambient.g, light.diffuse.g),
            component(color.b, light.sceneAmbient.b, light.ambient.b, light.diffuse.b), color.a};
}

double Facing(const SceneLight& light, const Vec3& normal) {
    const double facing = std::max(0.0, Dot(normal, light.direction));
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
