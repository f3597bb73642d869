#include "varnel/legend/legend_object.h"

#include <algorithm>
#include <cmath>

#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/chart_types.h"
#include "varnel/chartobj/detail/symbol_pen.h"
#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/legend/detail/legend_painter.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

/// Height of a rectangle in ems; about that of capitals.
constexpr double kRectangleHeight = 0.8;

bool IsSymbol(int code) {
    return code >= SYMBOL_CUBE && code <= SYMBOL_ARROW;
}

detail::ChartSample SampleOf(const CChartObj3D& object) {
    const detail::ChartType* const type = detail::ChartTypes::Find(object.GetChartType());
    return type != nullptr ? type->sample : detail::ChartSample::Fill;
}

/// Whether the groups of a chart stand on each other.
bool IsPile(const CChartObj3D& object) {
    const int type = object.GetChartType();
    return type == GROUPAREAFILLCHART25D || type == GROUPRIBBONCHART25D ||
           (type == GROUPBARCHART25D && object.GetGroupType() == GROUPS_STACKED);
}

/// Whether markers stand at the points of a type.
bool HasMarkers(int type) {
    return type == LINECHART25D || type == LINECHART3D || type == SCATTERCHART3D;
}

}  // namespace

int CLegendObj3D::nSelfID = 0;

CLegendObj3D::CLegendObj3D() {
    InitLegendObjDefaults();
}

void CLegendObj3D::InitLegendObjDefaults() {
    m_Saved = {};
    m_Added = {};
    detail::Count(nSelfID);
}

void CLegendObj3D::SetLineSample(int style, double width, const RGBDType& color) {
    m_Saved.m_SampleType = LEGEND_LINE;
    m_Saved.m_LineStyle = style;
    m_Saved.m_LineWidth = width;
    m_Saved.m_FillColor = color;
}

void CLegendObj3D::SetRectangleSample(const RGBDType& fill, const RGBDType& outline) {
    m_Saved.m_SampleType = LEGEND_RECTANGLE;
    m_Saved.m_FillColor = fill;
    m_Saved.m_OutlineColor = outline;
}

void CLegendObj3D::SetSymbolSample(int symbol, const RGBDType& fill, const RGBDType& outline) {
    m_Saved.m_SampleType = LEGEND_SYMBOL;
    m_Saved.m_Symbol = symbol;
    m_Saved.m_FillColor = fill;
    m_Saved.m_OutlineColor = outline;
}

void CLegendObj3D::SetMarker(int kind, double size, const RGBDType& fill, const RGBDType& outline,
                             double outlineWidth) {
    m_Added.marker = kind;
    m_Added.markerSize = size;
    m_Added.markerFill = fill;
    m_Added.markerOutline = outline;
    m_Added.markerOutlineWidth = outlineWidth;
}

void CLegendObj3D::SetLineLook(int joins, int styleFactor) {
    m_Added.lineJoins = joins;
    m_Added.lineStyleFactor = styleFactor;
}

void CLegendObj3D::TakeMarker(const CChartObj3D& object) {
    if (object.GetMarker() == MARKER_NONE || !HasMarkers(object.GetChartType())) return;
    if (object.GetChartType() == SCATTERCHART3D)
        SetSymbolSample(SYMBOL_NONE, object.GetFillColor(), object.GetOutlineColor());
    SetMarker(object.GetMarker(), object.GetMarkerSize(), object.GetFillColor(),
              object.GetOutlineColor(), object.GetMarkerOutlineWidth());
}

void CLegendObj3D::TakeLine(const CChartObj3D& object, const RGBDType& color) {
    SetLineSample(object.GetLineStyle(), object.GetLineWidth(), color);
    SetLineLook(object.GetLineJoins(), object.GetLineStyleFactor());
}

void CLegendObj3D::TakeFill(const CChartObj3D& object, const RGBDType& color) {
    SetRectangleSample(color, object.GetOutlineColor());
}

void CLegendObj3D::TakeSymbol(const CChartObj3D& object, int symbol, const RGBDType& color) {
    if (IsSymbol(symbol))
        SetSymbolSample(symbol, color, object.GetOutlineColor());
    else  // the lines from the points to their projections are all that is drawn
        SetLineSample(object.GetLineStyle(), 1.0, color);
}

void CLegendObj3D::TakePriceGroup(const CChartObj3D& object, int group) {
    const RGBDType color = object.GroupColor(static_cast<std::size_t>(group));
    if (group == 0)
        TakeSymbol(object, object.GetSymbol(), color);
    else if (group == 3)
        TakeSymbol(object, object.GetSymbol2(), color);
    else
        TakeFill(object, color);
}

void CLegendObj3D::TakeBoxPart(const CChartObj3D& object, int part) {
    const RGBDType color = object.GroupColor(static_cast<std::size_t>(part));
    if (part == 1 || part == 3)
        TakeFill(object, color);
    else if (part == 5)
        TakeSymbol(object, object.GetSymbol(), color);
    else
        TakeLine(object, color);
}

void CLegendObj3D::InitLegendObj(const CChartObj3D* object) {
    detail::Require(object, ERR3D_PARAMETER, {ERR3DCLASS_LEGENDOBJ3D, "InitLegendObj"});
    m_Saved.m_ColorMode = object->GetColorMode();
    m_Saved.m_OutlineMode = object->GetOutlineMode();
    m_Saved.m_OutlineWidth = object->GetOutlineWidth();
    if (object->GetTransform() != nullptr)
        m_Saved.m_Rotation = object->GetTransform()->GetRotation();
    switch (SampleOf(*object)) {
        case detail::ChartSample::OutlineLine:
            TakeLine(*object, object->GetOutlineColor());
            break;
        case detail::ChartSample::Line:
            TakeLine(*object, object->GetFillColor());
            break;
        case detail::ChartSample::Symbol:
            TakeSymbol(*object, object->GetSymbol(), object->GetFillColor());
            break;
        case detail::ChartSample::Prices:
            TakeLine(*object, object->GetLineColor());
            break;
        case detail::ChartSample::Contour:
            SetLineSample(0, 1.0, object->GetContourColor(0));
            break;
        case detail::ChartSample::Box:
            TakeBoxPart(*object, 1);
            break;
        case detail::ChartSample::GroupFill:
            TakeFill(*object, object->GroupColor(0));
            break;
        case detail::ChartSample::PlainFill:
            m_Saved.m_OutlineMode = 0;
            [[fallthrough]];
        case detail::ChartSample::Fill:
            TakeFill(*object, object->GetFillColor());
            break;
    }
    TakeMarker(*object);
}

void CLegendObj3D::InitLegendObj(const CChartObj3D* object, int group) {
    InitLegendObj(object);
    m_Added.pile = 0;
    if (group < 0 || group >= object->GetNumGroups()) return;
    const detail::ChartSample sample = SampleOf(*object);
    if (sample == detail::ChartSample::Prices) TakePriceGroup(*object, group);
    if (sample == detail::ChartSample::Box) TakeBoxPart(*object, group);
    if (sample == detail::ChartSample::GroupFill)
        TakeFill(*object, object->GroupColor(static_cast<std::size_t>(group)));
    if (IsPile(*object)) m_Added.pile = group + 1;
}

void CLegendObj3D::DrawSample(detail::LegendPainter& painter,
                              const detail::LegendRect& place) const {
    switch (m_Saved.m_SampleType) {
        case LEGEND_LINE:
            painter.Line(place, {m_Saved.m_LineStyle, m_Saved.m_LineWidth, m_Saved.m_FillColor,
                                 m_Added.lineJoins, m_Added.lineStyleFactor});
            break;
        case LEGEND_RECTANGLE: {
            detail::LegendRect rect = place;
            rect.height = std::min(std::round(kRectangleHeight * painter.GetEm()), place.height);
            rect.y = std::round(place.y + (place.height - rect.height) / 2);
            painter.FillRect(rect, m_Saved.m_FillColor);
            if (m_Saved.m_OutlineMode != 0)
                painter.FrameRect(rect, m_Saved.m_OutlineWidth, m_Saved.m_OutlineColor);
            break;
        }
        case LEGEND_SYMBOL:
            painter.Symbol(place,
                           {m_Saved.m_Symbol, m_Saved.m_ColorMode, m_Saved.m_OutlineMode != 0,
                            m_Saved.m_OutlineWidth, m_Saved.m_FillColor, m_Saved.m_OutlineColor,
                            m_Saved.m_Rotation, m_Saved.m_LightPosition, m_Saved.m_DiffuseLight,
                            m_Saved.m_AmbientLight});
            break;
        default:
            break;
    }
    painter.Marker(place, m_Added.marker, m_Added.markerSize, m_Added.markerOutlineWidth,
                   m_Added.markerFill, m_Added.markerOutline);
}

void CLegendObj3D::VisitAdded(detail::AddedFields& fields) {
    fields.Of(m_Added, [](auto field) {
        field("marker", &Added::marker);
        field("markerSize", &Added::markerSize);
        field("markerFill", &Added::markerFill);
        field("markerOutline", &Added::markerOutline);
        field("markerOutlineWidth", &Added::markerOutlineWidth);
        field("lineJoins", &Added::lineJoins);
        field("lineStyleFactor", &Added::lineStyleFactor);
        field("pile", &Added::pile);
    });
}

template <class Archive>
void CLegendObj3D::Record(Archive& record) {
    record(detail::CounterField{nSelfID}, m_Saved.m_String, m_Saved.m_SampleType,
           m_Saved.m_LineStyle, m_Saved.m_Symbol, m_Saved.m_ColorMode, m_Saved.m_OutlineMode,
           m_Saved.m_Enable, m_Saved.m_LineWidth, m_Saved.m_OutlineWidth, m_Saved.m_FillColor,
           m_Saved.m_OutlineColor, m_Saved.m_Rotation, m_Saved.m_LightPosition,
           m_Saved.m_DiffuseLight, m_Saved.m_AmbientLight);
}

void CLegendObj3D::Save(HANDLE file) {
    detail::SaveRecord(*this, file, ERR3DCLASS_LEGENDOBJ3D);
}
void CLegendObj3D::Load(HANDLE file) {
    detail::LoadRecord(*this, file, ERR3DCLASS_LEGENDOBJ3D);
}

}  // namespace varnel
