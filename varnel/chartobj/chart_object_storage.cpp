#include <algorithm>
#include <utility>

#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/surface/polysurface.h"

namespace varnel {
namespace {

// An array of `count` elements with the first `given` of them copied from p.
template <class T>
SharedArray<T> CopyArray(const T* p, long long given, long long count, const char* operation) {
    const detail::Origin origin{ERR3DCLASS_CHARTOBJ3D, operation};
    std::unique_ptr<T[]> elements = detail::NewArray<T>(count, origin);
    return detail::AllocateOrRaise(ERR3D_ARRAY_NEW, origin, [&] {
        std::copy_n(p, given, elements.get());
        return SharedArray<T>(std::shared_ptr<T[]>(std::move(elements)),
                              static_cast<std::size_t>(count));
    });
}

// The old array is let go of first, so that its memory can serve the new one.
template <class T>
void Store(SharedArray<T>& slot, const T* p, long long count, const char* operation) {
    if (p == nullptr)
        return detail::Diagnose(operation, "no array is given, so what was stored before stays");
    slot = {};
    slot = CopyArray(p, count, count, operation);
}

}  // namespace

void CChartObj3D::InitIndDataStorage(const double* p) {
    Store(m_Saved.m_pIndData, p, m_Saved.m_NumDataPnts, "InitIndDataStorage");
}

void CChartObj3D::InitDepDataStorage(const double* p) {
    Store(m_Saved.m_pDepData, p, m_Saved.m_NumDataPnts, "InitDepDataStorage");
}

void CChartObj3D::InitGroupDataStorage(const double* p) {
    const bool negative = m_Saved.m_NumGroups < 0 || m_Saved.m_NumDataPnts < 0;
    const long long count = static_cast<long long>(m_Saved.m_NumGroups) * m_Saved.m_NumDataPnts;
    Store(m_Saved.m_pGroupData, p, negative ? -1 : count, "InitGroupDataStorage");
}

void CChartObj3D::InitDepData2Storage(const double* p) {
    Store(m_Saved.m_pDepData2, p, m_Saved.m_NumDataPnts, "InitDepData2Storage");
    if (p != nullptr) m_Saved.m_NumDepData2 = m_Saved.m_NumDataPnts;
}

void CChartObj3D::InitBarHeightsStorage(const double* p) {
    Store(m_Saved.m_pBarHeights, p, m_Saved.m_NumDataPnts, "InitBarHeightsStorage");
    if (p != nullptr) m_Saved.m_NumBarHeights = m_Saved.m_NumDataPnts;
}

void CChartObj3D::Init3DPointStorage(const point3Dtype* p) {
    if (p == nullptr) {
        m_Saved.m_NumDataPnts = 0;
        return;
    }
    m_Saved.m_Num3DPoints = m_Saved.m_NumDataPnts;
    Store(m_Saved.m_p3DPoints, p, m_Saved.m_NumDataPnts, "Init3DPointStorage");
}

void CChartObj3D::InitGroupColorsStorage(const RGBDType* p) {
    Store(m_Saved.m_pGroupColors, p, m_Saved.m_NumGroups, "InitGroupColorsStorage");
    if (p != nullptr) m_Saved.m_NumGroupColors = m_Saved.m_NumGroups;
}

void CChartObj3D::InitSegmentColorsStorage(const RGBDType* p) {
    if (p == nullptr) {
        m_Saved.m_SegmentColorMode = 0;
        return;
    }
    Store(m_Saved.m_pSegmentColors, p, m_Saved.m_NumDataPnts, "InitSegmentColorsStorage");
    m_Saved.m_NumSegmentColors = m_Saved.m_NumDataPnts;
    m_Saved.m_SegmentColorMode = 1;
}

void CChartObj3D::InitSegmentColorsStorage(std::span<const RGBDType> colors) {
    const long long n = m_Saved.m_NumDataPnts;
    if (n < 0 || colors.size() != static_cast<std::size_t>(n))
        detail::Raise(ERR3D_PARAMETER, ERR3DCLASS_CHARTOBJ3D, "InitSegmentColorsStorage",
                      detail::Say("there are ", colors.size(), " colours for ", n, " data points"));
    InitSegmentColorsStorage(colors.data());
}

void CChartObj3D::InitContourValueStorage(const double* p) {
    Store(m_Saved.m_pIndData, p, m_Saved.m_NumContours, "InitContourValueStorage");
}

void CChartObj3D::InitContourColorsStorage(const RGBDType* p) {
    Store(m_Saved.m_pSegmentColors, p, m_Saved.m_NumContours < 0 ? -1 : m_Saved.m_NumContours + 1LL,
          "InitContourColorsStorage");
}

void CChartObj3D::InitPolysurfaceStorage(CPolysurface* surface) {
    if (surface == nullptr)
        return detail::Diagnose("InitPolysurfaceStorage",
                                "no surface is given, so what was stored before stays");
    m_Saved.m_pPolysurface.reset();
    m_Saved.m_pPolysurface =
        detail::AllocateOrRaise(ERR3D_ARRAY_NEW, {ERR3DCLASS_CHARTOBJ3D, "InitPolysurfaceStorage"},
                                [surface] { return std::make_shared<CPolysurface>(surface); });
    m_Saved.m_bPolysurface = 1;
}

void CChartObj3D::InitDataStringsStorage(const CString* p) {
    Store(m_Saved.m_pDataStrings, p, m_Saved.m_NumDataPnts, "InitDataStringsStorage");
    if (p != nullptr) m_Saved.m_NumDataStrings = m_Saved.m_NumDataPnts;
}

void CChartObj3D::SetAreaRangeColor(const RGBDType& color) {
    SharedArray<RGBDType>& colors = m_Saved.m_pSegmentColors;
    const long long n = m_Saved.m_NumDataPnts;
    const auto pointColors = colors.First(n);
    if (!colors || n < 0 || static_cast<long long>(pointColors.size()) < n) return;
    if (colors.At(n, n + 1) == nullptr)
        colors = CopyArray<RGBDType>(pointColors.data(), n, n + 1, "SetAreaRangeColor");
    *colors.At(n, n + 1) = color;
    // The count of what is saved.
    m_Saved.m_NumSegmentColors = m_Saved.m_NumDataPnts + 1;
}

void CChartObj3D::DeleteIndDataStorage() {
    m_Saved.m_pIndData = {};
}

void CChartObj3D::DeleteDepDataStorage() {
    m_Saved.m_pDepData = {};
}

void CChartObj3D::DeleteGroupDataStorage() {
    m_Saved.m_pGroupData = {};
}

void CChartObj3D::DeleteDepData2Storage() {
    m_Saved.m_pDepData2 = {};
}

void CChartObj3D::DeleteBarHeightsStorage() {
    m_Saved.m_pBarHeights = {};
}

void CChartObj3D::DeleteGroupColorsStorage() {
    m_Saved.m_pGroupColors = {};
}

void CChartObj3D::DeleteContourColorsStorage() {
    m_Saved.m_pSegmentColors = {};
}

void CChartObj3D::Delete3DPointStorage() {
    m_Saved.m_p3DPoints = {};
}

void CChartObj3D::DeletePolysurfaceStorage() {
    m_Saved.m_pPolysurface.reset();
}

void CChartObj3D::DeleteDataStringsStorage() {
    m_Saved.m_pDataStrings = {};
}

void CChartObj3D::SetDataStorage25D(const double* ind, const double* dep, const double* dep2,
                                    int n) {
    const detail::CalledOperation call;
    m_Saved.m_NumDataPnts = n;
    InitIndDataStorage(ind);
    // The second array takes the first one's place; SetSeriesStorage stores both.
    InitIndDataStorage(dep);
    if (dep2 == nullptr) return;
    InitDepData2Storage(dep2);
    InitBarHeightsStorage(dep2);
}

void CChartObj3D::SetSeriesStorage(std::span<const double> ind, std::span<const double> dep) {
    const detail::CalledOperation call;
    m_Saved.m_NumDataPnts = detail::CommonCount("SetSeriesStorage", ind, dep);
    InitIndDataStorage(ind.data());
    InitDepDataStorage(dep.data());
}

void CChartObj3D::SetGroupDataStorage(const double* ind, const double* group, int n, int numGroups,
                                      const RGBDType* colors) {
    const detail::CalledOperation call;
    m_Saved.m_NumGroups = numGroups;
    m_Saved.m_NumDataPnts = n;
    InitGroupColorsStorage(colors);
    InitIndDataStorage(ind);
    InitGroupDataStorage(group);
}

void CChartObj3D::SetBarHeightsStorage(const double* heights) {
    const detail::CalledOperation call;
    InitBarHeightsStorage(heights);
}

void CChartObj3D::SetContourStorage(CPolysurface* surface, const double* values,
                                    const RGBDType* colors, int numContours) {
    const detail::CalledOperation call;
    m_Saved.m_NumContours = numContours;
    InitPolysurfaceStorage(surface);
    InitContourValueStorage(values);
    InitContourColorsStorage(colors);
}

void CChartObj3D::Set3DPointStorage(const point3Dtype* points, int n) {
    const detail::CalledOperation call;
    m_Saved.m_NumDataPnts = n;
    Init3DPointStorage(points);
}

void CChartObj3D::SetPolysurface(CPolysurface* surface) {
    const detail::CalledOperation call;
    InitPolysurfaceStorage(surface);
}

void CChartObj3D::SetDataStringsStorage(const point3Dtype* points, const CString* strings, int n) {
    const detail::CalledOperation call;
    m_Saved.m_NumDataPnts = n;
    Init3DPointStorage(points);
    InitDataStringsStorage(strings);
}

void CChartObj3D::SetDataStorage25D(std::span<const double> ind, std::span<const double> dep,
                                    std::span<const double> dep2) {
    const int n = dep2.empty() ? detail::CommonCount("SetDataStorage25D", ind, dep)
                               : detail::CommonCount("SetDataStorage25D", ind, dep, dep2);
    SetDataStorage25D(ind.data(), dep.data(), detail::DataOf(dep2), n);
}

void CChartObj3D::SetGroupDataStorage(std::span<const double> ind, std::span<const double> group,
                                      std::span<const RGBDType> colors) {
    const auto [n, numGroups] = detail::GroupCounts("SetGroupDataStorage", ind, group, colors);
    SetGroupDataStorage(ind.data(), group.data(), n, numGroups, detail::DataOf(colors));
}

void CChartObj3D::SetContourStorage(CPolysurface* surface, std::span<const double> values,
                                    std::span<const RGBDType> colors) {
    SetContourStorage(surface, values.data(), detail::DataOf(colors),
                      detail::ContourCount("SetContourStorage", values, colors));
}

void CChartObj3D::Set3DPointStorage(std::span<const point3Dtype> points) {
    Set3DPointStorage(points.data(), detail::CommonCount("Set3DPointStorage", points));
}

void CChartObj3D::SetDataStringsStorage(std::span<const point3Dtype> points,
                                        std::span<const CString> strings) {
    SetDataStringsStorage(points.data(), strings.data(),
                          detail::CommonCount("SetDataStringsStorage", points, strings));
}

}  // namespace varnel
