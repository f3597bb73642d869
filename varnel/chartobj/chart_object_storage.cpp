#include <algorithm>
#include <utility>

#include "varnel/chartobj/chart_object.h"
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
    if (p == nullptr) return;
    slot = {};
    slot = CopyArray(p, count, count, operation);
}

}  // namespace

void CChartObj3D::InitIndDataStorage(const double* p) {
    Store(m_pIndData, p, m_NumDataPnts, "InitIndDataStorage");
}

void CChartObj3D::InitDepDataStorage(const double* p) {
    Store(m_pDepData, p, m_NumDataPnts, "InitDepDataStorage");
}

void CChartObj3D::InitGroupDataStorage(const double* p) {
    const bool negative = m_NumGroups < 0 || m_NumDataPnts < 0;
    const long long count = static_cast<long long>(m_NumGroups) * m_NumDataPnts;
    Store(m_pGroupData, p, negative ? -1 : count, "InitGroupDataStorage");
}

void CChartObj3D::InitDepData2Storage(const double* p) {
    if (p == nullptr) return;
    Store(m_pDepData2, p, m_NumDataPnts, "InitDepData2Storage");
    m_NumDepData2 = m_NumDataPnts;
}

void CChartObj3D::InitBarHeightsStorage(const double* p) {
    if (p == nullptr) return;
    Store(m_pBarHeights, p, m_NumDataPnts, "InitBarHeightsStorage");
    m_NumBarHeights = m_NumDataPnts;
}

void CChartObj3D::Init3DPointStorage(const point3Dtype* p) {
    if (p == nullptr) {
        m_NumDataPnts = 0;
        return;
    }
    m_Num3DPoints = m_NumDataPnts;
    Store(m_p3DPoints, p, m_NumDataPnts, "Init3DPointStorage");
}

void CChartObj3D::InitGroupColorsStorage(const RGBDType* p) {
    if (p == nullptr) return;
    Store(m_pGroupColors, p, m_NumGroups, "InitGroupColorsStorage");
    m_NumGroupColors = m_NumGroups;
}

void CChartObj3D::InitSegmentColorsStorage(const RGBDType* p) {
    if (p == nullptr) {
        m_SegmentColorMode = 0;
        return;
    }
    Store(m_pSegmentColors, p, m_NumDataPnts, "InitSegmentColorsStorage");
    m_NumSegmentColors = m_NumDataPnts;
    m_SegmentColorMode = 1;
}

void CChartObj3D::InitContourValueStorage(const double* p) {
    Store(m_pIndData, p, m_NumContours, "InitContourValueStorage");
}

void CChartObj3D::InitContourColorsStorage(const RGBDType* p) {
    Store(m_pSegmentColors, p, m_NumContours < 0 ? -1 : m_NumContours + 1LL,
          "InitContourColorsStorage");
}

void CChartObj3D::InitPolysurfaceStorage(CPolysurface* surface) {
    if (surface == nullptr) return;
    m_pPolysurface.reset();
    m_pPolysurface =
        detail::AllocateOrRaise(ERR3D_ARRAY_NEW, {ERR3DCLASS_CHARTOBJ3D, "InitPolysurfaceStorage"},
                                [surface] { return std::make_shared<CPolysurface>(surface); });
    m_bPolysurface = 1;
}

void CChartObj3D::InitDataStringsStorage(const CString* p) {
    if (p == nullptr) return;
    Store(m_pDataStrings, p, m_NumDataPnts, "InitDataStringsStorage");
    m_NumDataStrings = m_NumDataPnts;
}

void CChartObj3D::SetAreaRangeColor(const RGBDType& color) {
    const long long n = m_NumDataPnts;
    const auto pointColors = m_pSegmentColors.First(n);
    if (!m_pSegmentColors || n < 0 || static_cast<long long>(pointColors.size()) < n) return;
    if (m_pSegmentColors.At(n, n + 1) == nullptr)
        m_pSegmentColors = CopyArray<RGBDType>(pointColors.data(), n, n + 1, "SetAreaRangeColor");
    *m_pSegmentColors.At(n, n + 1) = color;
    // The count of what is saved.
    m_NumSegmentColors = m_NumDataPnts + 1;
}

void CChartObj3D::DeleteIndDataStorage() {
    m_pIndData = {};
}

void CChartObj3D::DeleteDepDataStorage() {
    m_pDepData = {};
}

void CChartObj3D::DeleteGroupDataStorage() {
    m_pGroupData = {};
}

void CChartObj3D::DeleteDepData2Storage() {
    m_pDepData2 = {};
}

void CChartObj3D::DeleteBarHeightsStorage() {
    m_pBarHeights = {};
}

void CChartObj3D::DeleteGroupColorsStorage() {
    m_pGroupColors = {};
}

void CChartObj3D::DeleteContourColorsStorage() {
    m_pSegmentColors = {};
}

void CChartObj3D::Delete3DPointStorage() {
    m_p3DPoints = {};
}

void CChartObj3D::DeletePolysurfaceStorage() {
    m_pPolysurface.reset();
}

void CChartObj3D::DeleteDataStringsStorage() {
    m_pDataStrings = {};
}

void CChartObj3D::SetDataStorage25D(const double* ind, const double* dep, const double* dep2,
                                    int n) {
    m_NumDataPnts = n;
    InitIndDataStorage(ind);
    // Hosts rely on the second array taking the first one's place.
    InitIndDataStorage(dep);
    InitDepData2Storage(dep2);
    InitBarHeightsStorage(dep2);
}

void CChartObj3D::SetGroupDataStorage(const double* ind, const double* group, int n, int numGroups,
                                      const RGBDType* colors) {
    m_NumGroups = numGroups;
    m_NumDataPnts = n;
    InitGroupColorsStorage(colors);
    InitIndDataStorage(ind);
    InitGroupDataStorage(group);
}

void CChartObj3D::SetBarHeightsStorage(const double* heights) {
    InitBarHeightsStorage(heights);
}

void CChartObj3D::SetContourStorage(CPolysurface* surface, const double* values,
                                    const RGBDType* colors, int numContours) {
    m_NumContours = numContours;
    InitPolysurfaceStorage(surface);
    InitContourValueStorage(values);
    InitContourColorsStorage(colors);
}

void CChartObj3D::Set3DPointStorage(const point3Dtype* points, int n) {
    m_NumDataPnts = n;
    Init3DPointStorage(points);
}

void CChartObj3D::SetPolysurface(CPolysurface* surface) {
    InitPolysurfaceStorage(surface);
}

void CChartObj3D::SetDataStringsStorage(const point3Dtype* points, const CString* strings, int n) {
    m_NumDataPnts = n;
    Init3DPointStorage(points);
    InitDataStringsStorage(strings);
}

}  // namespace varnel
