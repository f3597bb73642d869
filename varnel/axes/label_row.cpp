#include "varnel/axes/detail/label_row.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>
#include <optional>
#include <span>
#include <system_error>

#include "varnel/render/detail/text_measure.h"

namespace varnel::detail {
namespace {

constexpr double kLabelGap = 0.35;  // ems between tics and labels

/// Where a text goes on in a second line: at its line break or, if it is to be wrapped, at the
/// space that makes the two as even as they can be.
std::size_t BreakOf(std::string_view text, bool wrapped) {
    const std::size_t end = text.find('\n');
    if (end != text.npos || !wrapped) return end;
    std::size_t best = text.npos;
    const auto unevenness = [&](std::size_t at) {
        return std::abs(static_cast<double>(at) * 2.0 - static_cast<double>(text.size()));
    };
    for (std::size_t at = text.find(' '); at != text.npos; at = text.find(' ', at + 1))
        if (best == text.npos || unevenness(at) < unevenness(best)) best = at;
    return best;
}

PixelQuad QuadOf(PixelPoint corner, PixelPoint right, PixelPoint up) {
    return {{corner, corner + right, corner + right + up, corner + up}};
}

}  // namespace

void ReadNamesAsNumbers(AxisContent& content) {
    const std::size_t count = content.texts.size();
    if (count < 3) return;
    constexpr long kMost = 1'000'000;
    std::vector<long> numbers;
    for (const CString& text : content.texts) {
        long number = 0;
        const char* const end = text.data() + text.size();
        const auto [rest, error] = std::from_chars(text.data(), end, number);
        if (error != std::errc() || rest != end || number < -kMost || number > kMost) return;
        numbers.push_back(number);
    }
    const long step = numbers[1] - numbers[0];
    const double distance = content.places[1] - content.places[0];
    for (std::size_t i = 1; i < count; ++i) {
        const double apart = content.places[i] - content.places[i - 1];
        if (numbers[i] - numbers[i - 1] != step || std::abs(apart - distance) > 0.01 * distance)
            return;
    }
    if (step == 0) return;
    content.named = false;
    for (const long round : {100, 50, 20, 10, 5, 2}) {
        const auto roundest =
            std::ranges::find_if(numbers, [&](long number) { return number % round == 0; });
        if (roundest == numbers.end()) continue;
        content.kept = static_cast<int>(roundest - numbers.begin());
        return;
    }
}

LabelRow::LabelRow(const PlacedAxis& axis, int number, const AxisContent& content,
                   const TextMeasure& measure, double longest)
    : m_Axis(axis), m_Number(number), m_Content(content), m_Longest(longest) {
    for (const CString& text : content.texts)
        m_Labels[0].push_back(NewLabel(text, false, measure));
    const auto canBreak = [](const CString& text) { return text.find(' ') != text.npos; };
    if (!content.named || std::ranges::none_of(content.texts, canBreak)) return;
    for (const CString& text : content.texts)
        m_Labels[1].push_back(NewLabel(text, true, measure));
}

LabelRow::Label LabelRow::NewLabel(std::string_view text, bool wrapped,
                                   const TextMeasure& measure) {
    Label label;
    const auto add = [&](std::string_view line) {
        const TextExtent extent = measure(line);
        m_Ascent = std::max(m_Ascent, extent.ascent);
        m_Descent = std::max(m_Descent, extent.descent);
        label.lines[label.count++] = {line, extent.width};
        label.width = std::max(label.width, extent.width);
    };
    const std::size_t end = BreakOf(text, wrapped);
    add(text.substr(0, end));
    if (end != text.npos) add(text.substr(end + 1));
    return label;
}

/// Everything that may be tried, the best first.
std::vector<RowStyle> LabelRow::Styles(std::span<const double> sizes) const {
    // Smaller than that, names are rather turned.
    constexpr double kLeast = 0.85;
    const PixelPoint along = m_Axis.to - m_Axis.from;
    const bool turn = m_Content.named && std::abs(along.x) > std::abs(along.y);
    const bool slant = turn && m_Content.mayTurn;
    const double least = slant ? kLeast : 0.0;
    std::vector<RowStyle> styles;
    const auto add = [&](int rotation, bool wrapped, double from = 0.0, double below = HUGE_VAL,
                         int stride = 1) {
        for (const double size : sizes)
            if (size >= from && size < below) styles.push_back({size, rotation, wrapped, stride});
    };
    if (m_Content.named) add(0, false, least);
    if (slant) {
        add(45, false, kLeast);
        add(0, false, 0.0, least);
        add(45, false, 0.0, kLeast);
    }
    if (turn) {
        add(90, false);
        add(0, true);
        add(90, true);
    }
    if (!m_Content.named) add(0, false, 1.0);
    const int count = static_cast<int>(m_Content.texts.size());
    const double smallest = m_Content.named ? 0.0 : 1.0;
    for (int decade = 1; decade < count; decade *= 10)
        for (const int factor : {2, 3, 5, 10})
            add(turn ? 90 : 0, false, smallest, HUGE_VAL, factor * decade);
    return styles;
}

RowStyle LabelRow::ChooseStyle(std::optional<double> given) const {
    constexpr double kSizes[] = {1.0, 0.92, 0.85, 0.78, 0.7};
    const std::vector<RowStyle> styles =
        Styles(given ? std::span(&*given, 1) : std::span<const double>(kSizes));
    for (const double longest : {m_Longest, HUGE_VAL})
        for (const RowStyle& style : styles)
            if (Fits(style, longest)) return style;
    RowStyle one = styles.back();
    one.stride = std::max(static_cast<int>(m_Content.texts.size()), 1);
    return one;
}

std::vector<std::vector<PlacedText>> LabelRow::Place(const RowStyle& style) const {
    std::vector<std::vector<PlacedText>> row;
    for (int i = 0; i < static_cast<int>(m_Content.texts.size()); ++i) {
        if (!IsKept(style, i)) continue;
        const Block block = BlockOf(style, i);
        std::vector<PlacedText> texts;
        const int lines = LabelOf(style, i).count;
        texts.reserve(static_cast<std::size_t>(lines));
        for (int line = 0; line < lines; ++line)
            texts.push_back(LineOf(style, i, block, line));
        row.push_back(std::move(texts));
    }
    return row;
}

bool LabelRow::IsKept(const RowStyle& style, int i) const {
    return std::abs(i - m_Content.kept) % style.stride == 0 &&
           !m_Content.texts[static_cast<std::size_t>(i)].empty();
}

const LabelRow::Label& LabelRow::LabelOf(const RowStyle& style, int i) const {
    const bool wrapped = style.wrapped && !m_Labels[1].empty();
    return m_Labels[wrapped ? 1 : 0][static_cast<std::size_t>(i)];
}

/// Slanted labels lead away from the box, also where the axis runs up to the right.
int LabelRow::Turn(const RowStyle& style) const {
    return style.rotation == 45 && m_Axis.outward.x > 0.1 ? -45 : style.rotation;
}

/// Where along its lines a turned label is next to its tic: 0 at its start, 1 at its end.
double LabelRow::Anchor(const RowStyle& style, PixelPoint right) const {
    if (style.rotation == 0) return 0.5;
    return Dot(right, m_Axis.outward) > 0.0 ? 0.0 : 1.0;
}

LabelRow::Block LabelRow::BlockOf(const RowStyle& style, int i) const {
    const double em = m_Content.labelEm * style.size;
    const Label& label = LabelOf(style, i);
    const int more = label.count - 1;
    const double angle = Turn(style) * std::numbers::pi / 180.0;
    Block block;
    block.width = label.width * em;
    block.height = (m_Ascent + m_Descent + more * kLineSpacing) * em;
    block.right = {std::cos(angle), std::sin(angle)};
    block.up = {-block.right.y, block.right.x};
    const PixelPoint& n = m_Axis.outward;
    const double place = m_Content.places[static_cast<std::size_t>(i)];
    // The point beside the tic where the label begins, and the label's place there, moved out until
    // all of it is beyond.
    const PixelPoint at = m_Axis.from + place * (m_Axis.to - m_Axis.from) +
                          (m_Axis.reach + kLabelGap * m_Content.labelEm) * n;
    const double anchor = style.rotation % 90 != 0 ? Anchor(style, block.right) : 0.5;
    const PixelPoint right = block.width * block.right;
    const PixelPoint up = block.height * block.up;
    const PixelPoint corner = at - anchor * right - 0.5 * up;
    double inside = 0.0;
    for (const PixelPoint& p : QuadOf(corner, right, up).corners)
        inside = std::max(inside, Dot(at - p, n));
    block.corner = corner + inside * n;
    return block;
}

PlacedText LabelRow::LineOf(const RowStyle& style, int i, const Block& block, int line) const {
    const Label& label = LabelOf(style, i);
    PlacedText text;
    text.axis = m_Number;
    text.index = i;
    text.text = label.lines[line].text;
    text.em = m_Content.labelEm * style.size;
    text.rotation = Turn(style);
    const double width = label.lines[line].width * text.em;
    const double below = (label.count - 1 - line) * kLineSpacing;
    const PixelPoint corner = block.corner +
                              (Anchor(style, block.right) * (block.width - width)) * block.right +
                              (below * text.em) * block.up;
    text.start = corner + (m_Descent * text.em) * block.up;
    text.shape = QuadOf(corner, width * block.right, ((m_Ascent + m_Descent) * text.em) * block.up);
    text.box = text.shape.Box();
    return text;
}

bool LabelRow::Fits(const RowStyle& style, double longest) const {
    const double em = m_Content.labelEm * style.size;
    const double beside = kLabelsBeside * em;
    const double above = kLabelsAbove * em;
    std::optional<PixelQuad> last;
    for (int i = 0; i < static_cast<int>(m_Content.texts.size()); ++i) {
        if (!IsKept(style, i)) continue;
        const Block block = BlockOf(style, i);
        if (style.rotation != 0 && block.width > longest) return false;
        // With the gaps to the next one, so that those may only not touch.
        const PixelQuad quad = QuadOf(block.corner, (block.width + beside) * block.right,
                                      (block.height + above) * block.up);
        if (last && quad.Touches(*last)) return false;
        last = quad;
    }
    return true;
}

}  // namespace varnel::detail
