// Files of tests: a folder that goes with the test, and whole files at once.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace varnel::test {

/// A folder that is deleted with the object, whatever its permissions are then.
class TemporaryFolder {
 public:
    TemporaryFolder() {
        m_Path = std::filesystem::temp_directory_path() / "varnel_test_XXXXXX";
        if (::mkdtemp(m_Path.data()) == nullptr) m_Path = "/nonexistent";
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::permissions(m_Path, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(m_Path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    const std::string& Path() const { return m_Path; }
    std::string File(const std::string& name) const { return m_Path + "/" + name; }

 private:
    std::string m_Path;
};

inline std::string ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void WriteAll(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace varnel::test
