#include "varnel/foundation/detail/raise.h"

namespace varnel::detail {

void Raise(CErr3DTypes type, CErr3DClass cls, const char* operation) {
    throw CErr3D(type, cls, operation);
}

}  // namespace varnel::detail
