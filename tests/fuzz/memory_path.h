// Bytes as a file that has a name, for operations that open files by name.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "varnel/foundation/types.h"

namespace varnel::test {

/// A file in memory that has a name.
class MemoryPath {
 public:
    MemoryPath(const BYTE* bytes, std::size_t size) : m_File(memfd_create("varnel_fuzz", 0)) {
        if (m_File < 0 || write(m_File, bytes, size) != static_cast<ssize_t>(size)) std::abort();
    }
    ~MemoryPath() { close(m_File); }
    MemoryPath(const MemoryPath&) = delete;
    MemoryPath& operator=(const MemoryPath&) = delete;

    std::string Path() const { return "/proc/self/fd/" + std::to_string(m_File); }

 private:
    int m_File;
};

}  // namespace varnel::test
