// Expected bytes of chart files, put together by hand: little-endian, without padding.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace varnel::test {

class ByteBuilder {
 public:
    ByteBuilder& Int(std::int32_t v) { return Raw(&v, sizeof v); }
    ByteBuilder& Ints(std::initializer_list<std::int32_t> values) {
        for (std::int32_t v : values)
            Int(v);
        return *this;
    }
    ByteBuilder& Double(double v) { return Raw(&v, sizeof v); }
    ByteBuilder& Doubles(std::initializer_list<double> values) {
        for (double v : values)
            Double(v);
        return *this;
    }
    ByteBuilder& Text(const std::string& s) {
        Int(static_cast<std::int32_t>(s.size()));
        return Raw(s.data(), s.size());
    }
    ByteBuilder& Bytes(const std::vector<std::uint8_t>& more) {
        return Raw(more.data(), more.size());
    }

    std::vector<std::uint8_t> bytes;

 private:
    ByteBuilder& Raw(const void* data, std::size_t size) {
        const auto* at = static_cast<const std::uint8_t*>(data);
        bytes.insert(bytes.end(), at, at + size);
        return *this;
    }
};

}  // namespace varnel::test
