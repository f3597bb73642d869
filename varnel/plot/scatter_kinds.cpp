// Kinds made of single points, flat and in space.
#include "varnel/plot/detail/chart_impl.h"
#include "varnel/render/codes.h"

namespace varnel::plot {

namespace {

int FlatCode(Marker marker) {
    switch (marker) {
        case Marker::Circle:
            return MARKER_CIRCLE;
        case Marker::Square:
            return MARKER_SQUARE;
        case Marker::Triangle:
            return MARKER_TRIANGLE;
        case Marker::Diamond:
            return MARKER_DIAMOND;
        case Marker::Cross:
            return MARKER_CROSS;
        case Marker::Plus:
            return MARKER_PLUS;
        case Marker::Star:
            return MARKER_STAR;
        default:
            return MARKER_NONE;
    }
}

int SolidCode(Marker marker) {
    switch (marker) {
        case Marker::Cube:
            return SYMBOL_CUBE;
        case Marker::Plus:
            return SYMBOL_PLUS;
        case Marker::Diamond:
            return SYMBOL_DIAMOND;
        case Marker::Pyramid:
            return SYMBOL_PYRAMID;
        case Marker::Hourglass:
            return SYMBOL_HOURGLASS;
        case Marker::Arrow:
            return SYMBOL_ARROW;
        default:
            return SYMBOL_NONE;
    }
}

/// The solid of a marker in space, SYMBOL_NONE for what is flat there too.
int SolidMarker(Marker marker, int series) {
    constexpr Marker kInTurn[] = {Marker::Cube,      Marker::Diamond, Marker::Pyramid,
                                  Marker::Hourglass, Marker::Plus,    Marker::Arrow};
    return SolidCode(marker == Marker::Auto ? kInTurn[series % 6] : marker);
}

}  // namespace

int detail::FlatMarker(Marker marker, int series) {
    constexpr Marker kInTurn[] = {Marker::Circle, Marker::Triangle, Marker::Square, Marker::Diamond,
                                  Marker::Star,   Marker::Plus,     Marker::Cross};
    return FlatCode(marker == Marker::Auto ? kInTurn[series % 7] : marker);
}

Objects Chart::Impl::AddScatter(const std::vector<point3Dtype>& points,
                                const ScatterOptions& options, const char* call) {
    Objects objects;
    for (const detail::Part& part : detail::Split(options.by, points.size(), call)) {
        std::vector<point3Dtype> mine;
        for (const std::size_t row : part.rows)
            mine.push_back(points[row]);
        const bool isFlat = layout == Layout::Flat;
        int flat = isFlat ? detail::FlatMarker(options.marker, series) : MARKER_NONE;
        int solid = flat == MARKER_NONE ? SolidMarker(options.marker, series) : SYMBOL_NONE;
        if (flat == MARKER_NONE && solid == SYMBOL_NONE) flat = FlatCode(options.marker);
        CChartObj3D* const symbols = NewObject();
        symbols->ScatterChart3D(mine, SymbolSize(options.size), solid, NextColor(options.color),
                                isFlat ? theme.background : theme.outline, PROJECTION_NONE, 0);
        // A fine edge keeps markers that lie on each other apart.
        if (flat != MARKER_NONE) symbols->SetOutlineWidth(0.5 * pixelsPerPoint);
        symbols->SetMarker(flat, scale * options.size);
        ColorPoints(symbols, part.rows, options.color_by, options.map, points.size(), call);
        AddEntry(symbols, part.name.empty() ? options.name : part.name);
        objects.push_back(symbols);
    }
    return objects;
}

Objects Chart::Scatter(const Values& x, const Values& y, const ScatterOptions& options) {
    Impl& c = *m_Impl;
    const auto [xs, ys] = c.TakeFlat(x, y, "Scatter");
    if (c.axes[0].kind == DataKind::Dates) c.room = c.room.value_or(0.0);
    return c.AddScatter(c.InLayer(xs, ys), options, "Scatter");
}

Objects Chart::Scatter3D(const Values& x, const Values& y, const Values& z,
                         const ScatterOptions& options) {
    Impl& c = *m_Impl;
    return c.AddScatter(c.TakeSpatial(x, y, z, "Scatter3D"), options, "Scatter3D");
}

}  // namespace varnel::plot
