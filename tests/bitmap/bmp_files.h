// Bitmap files with the pixels that they must decode to.
#pragma once

#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "varnel/foundation/notice.h"
#include "varnel/foundation/types.h"

namespace varnel::test {

/// A file that is removed again.
class TempFile {
 public:
    explicit TempFile(const std::vector<BYTE>& bytes) {
        static int count = 0;
        m_Path = std::filesystem::temp_directory_path() /
                 ("varnel_bmp_" + std::to_string(::getpid()) + "_" + std::to_string(count++));
        std::ofstream file(m_Path, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }
    ~TempFile() {
        std::error_code ignored;
        std::filesystem::remove(m_Path, ignored);
    }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    std::string Path() const { return m_Path.string(); }

 private:
    std::filesystem::path m_Path;
};

/// Keeps the notices shown during its life.
class NoticeLog {
 public:
    NoticeLog() {
        m_Before = SetNoticeHandler([this](const std::string& text) { texts.push_back(text); });
    }
    ~NoticeLog() { SetNoticeHandler(std::move(m_Before)); }
    NoticeLog(const NoticeLog&) = delete;
    NoticeLog& operator=(const NoticeLog&) = delete;

    std::vector<std::string> texts;

 private:
    NoticeHandler m_Before;
};

using RGB = std::array<int, 3>;

/// A file and what it must decode to, the upper row first.
struct BmpSample {
    std::vector<BYTE> bytes;
    std::vector<RGB> pixels;
    int width = 0;
    int height = 0;
};

inline std::vector<BYTE> ReadBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The pixels of a .ppm file.
inline BmpSample ReadPpm(const std::filesystem::path& path) {
    BmpSample sample;
    std::ifstream file(path, std::ios::binary);
    std::string kind;
    int most = 0;
    file >> kind >> sample.width >> sample.height >> most;
    file.get();
    for (int left = sample.width * sample.height; left > 0; --left) {
        RGB& color = sample.pixels.emplace_back();
        for (int& part : color)
            part = file.get();
    }
    return sample;
}

/// The stored files by name: bits, order of rows, kind of header, compression. Beside each lies
/// what ImageMagick reads in it (it does not know 4_os2_second and 32_fields_alpha).
inline std::vector<std::string> SampleNames() {
    std::vector<std::string> names;
    for (const auto& file : std::filesystem::directory_iterator(VARNEL_BMP_FILES))
        if (file.path().extension() == ".bmp") names.push_back(file.path().stem());
    std::sort(names.begin(), names.end());
    return names;
}

inline BmpSample ReadSample(const std::string& name) {
    const std::filesystem::path folder(VARNEL_BMP_FILES);
    BmpSample sample = ReadPpm(folder / (name + ".ppm"));
    sample.bytes = ReadBytes(folder / (name + ".bmp"));
    return sample;
}

/// A file of 24 bits a pixel, of any size.
inline BmpSample MakeBmp24(int width, int height) {
    BmpSample sample{{'B', 'M'}, {}, width, height};
    const auto put = [&](int value, int count) {
        for (int i = 0; i < count; ++i)
            sample.bytes.push_back(static_cast<BYTE>(value >> 8 * i));
    };
    for (const int field : {0, 0, 54, 40, width, height, 1 | 24 << 16, 0, 0, 0, 0, 0, 0})
        put(field, 4);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            sample.pixels.push_back(
                {(x * 31 + 200) % 256, (y * 22 + x * 11 + 90) % 256, (x + y * 13 + 40) % 256});
    for (int y = height - 1; y >= 0; --y) {
        for (int x = 0; x < width; ++x)
            for (const std::size_t part : {2, 1, 0})
                put(sample.pixels[static_cast<std::size_t>(y * width + x)][part], 1);
        while ((sample.bytes.size() - 54) % 4 != 0)
            put(0xEE, 1);
    }
    return sample;
}

}  // namespace varnel::test
