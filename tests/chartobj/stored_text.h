// Text that is compared with what is stored beside the tests.
//
// With VARNEL_UPDATE_REFERENCES set in the environment the stored text is replaced by the new one;
// look at the difference before it is committed.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

namespace varnel::test {

/// Expects the text of a file of this folder, and shows the first line that differs.
inline void ExpectStored(const std::string& text, const std::string& name) {
    const std::string path = VARNEL_STORED "/" + name;
    if (std::getenv("VARNEL_UPDATE_REFERENCES") != nullptr) std::ofstream(path) << text;
    std::ifstream stored(path);
    std::istringstream lines(text);
    std::string is, should;
    while (std::getline(stored, should)) {
        std::getline(lines, is);
        ASSERT_EQ(is, should) << name;
    }
    EXPECT_FALSE(std::getline(lines, is)) << is;
}

}  // namespace varnel::test
