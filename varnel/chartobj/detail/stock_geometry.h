// Prices as open-high-low-close marks and candlesticks, in working coordinates.
#pragma once

#include <cstddef>

#include "varnel/chartobj/chart_codes.h"
#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/prism.h"
#include "varnel/chartobj/detail/symbol_pen.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

/// The room of one point of a price or box chart: its width, which Data25D::indOffset places about
/// the value, and the chart's depth.
struct GlyphRoom {
    Orientation o;
    double left, middle, right;
    double near, centre, far;

    GlyphRoom(const CTransform3D& t, const Data25D& data, double ind) : o{data.indAxis == 1} {
        const auto place = [&](int axis, double value, double offset, double width) {
            return WidthExtent(t, axis, value, offset, width, data.exact);
        };
        const auto [left0, right0] = place(o.IndAxis(), ind, data.indOffset, data.indWidth);
        const auto [near0, far0] =
            place(o.DepthAxis(), data.constValue, data.depthOffset, data.depthWidth);
        left = left0;
        right = right0;
        near = near0;
        far = far0;
        // Half of each width, as far as that from the start.
        middle = place(o.IndAxis(), ind, data.indOffset, data.indWidth / 2).to;
        centre = place(o.DepthAxis(), data.constValue, data.depthOffset, data.depthWidth / 2).to;
    }

    /// A point in the middle of the depth.
    point3Dtype At(double u, double z) const { return o.Place(u, centre, z); }

    /// The box of the whole room between two heights.
    Prism Box(double z0, double z1) const {
        const point3Dtype corner = o.Place(left, near, z0);
        const point3Dtype extent = o.Place(right - left, far - near, z1 - z0);
        return {corner.x, corner.y, corner.z, extent.x, extent.y, extent.z};
    }
};

/// The parts of a price mark that are wanted, as the chart's six flags.
struct StockParts {
    bool stem, openTic, closeTic, openSymbol, closeSymbol, body;

    explicit StockParts(const int* flags)
        : stem(flags[PRICE_RANGE] != 0),
          openTic(flags[PRICE_OPEN_TIC] != 0),
          closeTic(flags[PRICE_CLOSE_TIC] != 0),
          openSymbol(flags[PRICE_OPEN_SYMBOL] != 0),
          closeSymbol(flags[PRICE_CLOSE_SYMBOL] != 0),
          body(flags[PRICE_BODY] != 0) {}
};

/// Calls, for each point i whose four prices are data, Line(i, p, q) for stem and tics,
/// Body(i, rose, prism), OpenSymbol(i, place) and CloseSymbol(i, place), places in the chart's box.
template <class Visitor>
void WalkStocks(const CTransform3D& t, const Data25D& data, const StockParts& parts,
                Visitor&& visitor) {
    for (std::size_t i = 0; i < data.ind.size(); ++i) {
        const double open = data.groups.At(0, i);
        const double high = data.groups.At(1, i);
        const double low = data.groups.At(2, i);
        const double close = data.groups.At(3, i);
        if (!IsData(data.ind[i]) || !IsData(open) || !IsData(high) || !IsData(low) ||
            !IsData(close))
            continue;
        const GlyphRoom room(t, data, data.ind[i]);
        const double zOpen = t.CVTWS(2, open);
        const double zClose = t.CVTWS(2, close);
        if (parts.stem)
            visitor.Line(i, room.At(room.middle, t.CVTWS(2, low)),
                         room.At(room.middle, t.CVTWS(2, high)));
        if (parts.openTic) visitor.Line(i, room.At(room.left, zOpen), room.At(room.middle, zOpen));
        if (parts.closeTic)
            visitor.Line(i, room.At(room.middle, zClose), room.At(room.right, zClose));
        if (parts.body) {
            const double grow = std::abs(zClose - zOpen) < data.leastHeight
                                    ? (data.leastHeight - std::abs(zClose - zOpen)) / 2
                                    : 0.0;
            const double up = zClose >= zOpen ? grow : -grow;
            visitor.Body(i, close >= open, room.Box(zOpen - up, zClose + up));
        }
        if (parts.openSymbol) visitor.OpenSymbol(i, PlaceInBox(t, room.At(room.left, zOpen)));
        if (parts.closeSymbol) visitor.CloseSymbol(i, PlaceInBox(t, room.At(room.right, zClose)));
    }
}

}  // namespace varnel::detail
