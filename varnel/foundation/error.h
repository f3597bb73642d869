// CErr3D and Error, the one way in which every operation of the library reports a failure.
//
// A failing operation throws an Error by value: what went wrong (type), which class raised it, the
// bare name of the operation, and one sentence for people (what()). Hosts catch it by reference, as
// CErr3D or as std::exception. With report mode 1, the default, the description of the type is
// shown through the notice channel before the throw.
#pragma once

#include <exception>

#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// What went wrong.
enum CErr3DTypes : std::int32_t {
    ERR3D_NONE = 0,
    ERR3D_MEM_ALLOC = 1,
    ERR3D_ARRAY_NEW = 2,
    ERR3D_OBJECT_NEW = 3,
    ERR3D_NULL_POINTER = 4,
    ERR3D_FILE_OPEN_INPUT = 5,
    ERR3D_FILE_OPEN_OUTPUT = 6,
    ERR3D_DISK_IO = 7,
    ERR3D_DIB_HANDLE = 8,
    ERR3D_PRINT_DC = 9,
    ERR3D_PARAMETER = 10,
    ERR3D_CWND_PARAMETER = 11,
    ERR3D_CVIEW_PARAMETER = 12,
    ERR3D_CHARTVIEW_PARAMETER = 13,
    ERR3D_CDC_PARAMETER = 14,
    ERR3D_TRANSFORM_PARAMETER = 15,
    ERR3D_OPENGL_PARAMETER = 16,
    ERR3D_FONT_PARAMETER = 17,
    ERR3D_PIXEL_FORMAT = 18,
    ERR3D_BAD_POLYSURFACE = 19,
};

/// The class that raised the error. The numbers are part of the interface.
enum CErr3DClass : std::int32_t {
    ERR3DCLASS_AUXOBJ3D = 0,
    ERR3DCLASS_AXES3D = 1,
    ERR3DCLASS_AXIS3D = 2,
    ERR3DCLASS_AXISLABELS3D = 3,
    ERR3DCLASS_CHART3D = 4,
    ERR3DCLASS_CHARTOBJ3D = 5,
    ERR3DCLASS_CHARTVIEW3D = 6,
    ERR3DCLASS_CONTOUR3D = 7,
    ERR3DCLASS_DIB = 8,
    ERR3DCLASS_DIBSECTION = 9,
    ERR3DCLASS_DIBOBJ3D = 10,
    ERR3DCLASS_RESERVED = 11,
    ERR3DCLASS_GENERAL = 12,
    ERR3DCLASS_FONT3D = 13,
    ERR3DCLASS_HEADER3D = 14,
    ERR3DCLASS_LEGEND3D = 15,
    ERR3DCLASS_LEGENDOBJ3D = 16,
    ERR3DCLASS_OPENGL = 17,
    ERR3DCLASS_POLYSURFACE = 18,
    ERR3DCLASS_TEXTOBJ3D = 19,
    ERR3DCLASS_TRANSFORM3D = 20,
};

/// One failure. An immutable value once thrown; copying it never shows a notice.
class VARNEL_API CErr3D {
 public:
    /// Not an error: type ERR3D_NONE, class ERR3DCLASS_GENERAL, no operation. Shows nothing.
    CErr3D();

    /// The failure of `functionName`, an operation's bare name such as "NewTransform". With report
    /// mode 1 the description of `type` is shown before this returns.
    CErr3D(CErr3DTypes type, CErr3DClass cls, const CString& functionName);

    /// Makes this "not an error", as the default constructor does.
    void InitErr3DDefaults();

    /// The text of any type, "Unknown Error" outside 0..19.
    static CString GetErrorDescription(CErr3DTypes type);

    /// 1: each error's description is shown when the error is made; anything else: silence. One
    /// setting for the whole process; it starts at 1.
    static void SetErrorReportMode(int mode);
    static int GetErrorReportMode();

    CErr3DClass m_ErrorClass;
    CErr3DTypes m_ErrorType;
    CString m_FunctionName;

 private:
    static int nErrorReportMode;
};

/// What the library throws: a CErr3D that is also a standard exception.
class VARNEL_API Error : public CErr3D, public std::exception {
 public:
    /// `detail` says what was wrong with which value, such as "the count is -1"; when it is empty
    /// the description of the type stands in its place. `called` is the operation that the host
    /// called, where it is another one than `functionName`; null: it is the same.
    Error(CErr3DTypes type, CErr3DClass cls, const CString& functionName,
          const CString& detail = {}, const char* called = nullptr);

    /// One sentence: the operation that the host called and what was wrong, as in "BarChart25D: the
    /// count is -1".
    const char* what() const noexcept override { return m_What.c_str(); }

 private:
    CString m_What;
};

}  // namespace varnel
