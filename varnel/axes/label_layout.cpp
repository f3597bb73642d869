#include <cstdlib>
#include <cstring>

#include "varnel/axes/detail/label_layout.h"
#include "varnel/foundation/numbers.h"

namespace varnel::detail {
namespace {

constexpr JustTable kJustTable = {
    // x axis; planes 0 to 3, each near horizontal and near vertical
    {{{1, 2}, {0, 1}}, {{1, 2}, {0, 1}}, {{2, 2}, {2, 0}}, {{1, 2}, {0, 1}}},
    // y axis
    {{{2, 1}, {2, 1}}, {{2, 2}, {2, 0}}, {{1, 2}, {2, 1}}, {{2, 2}, {2, 0}}},
    // z axis
    {{{2, 1}, {1, 2}}, {{2, 1}, {1, 2}}, {{2, 1}, {1, 0}}, {{2, 1}, {1, 2}}},
};

bool IsAutomatic(int just) {
    return just == -1;
}

}  // namespace

void FillJustTable(JustTable& table) {
    std::memcpy(table, kJustTable, sizeof kJustTable);
}

int SwapTextJust(int just) {
    if (just == 0) return 2;
    return just == 2 ? 0 : just;
}

Justification TableJustification(const JustTable& table, int axis, int plane, int rotation) {
    if (axis < 0 || axis > 2 || plane < 0 || plane > 3) return {};
    const long long r = std::llabs(rotation);
    const int* entry = table[axis][plane][r >= 45 && r < 135 ? 1 : 0];
    if (rotation < 0) return {SwapTextJust(entry[0]), SwapTextJust(entry[1])};
    return {entry[0], entry[1]};
}

Justification LabelJustification(const JustTable& table, const LabelRow& row) {
    Justification just = TableJustification(table, row.axis, row.plane, row.rotation);
    if (!IsAutomatic(row.xJust)) just.x = row.xJust;
    if (!IsAutomatic(row.yJust)) just.y = row.yJust;
    const bool outward = row.dir >= 3;
    if (outward != row.inverted) {
        const int along = row.dir % 3;
        if (along == 0 && IsAutomatic(row.xJust)) just.x = SwapTextJust(just.x);
        if (along == 1 && IsAutomatic(row.yJust)) just.y = SwapTextJust(just.y);
    }
    if (row.flipX) just.y = SwapTextJust(just.y);
    if (row.flipY) just.x = SwapTextJust(just.x);
    return just;
}

bool IsLabelShown(double value, double min, double center, double max, double tolerance, int mask) {
    int places = 0;
    if (NearTest(value, min, tolerance) != 0) places |= 1;
    if (NearTest(value, center, tolerance) != 0) places |= 2;
    if (NearTest(value, max, tolerance) != 0) places |= 4;
    return places == 0 || (places & mask) != 0;
}

TitleStyle AutoTitleStyle(int axis, int dir, const TitleStyle& kept) {
    constexpr TitleStyle kStyles[3] = {{0, {1, 2}}, {0, {1, 0}}, {270, {1, 2}}};
    if (axis < 0 || axis > 2) return kept;
    TitleStyle style = kStyles[axis];
    if (dir >= 3) {
        int& just = axis == 0 ? style.just.x : style.just.y;
        just = SwapTextJust(just);
    }
    return style;
}

double TitleDistance(int axis, double titleHeight, double labelsWidth) {
    switch (axis) {
        case 0:
            return 3.0 * titleHeight / 2.0;
        case 1:
        case 2:
            return titleHeight + labelsWidth;
        default:
            return labelsWidth / 2.0 + 3.0 * titleHeight / 2.0;
    }
}

}  // namespace varnel::detail
