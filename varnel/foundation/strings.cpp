#include "varnel/foundation/strings.h"

#include "varnel/foundation/detail/record.h"

namespace varnel {

void WriteCString(HANDLE file, const CString& s) {
    if (file == nullptr) return;
    detail::RecordWriter record(*file);
    record(s);
}

void ReadCString(HANDLE file, CString& s) {
    if (file == nullptr) return;
    detail::RecordReader record(*file);
    record(s);
}

}  // namespace varnel
