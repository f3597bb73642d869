// The object's record in a chart file.
#include <algorithm>
#include <utility>
#include <vector>

#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/surface/polysurface.h"

namespace varnel {
namespace {

using detail::RecordReader;
using detail::RecordWriter;

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
    const auto size = static_cast<long long>(numGroups * numPoints);
    std::unique_ptr<double[]> values = detail::NewArray<double>(size, {kClass, "Save"});
    for (std::size_t g = 0; g < numGroups; ++g)
        for (std::size_t i = 0; i < numPoints; ++i)
            values[g * numPoints + i] = groups.At(g, i);
    return {std::shared_ptr<double[]>(std::move(values)), numGroups * numPoints};
}

}  // namespace

// The reader goes by the counts alone, so they must tell what is there.
void CChartObj3D::MatchCountsToStorages() {
    m_Num3DPoints = StoredCount(m_p3DPoints, m_Num3DPoints);
    m_NumDepData2 = StoredCount(m_pDepData2, m_NumDepData2);
    m_NumBarHeights = StoredCount(m_pBarHeights, m_NumBarHeights);
    m_NumGroupColors = StoredCount(m_pGroupColors, m_NumGroupColors);
    m_NumSegmentColors = StoredCount(m_pSegmentColors, m_NumSegmentColors);
    m_NumDataStrings = StoredCount(m_pDataStrings, m_NumDataStrings);
    m_bPolysurface = m_bPolysurface != 0 && m_pPolysurface != nullptr;
    if (m_bPolysurface != 0)
        m_NumContours =
            std::min(StoredCount(m_pIndData, m_NumContours),
                     std::max(StoredCount(m_pSegmentColors, m_NumContours + 1LL) - 1, 0));
    if (m_Num3DPoints != 0) {
        m_NumDataPnts = StoredCount(m_p3DPoints, m_NumDataPnts);
        return;
    }
    int numPoints = StoredCount(m_pIndData, m_NumDataPnts);
    if (numPoints != 0 && m_NumGroups != 0) {
        const detail::GroupView groups = GetGroups();
        const std::size_t numGroups = groups.StoredGroups();
        if (numPoints != m_NumDataPnts || groups.values.size() < groups.numPoints * numGroups)
            m_pGroupData = WithRowsOf(groups, static_cast<std::size_t>(numPoints));
        m_NumGroups = static_cast<int>(numGroups);
    }
    if (m_NumGroups == 0) numPoints = StoredCount(m_pDepData, numPoints);
    m_NumDataPnts = numPoints;
}

template <class Archive>
void CChartObj3D::Record(Archive& record) {
    record(detail::CounterField{nSelfID}, m_TransformID);
    record(m_ConstValue, m_BaseValue, m_RelSize, m_DepthWidth, m_IndWidth, m_FillGap,
           m_PlaneThicknessFactor, m_OutlineWidth);
    record(m_FillColor, m_OutlineColor, m_LineColor);
    record(m_Symbol, m_Symbol2, m_NumDataPnts, m_NumDepData2, m_NumBarHeights, m_Num3DPoints,
           m_NumGroupColors, m_NumSegmentColors, m_NumDataStrings, m_bPolysurface, m_NumGroups,
           m_LineWidth, m_LineStyle, m_IndJustify, m_DepJustify, m_DepthJustify, m_IndAxis,
           m_ProjectionPlane, m_TextPlane, m_GroupType, m_ChartType);
    record(m_SegmentColorMode, m_NumContours, m_ContourLabelFlag, m_ColorMode, m_Clipping,
           m_OutlineMode);
    record(m_ComboChartFlags, m_Enable);
    RecordArrays(record);
}

template <class Archive>
void CChartObj3D::RecordArrays(Archive& record) {
    const int n = m_NumDataPnts;
    if (m_Num3DPoints == 0) {
        ArrayField(record, m_pIndData, n, n);
        if (m_NumGroups == 0) {
            ArrayField(record, m_pDepData, n, n);
        } else {
            const bool negative = n < 0 || m_NumGroups < 0;
            const long long count = negative ? -1 : static_cast<long long>(m_NumGroups) * n;
            ArrayField(record, m_pGroupData, count, count);
        }
        if (ArrayField(record, m_pDepData2, m_NumDepData2, n) && Archive::kLoading)
            m_NumDepData2 = n;
        if (ArrayField(record, m_pBarHeights, m_NumBarHeights, n) && Archive::kLoading)
            m_NumBarHeights = n;
    } else if (ArrayField(record, m_p3DPoints, n, n) && Archive::kLoading) {
        m_Num3DPoints = n;
    }
    if (ArrayField(record, m_pGroupColors, m_NumGroupColors, m_NumGroups) && Archive::kLoading)
        m_NumGroupColors = m_NumGroups;
    // One colour more than points is the area range colour behind them.
    const bool hasRangeColor = m_NumSegmentColors == n + 1LL;
    if (ArrayField(record, m_pSegmentColors, m_NumSegmentColors, n + 1LL) && Archive::kLoading) {
        m_SegmentColorMode = 1;
        m_NumSegmentColors = hasRangeColor ? n + 1 : n;
    }
    if (m_bPolysurface != 0) RecordSurface(record);
    StringsField(record, m_pDataStrings, m_NumDataStrings, m_NumDataPnts);
    if (Archive::kLoading && m_NumDataStrings != 0) m_NumDataStrings = m_NumDataPnts;
}

template <class Archive>
void CChartObj3D::RecordSurface(Archive& record) {
    File& file = record.GetFile();
    if constexpr (Archive::kLoading) {
        if (file.RanDry()) return;
        m_pPolysurface =
            detail::AllocateOrRaise(ERR3D_ARRAY_NEW, {kClass, "InitPolysurfaceStorage"},
                                    [&file] { return std::make_shared<CPolysurface>(&file); });
    } else {
        m_pPolysurface->Save(&file);
    }
    if (m_NumContours == 0) return;
    const int numContours = m_NumContours;
    ArrayField(record, m_pIndData, numContours, numContours);
    // The values take the place of the independent data, which leaves no points.
    if constexpr (Archive::kLoading) m_NumDataPnts = 0;
    ArrayField(record, m_pSegmentColors, numContours + 1LL, numContours + 1LL);
}

void CChartObj3D::VisitAdded(detail::AddedFields& fields) {
    fields.Object("surface", m_pPolysurface.get());
}

void CChartObj3D::Save(HANDLE file) {
    if (file == nullptr) return;
    CChartObj3D saved(*this);
    saved.MatchCountsToStorages();
    detail::SaveRecord(saved, file, kClass);
}

void CChartObj3D::Load(HANDLE file) {
    detail::LoadRecord(*this, file, kClass);
}

}  // namespace varnel
