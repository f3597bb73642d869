#include "varnel/foundation/detail/raise.h"

namespace varnel::detail {
namespace {

thread_local const char* calledOperation = nullptr;

}  // namespace

CalledOperation::CalledOperation(const char* name) : m_Outer(calledOperation) {
    if (m_Outer == nullptr) calledOperation = name;
}

CalledOperation::~CalledOperation() {
    calledOperation = m_Outer;
}

void Raise(CErr3DTypes type, CErr3DClass cls, const char* operation, const CString& detail) {
    throw Error(type, cls, operation, detail, calledOperation);
}

}  // namespace varnel::detail
