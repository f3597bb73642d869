#include <algorithm>

#include "varnel/foundation/detail/characters.h"
#include "varnel/render/detail/text_measure.h"

namespace varnel::detail {

TextSize TextMeasurer::Measure(std::string_view text) const {
    if (m_Face == nullptr || text.empty()) return {};
    const auto measure = [this](std::string_view line) {
        TextSize size;
        ForEachCharacter(line, [&](char32_t character) {
            const GLYPHMETRICSFLOAT m = m_Face->Metrics(character);
            const double height = static_cast<double>(m.gmfBlackBoxY);
            size.width += static_cast<double>(m.gmfCellIncX);
            size.height = std::max(size.height, height);
            size.descent =
                std::max(size.descent, height - static_cast<double>(m.gmfptGlyphOrigin.y));
        });
        return size;
    };
    TextSize all;
    ForEachLine(Utf8Text(text).Get(), [&](std::string_view line) {
        const TextSize size = measure(line);
        all.width = std::max(all.width, size.width);
        if (all.lines++ == 0) all.height = size.height;
        all.descent = size.descent;
    });
    all.height += (all.lines - 1) * kLineSpacing;
    return all;
}

}  // namespace varnel::detail
