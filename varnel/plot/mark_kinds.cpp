// What stands beside the data: texts, arrows, lines and bands across a chart.
#include "varnel/axes/axes.h"
#include "varnel/axes/text_object.h"
#include "varnel/plot/detail/chart_impl.h"
#include "varnel/render/codes.h"

namespace varnel::plot {

using detail::Refuse;

namespace {

constexpr int kX = 0, kValue = 2;  // axes of a flat chart's box
constexpr double kLabelPoints = 11.0;

Objects AddTexts(auto& c, const std::vector<point3Dtype>& points,
                 const std::vector<std::string>& texts, const TextOptions& options,
                 const char* call) {
    if (texts.size() != points.size())
        Refuse(call, "texts has ", texts.size(), " values, not ", points.size());
    CChartObj3D* const object = c.NewObject();
    object->ScatterText3D(points, texts, options.size / kLabelPoints, TEXTPLANE_VIEWER,
                          options.color.value_or(c.theme.text), PROJECTION_NONE, 0);
    return {object};
}

Objects AddArrows(auto& c, const std::vector<point3Dtype>& points,
                  const std::vector<point3Dtype>& vectors, const LineOptions& options, bool flat) {
    constexpr double kHeadPoints = 8.0;
    CChartObj3D* const object = c.NewObject();
    object->Vectors3D(points, vectors, 1.0, c.SymbolSize(kHeadPoints), flat,
                      c.Pixels(options.width), c.NextColor(options.color));
    c.AddEntry(object, options.name);
    return {object};
}

void RequireCount(const Values& values, std::size_t count, const char* call, const char* argument) {
    if (values.size() != count)
        Refuse(call, argument, " has ", values.size(), " values, not ", count);
}

Objects AddLine(auto& c, int axis, double at, const LineOptions& options, const char* call) {
    c.Begin(Layout::Flat, call);
    CChartObj3D* const line = c.NewObject();
    line->ReferenceLine3D(axis, at, PLANE_MIN_Y, LINE_SOLID, c.Pixels(options.width),
                          options.color.value_or(c.theme.axis));
    c.SetDash(*line, options.dash, options.width);
    c.AddEntry(line, options.name);
    return {line};
}

Objects AddBand(auto& c, int axis, double from, double to, const BandOptions& options,
                const char* call) {
    c.Begin(Layout::Flat, call);
    CChartObj3D* const band = c.NewObject();
    band->ReferenceBand3D(axis, from, to, PLANE_MIN_Y, options.color.value_or(c.theme.grid));
    c.AddEntry(band, options.name);
    return {band};
}

}  // namespace

Objects Chart::Text(const Values& x, const Values& y, const std::vector<std::string>& texts,
                    const TextOptions& options) {
    Impl& c = *m_Impl;
    const auto [xs, ys] = c.TakeFlat(x, y, "Text");
    return AddTexts(c, c.InLayer(xs, ys), texts, options, "Text");
}

Objects Chart::Text3D(const Values& x, const Values& y, const Values& z,
                      const std::vector<std::string>& texts, const TextOptions& options) {
    Impl& c = *m_Impl;
    return AddTexts(c, c.TakeSpatial(x, y, z, "Text3D"), texts, options, "Text3D");
}

Objects Chart::Arrows(const Values& x, const Values& y, const Values& dx, const Values& dy,
                      const LineOptions& options) {
    Impl& c = *m_Impl;
    const auto [xs, ys] = c.TakeFlat(x, y, "Arrows");
    if (c.axes[kX].kind == DataKind::Dates) c.room = c.room.value_or(0.0);
    RequireCount(dx, xs.size(), "Arrows", "dx");
    RequireCount(dy, xs.size(), "Arrows", "dy");
    const std::vector<double> none(xs.size());
    return AddArrows(c, c.InLayer(xs, ys), detail::Joined(dx.Numbers(), none, dy.Numbers()),
                     options, true);
}

Objects Chart::Arrows3D(const Values& x, const Values& y, const Values& z, const Values& dx,
                        const Values& dy, const Values& dz, const LineOptions& options) {
    Impl& c = *m_Impl;
    const std::vector<point3Dtype> points = c.TakeSpatial(x, y, z, "Arrows3D");
    RequireCount(dx, points.size(), "Arrows3D", "dx");
    RequireCount(dy, points.size(), "Arrows3D", "dy");
    RequireCount(dz, points.size(), "Arrows3D", "dz");
    return AddArrows(c, points, detail::Joined(dx.Numbers(), dy.Numbers(), dz.Numbers()), options,
                     false);
}

Objects Chart::LineAtX(double x, const LineOptions& options) {
    return AddLine(*m_Impl, kX, x, options, "LineAtX");
}

Objects Chart::LineAtY(double y, const LineOptions& options) {
    return AddLine(*m_Impl, kValue, y, options, "LineAtY");
}

Objects Chart::BandAtX(double from, double to, const BandOptions& options) {
    return AddBand(*m_Impl, kX, from, to, options, "BandAtX");
}

Objects Chart::BandAtY(double from, double to, const BandOptions& options) {
    return AddBand(*m_Impl, kValue, from, to, options, "BandAtY");
}

}  // namespace varnel::plot
