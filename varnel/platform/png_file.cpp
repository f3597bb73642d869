#include "varnel/platform/detail/png_file.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <csetjmp>
#include <exception>
#include <new>
#include <vector>

#include "varnel/foundation/detail/progress.h"
#include "varnel/platform/detail/pixel_rows.h"
#include "varnel/platform/files.h"

namespace varnel {
namespace {

/// Where the bytes go, and why they do not arrive.
struct Sink {
    File* file;
    std::exception_ptr failure = nullptr;
};

// The PNG library leaves these through longjmp, which must not meet an exception or a destructor.
extern "C" {

void OnPngData(png_structp png, png_bytep bytes, std::size_t size) {
    auto* sink = static_cast<Sink*>(png_get_io_ptr(png));
    try {
        sink->file->Write(bytes, size);
    } catch (...) {
        sink->failure = std::current_exception();
    }
    if (sink->failure) png_error(png, "");
}

void OnPngFlush(png_structp) {
}

void OnPngError(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}

void OnPngWarning(png_structp, png_const_charp) {
}

}  // extern "C"

/// Resolution and texts. Nothing in here may have a destructor.
void WriteAbout(png_structp png, png_infop info, const PictureInfo& about) {
    constexpr double kInchesPerMetre = 1.0 / 0.0254;
    if (about.dpi > 0.0) {
        const double perMetre = std::min(std::round(about.dpi * kInchesPerMetre), 2e9);
        const auto resolution = static_cast<png_uint_32>(perMetre);
        png_set_pHYs(png, info, resolution, resolution, PNG_RESOLUTION_METER);
    }
    const struct {
        const char* key;
        const CString& value;
    } texts[] = {{"Title", about.title}, {"Software", about.software}};
    for (const auto& [key, value] : texts) {
        if (value.empty()) continue;
        png_text text{};
        text.compression = PNG_ITXT_COMPRESSION_NONE;
        text.key = const_cast<char*>(key);
        text.text = const_cast<char*>(value.c_str());
        png_set_text(png, info, &text, 1);
    }
}

/// Encodes all rows; false when the library gave up. `row` has room for a row of 32-bit pixels.
/// Nothing in here may have a destructor.
bool Encode(png_structp png, png_infop info, const Bitmap& bitmap, BYTE* row,
            const PictureInfo& about) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_IHDR(png, info, static_cast<png_uint_32>(bitmap.Width()),
                 static_cast<png_uint_32>(bitmap.Height()), 8, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(png, 1);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    WriteAbout(png, info, about);
    png_write_info(png, info);
    png_set_bgr(png);
    png_set_filler(png, 0, PNG_FILLER_AFTER);
    for (int y = 0; y < bitmap.Height(); ++y) {
        if (y % 16 == 0) detail::Progress(y, bitmap.Height());
        detail::UnpackRow(bitmap, 0, y, static_cast<std::size_t>(bitmap.Width()), row);
        png_write_row(png, row);
    }
    png_write_end(png, info);
    return true;
}

/// The same for rows that are as the file wants them.
bool EncodeRows(png_structp png, png_infop info, int width, int height, const BYTE* rows) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8,
                 PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (int y = 0; y < height; ++y) {
        if (y % 16 == 0) detail::Progress(y, height);
        png_write_row(png,
                      rows + static_cast<std::size_t>(y) * static_cast<std::size_t>(width) * 4);
    }
    png_write_end(png, info);
    return true;
}

/// The PNG library's two objects.
struct Writer {
    png_structp png =
        png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, OnPngError, OnPngWarning);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;

    Writer() = default;
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    ~Writer() { png_destroy_write_struct(&png, &info); }
};

}  // namespace

void WritePNG(const Bitmap& bitmap, File& file, const PictureInfo& about) {
    std::vector<BYTE> row(static_cast<std::size_t>(bitmap.Width()) * 4);
    Writer writer;
    if (writer.info == nullptr) throw std::bad_alloc();
    Sink sink{&file};
    png_set_write_fn(writer.png, &sink, OnPngData, OnPngFlush);
    if (Encode(writer.png, writer.info, bitmap, row.data(), about)) return;
    if (sink.failure) std::rethrow_exception(sink.failure);
    throw std::bad_alloc();
}

std::vector<BYTE> EncodePNG(int width, int height, const std::vector<BYTE>& pixels) {
    MemoryFile file;
    Writer writer;
    if (writer.info == nullptr) throw std::bad_alloc();
    Sink sink{&file};
    png_set_write_fn(writer.png, &sink, OnPngData, OnPngFlush);
    if (!EncodeRows(writer.png, writer.info, width, height, pixels.data())) throw std::bad_alloc();
    return file.GetBytes();
}

}  // namespace varnel
