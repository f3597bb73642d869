#include "varnel/foundation/detail/raise.h"

namespace varnel::detail {

void Raise(CErr3DTypes type, CErr3DClass cls, const char* operation, const CString& detail) {
    throw Error(type, cls, operation, detail);
}

}  // namespace varnel::detail
