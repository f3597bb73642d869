#include <algorithm>
#include <limits>

#include "varnel/chartobj/chart_object.h"
#include "varnel/surface/polysurface.h"

namespace varnel {
namespace {

template <class T>
void SetElement(const SharedArray<T>& array, long long i, long long bound, const T& value) {
    if (T* const element = array.At(i, bound)) *element = value;
}

template <class T>
T GetElement(const SharedArray<T>& array, long long i, long long bound) {
    const T* const element = array.At(i, bound);
    return element != nullptr ? *element : T{};
}

// The index of a group's datum, -1 when there is none of that number.
long long GroupIndex(int group, int i, int numGroups, int numPoints) {
    if (group < 0 || group >= numGroups || i < 0 || i >= numPoints) return -1;
    return static_cast<long long>(group) * numPoints + i;
}

constexpr long long kAll = std::numeric_limits<long long>::max();

}  // namespace

void CChartObj3D::SetIndData(int i, double value) {
    SetElement(m_Saved.m_pIndData, i, m_Saved.m_NumDataPnts, value);
}

double CChartObj3D::GetIndData(int i) const {
    return GetElement(m_Saved.m_pIndData, i, m_Saved.m_NumDataPnts);
}

void CChartObj3D::SetDepData(int i, double value) {
    SetElement(m_Saved.m_pDepData, i, m_Saved.m_NumDataPnts, value);
}

double CChartObj3D::GetDepData(int i) const {
    return GetElement(m_Saved.m_pDepData, i, m_Saved.m_NumDataPnts);
}

void CChartObj3D::SetGroupData(int group, int i, double value) {
    SetElement(m_Saved.m_pGroupData,
               GroupIndex(group, i, m_Saved.m_NumGroups, m_Saved.m_NumDataPnts), kAll, value);
}

double CChartObj3D::GetGroupData(int group, int i) const {
    return GetElement(m_Saved.m_pGroupData,
                      GroupIndex(group, i, m_Saved.m_NumGroups, m_Saved.m_NumDataPnts), kAll);
}

void CChartObj3D::SetDepData2(int i, double value) {
    SetElement(m_Saved.m_pDepData2, i, m_Saved.m_NumDataPnts, value);
}

double CChartObj3D::GetDepData2(int i, double) const {
    return GetElement(m_Saved.m_pDepData2, i, m_Saved.m_NumDataPnts);
}

void CChartObj3D::SetBarHeight(int i, double value) {
    SetElement(m_Saved.m_pBarHeights, i, m_Saved.m_NumDataPnts, value);
}

double CChartObj3D::GetBarHeight(int i) const {
    return GetElement(m_Saved.m_pBarHeights, i, m_Saved.m_NumDataPnts);
}

void CChartObj3D::SetGroupColor(int i, const RGBDType& color) {
    SetElement(m_Saved.m_pGroupColors, i, m_Saved.m_NumGroups, color);
}

RGBDType CChartObj3D::GetGroupColor(int i) const {
    return GetElement(m_Saved.m_pGroupColors, i, m_Saved.m_NumGroups);
}

void CChartObj3D::SetSegmentColor(int i, const RGBDType& color) {
    SetElement(m_Saved.m_pSegmentColors, i, m_Saved.m_NumDataPnts, color);
}

RGBDType CChartObj3D::GetSegmentColor(int i) const {
    return GetElement(m_Saved.m_pSegmentColors, i, m_Saved.m_NumDataPnts);
}

void CChartObj3D::SetContourColor(int i, const RGBDType& color) {
    SetElement(m_Saved.m_pSegmentColors, i, m_Saved.m_NumContours + 1LL, color);
}

RGBDType CChartObj3D::GetContourColor(int i) const {
    return GetElement(m_Saved.m_pSegmentColors, i, m_Saved.m_NumDataPnts + 1LL);
}

void CChartObj3D::SetContourValue(int i, double value) {
    SetElement(m_Saved.m_pIndData, i, m_Saved.m_NumContours, value);
}

void CChartObj3D::Set3DPoint(int i, const point3Dtype& point) {
    SetElement(m_Saved.m_p3DPoints, i, m_Saved.m_NumDataPnts, point);
}

point3Dtype CChartObj3D::Get3DPoint(int i) const {
    return GetElement(m_Saved.m_p3DPoints, i, m_Saved.m_NumDataPnts);
}

CString CChartObj3D::GetDataString(int i) const {
    return GetElement(m_Saved.m_pDataStrings, i, m_Saved.m_NumDataPnts);
}

void CChartObj3D::SetShading(int smooth, double creaseAngle) {
    m_Added.m_Shading = smooth;
    m_Added.m_CreaseAngle = creaseAngle;
}

void CChartObj3D::SetTextureLighting(int on, double least, double most) {
    m_Added.m_TextureLighting = on;
    m_Added.m_TextureLeast = least;
    m_Added.m_TextureMost = most;
}

void CChartObj3D::SetPolysurfaceValues(std::span<const double> values) {
    if (m_Saved.m_pPolysurface != nullptr) m_Saved.m_pPolysurface->SetPSValues(values);
}

void CChartObj3D::SetPolysurfacePoint(int i, const point3Dtype& point) {
    if (m_Saved.m_pPolysurface != nullptr) m_Saved.m_pPolysurface->SetOnePolysurfacePoint(i, point);
}

point3Dtype CChartObj3D::GetPolysurfacePoint(int i) const {
    point3Dtype point;
    if (m_Saved.m_pPolysurface != nullptr) m_Saved.m_pPolysurface->GetOnePolysurfacePoint(i, point);
    return point;
}

void CChartObj3D::SetScatterTextString(int i, const CString& text) {
    SetElement(m_Saved.m_pDataStrings, i, m_Saved.m_NumDataPnts, text);
}

CString CChartObj3D::GetScatterTextString(int i) const {
    return GetElement(m_Saved.m_pDataStrings, i, m_Saved.m_NumDataPnts);
}

RGBDType CChartObj3D::GetAreaRangeColor() const {
    const RGBDType* const color = m_Saved.m_pSegmentColors.At(m_Saved.m_NumDataPnts, kAll);
    return color != nullptr ? *color : m_Saved.m_FillColor;
}

void CChartObj3D::SetComboChartFlags(const int* flags) {
    if (flags != nullptr) std::copy_n(flags, 6, m_Saved.m_ComboChartFlags);
}

void CChartObj3D::GetComboChartFlags(int* flags) const {
    if (flags != nullptr) std::copy_n(m_Saved.m_ComboChartFlags, 6, flags);
}

}  // namespace varnel
