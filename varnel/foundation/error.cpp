#include "varnel/foundation/error.h"

#include <array>
#include <cstddef>

#include "varnel/foundation/detail/counter.h"
#include "varnel/foundation/notice.h"

namespace varnel {
namespace {

constexpr std::array<const char*, 20> kDescriptions = {
    "Not an error",
    "Mem Alloc Error",
    "Array New Error",
    "Object New Error",
    "Memory Null Pointer",
    "Error Opening File for Input",
    "Error Opening File for Output",
    "Disk I/O Error",
    "DIB Handle Error",
    "Print DC Error",
    "Parameter Error",
    "CWnd Parameter Error",
    "CView Parameter Error",
    "CChartView Parameter Error",
    "CDC Parameter Error",
    "Transform Parameter Error",
    "OpenGL Parameter Error",
    "Font Parameter Error",
    "Pixel Format Error",
    "Bad Polysurface Error",
};
static_assert(kDescriptions.size() == ERR3D_BAD_POLYSURFACE + 1);

}  // namespace

int CErr3D::nErrorReportMode = 1;

CErr3D::CErr3D() {
    InitErr3DDefaults();
}

CErr3D::CErr3D(CErr3DTypes type, CErr3DClass cls, const CString& functionName)
    : m_ErrorClass(cls), m_ErrorType(type), m_FunctionName(functionName) {
    if (GetErrorReportMode() == 1) ShowNotice(GetErrorDescription(type));
}

void CErr3D::InitErr3DDefaults() {
    m_ErrorType = ERR3D_NONE;
    m_ErrorClass = ERR3DCLASS_GENERAL;
    m_FunctionName.clear();
}

CString CErr3D::GetErrorDescription(CErr3DTypes type) {
    const auto index = static_cast<std::size_t>(type);
    return index < kDescriptions.size() ? kDescriptions[index] : "Unknown Error";
}

void CErr3D::SetErrorReportMode(int mode) {
    detail::SetCounter(nErrorReportMode, mode);
}

int CErr3D::GetErrorReportMode() {
    return detail::Counted(nErrorReportMode);
}

Error::Error(CErr3DTypes type, CErr3DClass cls, const CString& functionName, const CString& detail,
             const char* called)
    : CErr3D(type, cls, functionName),
      m_What((called != nullptr ? called : functionName) + ": " +
             (detail.empty() ? GetErrorDescription(type) : detail)) {
}

}  // namespace varnel
