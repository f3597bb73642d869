// The object's record in a chart file.
#include <algorithm>
#include <utility>
#include <vector>

#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/chartobj/detail/chart_types.h"
#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/surface/polysurface.h"

namespace varnel {
namespace {

using detail::RecordReader;
using detail::RecordWriter;
using Saved = detail::ChartObjectSaved;

constexpr CErr3DClass kClass = ERR3DCLASS_CHARTOBJ3D;

template <class T>
int StoredCount(const SharedArray<T>& array, long long count) {
    return static_cast<int>(array.First(count).size());
}

// Whether an array of `count` elements can follow. Once bytes were missing, what is left of the
// file belongs to the array that could not be read.
bool CanRead(RecordReader& record, long long count, std::size_t elementSize) {
    return count != 0 && !record.GetFile().RanDry() && record.Has(count, elementSize);
}

void Skip(File& file, std::uint64_t size) {
    BYTE bytes[4096];
    while (size > 0) {
        const std::uint64_t part = std::min<std::uint64_t>(size, sizeof bytes);
        if (file.Read(bytes, static_cast<std::size_t>(part)) < part) return;
        size -= part;
    }
}

// An array of `count` elements, all of which are written.
template <class T>
bool ArrayField(RecordWriter& record, const SharedArray<T>& array, long long count, long long) {
    const auto elements = array.First(count);
    record.Array(elements.data(), elements.size());
    return true;
}

// An array of `count` elements in the file, of which at most `kept` are stored. An array that is
// not wholly there, or for which there is no memory, is passed over. Returns whether it was stored.
template <class T>
bool ArrayField(RecordReader& record, SharedArray<T>& array, long long count, long long kept) {
    if (!CanRead(record, count, sizeof(T))) return false;
    const auto size = static_cast<std::size_t>(std::clamp(kept, 0LL, count));
    const std::uint64_t rest = (static_cast<std::uint64_t>(count) - size) * sizeof(T);
    try {
        array = SharedArray<T>(std::shared_ptr<T[]>(std::make_unique<T[]>(size)), size);
    } catch (const std::bad_alloc&) {
        Skip(record.GetFile(), static_cast<std::uint64_t>(count) * sizeof(T));
        return false;
    }
    record.Array(array.All().data(), size);
    Skip(record.GetFile(), rest);
    return true;
}

void StringsField(RecordWriter& record, const SharedArray<CString>& strings, int count, int) {
    for (const CString& s : strings.First(count))
        record(s);
}

// As many strings as the file has of `count`, of which at most `kept` are stored.
void StringsField(RecordReader& record, SharedArray<CString>& strings, int count, int kept) {
    std::vector<CString> read;
    for (int i = 0; i < count && CanRead(record, 1, sizeof(std::int32_t)); ++i) {
        CString s;
        record(s);
        if (i < kept) read.push_back(std::move(s));
    }
    if (count <= 0) return;
    std::unique_ptr<CString[]> elements = std::make_unique<CString[]>(read.size());
    std::move(read.begin(), read.end(), elements.get());
    strings = SharedArray<CString>(std::shared_ptr<CString[]>(std::move(elements)), read.size());
}

// Grouped data with rows of another length; what is not stored is no data.
SharedArray<double> WithRowsOf(const detail::GroupView& groups, std::size_t numPoints) {
    const std::size_t numGroups = groups.StoredGroups();
    const std::size_t size = numGroups * numPoints;
    std::unique_ptr<double[]> values =
        detail::NewArray<double>(static_cast<long long>(size), {kClass, "Save"});
    for (std::size_t g = 0; g < numGroups; ++g)
        for (std::size_t i = 0; i < numPoints; ++i)
            values[g * numPoints + i] = groups.At(g, i);
    return {std::shared_ptr<double[]>(std::move(values)), size};
}

// What an earlier set-up left behind must not take the place of the current type's data, since a
// record has room for either. Where the current type has none, what was stored by hand is kept.
void MatchCountsToType(Saved& s) {
    const detail::ChartType* const type = detail::ChartTypes::Find(s.m_ChartType);
    if (type == nullptr) return;
    using detail::ChartData;
    const bool series = type->data == ChartData::Series && s.m_pIndData && s.m_pDepData;
    const bool groups = type->data == ChartData::Groups && s.m_pIndData && s.m_pGroupData;
    const bool points = type->data == ChartData::Points && s.m_p3DPoints;
    if (series || groups) s.m_Num3DPoints = 0;
    if (series) s.m_NumGroups = 0;
    // Contour values lie where the independent data do, and leave no points when they are read.
    if ((series || groups || points) && s.m_bPolysurface != 0) s.m_NumContours = 0;
    // Contour colours lie where segment colours do.
    if (type->data == ChartData::Contours) s.m_NumSegmentColors = 0;
}

// The reader goes by the counts alone, so they must tell what is there.
void MatchCountsToStorages(Saved& s) {
    s.m_Num3DPoints = StoredCount(s.m_p3DPoints, s.m_Num3DPoints);
    s.m_NumDepData2 = StoredCount(s.m_pDepData2, s.m_NumDepData2);
    s.m_NumBarHeights = StoredCount(s.m_pBarHeights, s.m_NumBarHeights);
    s.m_NumGroupColors = StoredCount(s.m_pGroupColors, s.m_NumGroupColors);
    s.m_NumSegmentColors = StoredCount(s.m_pSegmentColors, s.m_NumSegmentColors);
    s.m_NumDataStrings = StoredCount(s.m_pDataStrings, s.m_NumDataStrings);
    s.m_bPolysurface = s.m_bPolysurface != 0 && s.m_pPolysurface != nullptr;
    if (s.m_bPolysurface != 0)
        s.m_NumContours =
            std::min(StoredCount(s.m_pIndData, s.m_NumContours),
                     std::max(StoredCount(s.m_pSegmentColors, s.m_NumContours + 1LL) - 1, 0));
    if (s.m_Num3DPoints != 0) {
        s.m_NumDataPnts = StoredCount(s.m_p3DPoints, s.m_NumDataPnts);
        return;
    }
    int numPoints = StoredCount(s.m_pIndData, s.m_NumDataPnts);
    if (numPoints != 0 && s.m_NumGroups != 0) {
        const detail::GroupView groups = detail::GroupsOf(s);
        const std::size_t numGroups = groups.StoredGroups();
        if (numPoints != s.m_NumDataPnts || groups.values.size() < groups.numPoints * numGroups)
            s.m_pGroupData = WithRowsOf(groups, static_cast<std::size_t>(numPoints));
        s.m_NumGroups = static_cast<int>(numGroups);
    }
    if (s.m_NumGroups == 0) numPoints = StoredCount(s.m_pDepData, numPoints);
    s.m_NumDataPnts = numPoints;
}

template <class Archive>
void RecordSurface(Archive& record, Saved& s) {
    File& file = record.GetFile();
    if constexpr (Archive::kLoading) {
        if (file.RanDry()) return;
        s.m_pPolysurface =
            detail::AllocateOrRaise(ERR3D_ARRAY_NEW, {kClass, "InitPolysurfaceStorage"},
                                    [&file] { return std::make_shared<CPolysurface>(&file); });
    } else {
        s.m_pPolysurface->Save(&file);
    }
    if (s.m_NumContours == 0) return;
    const int numContours = s.m_NumContours;
    ArrayField(record, s.m_pIndData, numContours, numContours);
    // The values take the place of the independent data, which leaves no points.
    if constexpr (Archive::kLoading) s.m_NumDataPnts = 0;
    ArrayField(record, s.m_pSegmentColors, numContours + 1LL, numContours + 1LL);
}

template <class Archive>
void RecordArrays(Archive& record, Saved& s) {
    const int n = s.m_NumDataPnts;
    if (s.m_Num3DPoints == 0) {
        ArrayField(record, s.m_pIndData, n, n);
        if (s.m_NumGroups == 0) {
            ArrayField(record, s.m_pDepData, n, n);
        } else {
            const bool negative = n < 0 || s.m_NumGroups < 0;
            const long long count = negative ? -1 : static_cast<long long>(s.m_NumGroups) * n;
            ArrayField(record, s.m_pGroupData, count, count);
        }
        if (ArrayField(record, s.m_pDepData2, s.m_NumDepData2, n) && Archive::kLoading)
            s.m_NumDepData2 = n;
        if (ArrayField(record, s.m_pBarHeights, s.m_NumBarHeights, n) && Archive::kLoading)
            s.m_NumBarHeights = n;
    } else if (ArrayField(record, s.m_p3DPoints, n, n) && Archive::kLoading) {
        s.m_Num3DPoints = n;
    }
    if (ArrayField(record, s.m_pGroupColors, s.m_NumGroupColors, s.m_NumGroups) &&
        Archive::kLoading)
        s.m_NumGroupColors = s.m_NumGroups;
    // One colour more than points is the area range colour behind them.
    const bool hasRangeColor = s.m_NumSegmentColors == n + 1LL;
    if (ArrayField(record, s.m_pSegmentColors, s.m_NumSegmentColors, n + 1LL) &&
        Archive::kLoading) {
        s.m_SegmentColorMode = 1;
        s.m_NumSegmentColors = hasRangeColor ? n + 1 : n;
    }
    if (s.m_bPolysurface != 0) RecordSurface(record, s);
    StringsField(record, s.m_pDataStrings, s.m_NumDataStrings, s.m_NumDataPnts);
    if (Archive::kLoading && s.m_NumDataStrings != 0) s.m_NumDataStrings = s.m_NumDataPnts;
}

}  // namespace

template <class Archive>
void CChartObj3D::Record(Archive& record) {
    Saved& s = m_Saved;
    record(detail::CounterField{nSelfID}, m_TransformID);
    record(s.m_ConstValue, s.m_BaseValue, s.m_RelSize, s.m_DepthWidth, s.m_IndWidth, s.m_FillGap,
           s.m_PlaneThicknessFactor, s.m_OutlineWidth);
    record(s.m_FillColor, s.m_OutlineColor, s.m_LineColor);
    record(s.m_Symbol, s.m_Symbol2, s.m_NumDataPnts, s.m_NumDepData2, s.m_NumBarHeights,
           s.m_Num3DPoints, s.m_NumGroupColors, s.m_NumSegmentColors, s.m_NumDataStrings,
           s.m_bPolysurface, s.m_NumGroups, s.m_LineWidth, s.m_LineStyle, s.m_IndJustify,
           s.m_DepJustify, s.m_DepthJustify, s.m_IndAxis, s.m_ProjectionPlane, s.m_TextPlane,
           s.m_GroupType, s.m_ChartType);
    record(s.m_SegmentColorMode, s.m_NumContours, s.m_ContourLabelFlag, s.m_ColorMode, s.m_Clipping,
           s.m_OutlineMode);
    record(s.m_ComboChartFlags, s.m_Enable);
    RecordArrays(record, s);
}

void CChartObj3D::VisitAdded(detail::AddedFields& fields) {
    using Added = detail::ChartObjectAdded;
    fields.Of(m_Added, [](auto field) {
        field("exactExtents", &Added::m_ExactExtents);
        field("segmentOutlines", &Added::m_SegmentOutlines);
        field("candleStyle", &Added::m_CandleStyle);
        field("contours", &Added::m_Contours);
        field("contourLineWidth", &Added::m_ContourLineWidth);
        field("contourLineStyle", &Added::m_ContourLineStyle);
        field("contourOnSurface", &Added::m_ContourOnSurface);
        field("contourLabels", &Added::m_ContourLabels);
        field("contourLabelSize", &Added::m_ContourLabelSize);
        field("contourLabelSpacing", &Added::m_ContourLabelSpacing);
        field("errorsBelow", &Added::m_ErrorsBelow);
        field("errorsAbove", &Added::m_ErrorsAbove);
        field("components", &Added::m_Components);
        field("vectorScale", &Added::m_VectorScale);
        field("flatHeads", &Added::m_FlatHeads);
        field("shading", &Added::m_Shading);
        field("creaseAngle", &Added::m_CreaseAngle);
        field("twoSided", &Added::m_TwoSided);
        field("textureLighting", &Added::m_TextureLighting);
        field("textureLeast", &Added::m_TextureLeast);
        field("textureMost", &Added::m_TextureMost);
        field("marker", &Added::m_Marker);
        field("markerSize", &Added::m_MarkerSize);
        field("lineJoins", &Added::m_LineJoins);
        field("mitreLimit", &Added::m_MitreLimit);
        field("lineStyleFactor", &Added::m_LineStyleFactor);
        field("textHalo", &Added::m_TextHalo);
        field("textHaloColor", &Added::m_TextHaloColor);
        field("textBeside", &Added::m_TextBeside);
        field("medianWidth", &Added::m_MedianWidth);
    });
    fields.Object("surface", m_Saved.m_pPolysurface.get());
}

void CChartObj3D::Save(HANDLE file) {
    if (file == nullptr) return;
    CChartObj3D saved(*this);
    if (m_TransformID == 0)
        detail::Diagnose("Save", "the object has no transform; a chart with it cannot be loaded");
    MatchCountsToType(saved.m_Saved);
    MatchCountsToStorages(saved.m_Saved);
    detail::SaveRecord(saved, file, kClass);
}

void CChartObj3D::Load(HANDLE file) {
    detail::LoadRecord(*this, file, kClass);
}

}  // namespace varnel
