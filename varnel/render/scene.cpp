#include "varnel/render/detail/scene.h"

#include <algorithm>

namespace varnel::detail {

RGBDType LitColor(const SceneLight& light, const Vec3& normal, const RGBDType& color) {
    // OpenGL's sum for one directional light without gloss: the material's ambient and diffuse
    // colour is the current one, and a face that looks away from the light gets the ambient alone.
    const double facing = std::max(0.0, Dot(normal, light.direction));
    const auto component = [facing](double material, float scene, float ambient, float diffuse) {
        const double sum = static_cast<double>(scene) + static_cast<double>(ambient) +
                           facing * static_cast<double>(diffuse);
        return std::clamp(material * sum, 0.0, 1.0);
    };
    return {component(color.r, light.sceneAmbient.r, light.ambient.r, light.diffuse.r),
            component(color.g, light.sceneAmbient.g, light.ambient.g, light.diffuse.g),
            component(color.b, light.sceneAmbient.b, light.ambient.b, light.diffuse.b), color.a};
}

RGBDType TexturedColor(const SceneState& state, double coordinate, const RGBDType& color) {
    if (state.textureSize == 0) return color;
    const auto index = static_cast<std::size_t>(TextureIndex(state, coordinate));
    const RGBDType texel = RGBBtoRGBD(state.texture[index]);
    const auto mix = [&](double below, double above) {
        return below * (1.0 - texel.a) + above * texel.a;
    };
    return {mix(color.r, texel.r), mix(color.g, texel.g), mix(color.b, texel.b), color.a};
}

}  // namespace varnel::detail
