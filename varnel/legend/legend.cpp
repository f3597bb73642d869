// CLegend3D: construction, entries, scale and record.
#include "varnel/legend/legend.h"

#include <algorithm>

#include "varnel/axes/text_object.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/legend/detail/color_axis.h"
#include "varnel/legend/detail/legend_scale.h"
#include "varnel/legend/detail/legend_view.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

constexpr int kMostColors = 256;

detail::Origin At(const char* operation) {
    return {ERR3DCLASS_LEGEND3D, operation};
}

/// An array behind its count. An array that the file does not have is left out, which the file
/// remembers.
template <class T, class Archive>
void RecordVector(Archive& record, std::vector<T>& items) {
    auto count = static_cast<std::int32_t>(items.size());
    record(count);
    if constexpr (Archive::kLoading) {
        items.clear();
        if (!record.Has(count, sizeof(T))) return;
        detail::AllocateOrRaise(ERR3D_ARRAY_NEW, At("Load"),
                                [&] { items.resize(static_cast<std::size_t>(count)); });
    }
    record.Array(items.data(), items.size());
}

}  // namespace

int CLegend3D::nSelfID = 0;

CLegend3D::CLegend3D() {
    InitLegendDefaults();
}

CLegend3D::~CLegend3D() {
    m_Signature = 0;
}

void CLegend3D::InitLegendDefaults() {
    m_Saved = {};
    m_Added = {};
    m_ChartEm = 0.0;
    m_PlotArea = {};
    m_pDataPlaces = nullptr;
    m_Viewport = {};
    DeleteLegendObjs();
    detail::Count(nSelfID);
}

void CLegend3D::Bind(COpenGL& gl, std::unique_ptr<detail::LegendView> view) {
    auto transform = detail::NewObject<CTransform3D>(At("InitLegend3D"), &gl);
    auto text = detail::NewObject<CTextObj3D>(At("InitLegend3D"));
    text->InitTextObj(&gl, gl.GetFont(), transform.get());
    m_pText = std::move(text);
    m_pTransform = std::move(transform);
    m_pView = std::move(view);
    m_pOpenGL = &gl;
}

void CLegend3D::SetLegendPosition(const GLViewRType& position) {
    m_Saved.m_Position = position;
    m_Saved.m_Place = LEGEND_AT_POSITION;
}

void CLegend3D::SetDataPlaces(std::span<const point3Dtype> places) {
    m_pDataPlaces = std::make_shared<std::vector<point3Dtype>>(places.begin(), places.end());
}

void CLegend3D::SetLegendSize(double width, double height) {
    m_Saved.m_Position.width = width;
    m_Saved.m_Position.height = height;
}

CLegendObj3D* CLegend3D::NewLegendObj() {
    return m_LegendObjs.Append(detail::NewObject<CLegendObj3D>(At("NewLegendObj")));
}

CLegendObj3D* CLegend3D::AddChartObj(const CChartObj3D* object, const CString& text) {
    detail::Require(object, ERR3D_PARAMETER, At("AddChartObj"));
    CLegendObj3D* const entry = NewLegendObj();
    entry->InitLegendObj(object);
    if (m_pView != nullptr) m_pView->LendLight(object, *entry);
    entry->SetString(text);
    return entry;
}

void CLegend3D::AddGroups(const CChartObj3D* object, const CString* names) {
    detail::Require(object, ERR3D_PARAMETER, At("AddGroups"));
    for (int group = 0; group < object->GetNumGroups(); ++group) {
        const CString name = names != nullptr ? names[group] : std::to_string(group + 1);
        if (name.empty()) continue;
        AddChartObj(object, name)->InitLegendObj(object, group);
    }
}

void CLegend3D::AddGroups(const CChartObj3D* object, std::span<const CString> names) {
    const detail::Origin here = At("AddGroups");
    detail::Require(object, ERR3D_PARAMETER, here);
    const auto groups = static_cast<std::size_t>(std::max(object->GetNumGroups(), 0));
    if (!names.empty() && names.size() != groups)
        detail::Raise(ERR3D_PARAMETER, here.cls, here.operation,
                      detail::Say("there are ", names.size(), " names for ", groups, " groups"));
    AddGroups(object, names.empty() ? nullptr : names.data());
}

void CLegend3D::SetContours(const CChartObj3D* object, int bands, int format, int decimals) {
    detail::Require(object, ERR3D_PARAMETER, At("SetContours"));
    // The accessors of levels and colours count by the data points, of which a contour chart has
    // none; a copy shares the arrays.
    CChartObj3D contours = *object;
    const int n = std::max(object->GetNumContours(), 0);
    contours.SetNumDataPnts(n);
    std::vector<double> levels;
    std::vector<RGBDType> colors;
    for (int i = 0; i <= n; ++i) {
        if (i < n) levels.push_back(contours.GetIndData(i));
        colors.push_back(contours.GetContourColor(i));
    }
    if (bands == 0) {
        AddContourLines(levels, colors, format, decimals);
        return;
    }
    DeleteScale();
    m_Saved.m_ScaleType = LEGEND_CONTOUR_BANDS;
    m_Saved.m_ScaleValues = std::move(levels);
    m_Saved.m_ScaleColors = std::move(colors);
    SetScaleFormat(format, decimals);
}

void CLegend3D::AddContourLines(const std::vector<double>& levels,
                                const std::vector<RGBDType>& colors, int format, int decimals) {
    const detail::LegendScale texts =
        detail::ContourScale(levels, colors, {format, decimals, m_Saved.m_EngString, 0.0});
    for (std::size_t i = texts.labels.size(); i-- > 0;) {
        CLegendObj3D* const entry = NewLegendObj();
        entry->SetLineSample(0, 1.0, colors[i]);
        entry->SetString(texts.labels[i].text);
    }
}

void CLegend3D::SetColorBar(const RGBDType* colors, int n, double min, double max) {
    DeleteScale();
    if (colors == nullptr || n < 1 || n > kMostColors) return;
    m_Saved.m_ScaleType = LEGEND_COLOR_BAR;
    m_Saved.m_ScaleValues = {min, max};
    m_Saved.m_ScaleColors.assign(colors, colors + n);
}

void CLegend3D::SetColorBar(std::span<const RGBDType> colors, double min, double max) {
    const detail::Origin here = At("SetColorBar");
    if (colors.size() > kMostColors)
        detail::Raise(ERR3D_PARAMETER, here.cls, here.operation,
                      detail::Say(colors.size(), " colours are more than ", kMostColors));
    SetColorBar(colors.data(), static_cast<int>(colors.size()), min, max);
}

void CLegend3D::SetColorBar(const ColorScale& scale) {
    const std::vector<RGBDType> colors = scale.Colors();
    SetColorBar(colors.data(), static_cast<int>(colors.size()), scale.min, scale.max);
    m_Added.scaleGiven = 1;
    m_Added.scaleMode = scale.mode;
    m_Added.scaleCenter = scale.center;
    m_Added.scaleBands = scale.bands;
    m_Added.scaleBelow = scale.below ? 1 : 0;
    m_Added.scaleBelowColor = scale.below.value_or(RGBDType{});
    m_Added.scaleAbove = scale.above ? 1 : 0;
    m_Added.scaleAboveColor = scale.above.value_or(RGBDType{});
    SetNoData(scale.showNoData ? std::optional(scale.noData) : std::nullopt);
}

void CLegend3D::SetNoData(const std::optional<RGBDType>& color) {
    m_Added.noData = color ? 1 : 0;
    m_Added.noDataColor = color.value_or(RGBDType{});
}

void CLegend3D::SetColorBands(std::span<const double> levels, std::span<const RGBDType> colors) {
    DeleteScale();
    const bool usable = !levels.empty() && colors.size() <= kMostColors &&
                        (colors.size() == levels.size() + 1 || colors.size() + 1 == levels.size());
    if (!usable) return;
    m_Saved.m_ScaleType = LEGEND_CONTOUR_BANDS;
    m_Saved.m_ScaleValues.assign(levels.begin(), levels.end());
    m_Saved.m_ScaleColors.assign(colors.begin(), colors.end());
}

bool CLegend3D::HasAxis() const {
    return m_Saved.m_ScaleType == LEGEND_COLOR_BAR && m_Saved.m_ScaleValues.size() == 2 &&
           (m_Added.scaleAxis != 0 || m_Added.scaleGiven != 0);
}

detail::LegendScale CLegend3D::MakeColorAxis(double length) const {
    const double min = m_Saved.m_ScaleValues[0];
    const double max = m_Saved.m_ScaleValues[1];
    const bool across = m_Saved.m_ScaleHorizontal != 0 || IsAcross();
    if (m_Added.scaleGiven == 0) {
        detail::LegendScale scale = detail::ColorBarScale(m_Saved.m_ScaleColors, min, max, {});
        scale.labels = detail::ColorAxisLabels(min, max, length, across);
        return scale;
    }
    ColorScale scale;
    scale.min = min;
    scale.max = max;
    scale.mode = m_Added.scaleMode;
    scale.center = m_Added.scaleCenter;
    scale.bands = m_Added.scaleBands;
    if (m_Added.scaleBelow != 0) scale.below = m_Added.scaleBelowColor;
    if (m_Added.scaleAbove != 0) scale.above = m_Added.scaleAboveColor;
    return detail::ColorAxis(scale, m_Saved.m_ScaleColors, length, across);
}

void CLegend3D::DeleteScale() {
    m_Added.scaleGiven = 0;
    m_Added.noData = 0;
    m_Saved.m_ScaleType = LEGEND_NO_SCALE;
    m_Saved.m_ScaleValues.clear();
    m_Saved.m_ScaleColors.clear();
}

void CLegend3D::SetScaleFormat(int format, int decimals) {
    m_Saved.m_ScaleFormat = format;
    m_Saved.m_ScaleDecimals = decimals;
}

detail::LegendScale CLegend3D::MakeScale(double ticSpace) const {
    constexpr double kUsualLength = 12.0;
    if (HasAxis()) return MakeColorAxis(kUsualLength);
    const detail::ScaleFormat format{m_Saved.m_ScaleFormat, m_Saved.m_ScaleDecimals,
                                     m_Saved.m_EngString, ticSpace};
    if (m_Saved.m_ScaleType == LEGEND_CONTOUR_BANDS)
        return detail::ContourScale(m_Saved.m_ScaleValues, m_Saved.m_ScaleColors, format);
    if (m_Saved.m_ScaleType == LEGEND_COLOR_BAR && m_Saved.m_ScaleValues.size() == 2)
        return detail::ColorBarScale(m_Saved.m_ScaleColors, m_Saved.m_ScaleValues[0],
                                     m_Saved.m_ScaleValues[1], format);
    return {};
}

template <class Archive>
void CLegend3D::Record(Archive& record) {
    record(detail::CounterField{nSelfID}, m_Saved.m_LegendEnable, m_Saved.m_Place,
           m_Saved.m_Position, m_Saved.m_Margin, m_Saved.m_Rows, m_Saved.m_Columns,
           m_Saved.m_FontHeightSF, m_Saved.m_Title, m_Saved.m_TextColor);
    record(m_Saved.m_BorderEnable, m_Saved.m_BorderThickness, m_Saved.m_BorderColor,
           m_Saved.m_BkEnable, m_Saved.m_BkColor);
    record(m_Saved.m_ScaleType, m_Saved.m_ScaleHorizontal, m_Saved.m_ScaleLength,
           m_Saved.m_ScaleFormat, m_Saved.m_ScaleDecimals, m_Saved.m_ScaleTicSpace,
           m_Saved.m_EngString);
    RecordVector(record, m_Saved.m_ScaleValues);
    RecordVector(record, m_Saved.m_ScaleColors);
    std::int32_t count = m_LegendObjs.GetCount();
    record(count);
    if constexpr (Archive::kLoading) {
        DeleteLegendObjs();
        for (std::int32_t i = 0; i < count && record.Has(1, 1); ++i)
            NewLegendObj()->Load(&record.GetFile());
    } else {
        for (const auto& entry : m_LegendObjs)
            entry->Save(&record.GetFile());
    }
}

void CLegend3D::VisitAdded(detail::AddedFields& fields) {
    fields.Of(m_Added, [](auto field) {
        field("place", &Added::place);
        field("scale_axis", &Added::scaleAxis);
        field("scale_given", &Added::scaleGiven);
        field("scale_mode", &Added::scaleMode);
        field("scale_center", &Added::scaleCenter);
        field("scale_bands", &Added::scaleBands);
        field("scale_below", &Added::scaleBelow);
        field("scale_below_color", &Added::scaleBelowColor);
        field("scale_above", &Added::scaleAbove);
        field("scale_above_color", &Added::scaleAboveColor);
        field("place_chart", &Added::placeChart);
        field("no_data", &Added::noData);
        field("no_data_color", &Added::noDataColor);
        field("no_data_text", &Added::noDataText);
    });
    fields.List("entry", m_LegendObjs);
}

void CLegend3D::Save(HANDLE file) {
    detail::SaveRecord(*this, file, ERR3DCLASS_LEGEND3D);
}
void CLegend3D::Load(HANDLE file) {
    detail::LoadRecord(*this, file, ERR3DCLASS_LEGEND3D);
}

}  // namespace varnel
