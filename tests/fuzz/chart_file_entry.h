// What the targets that read chart files share: a view that is made once, and a mutator that knows
// the fields of a file.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "tests/fuzz/memory_path.h"
#include "tests/fuzz/record_mutator.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/varnel.h"

namespace varnel::test {

inline constexpr int kSide = 48;

/// Writes the extension block that ends a chart file, value by value. Nobody looks at its checksum
/// in this build.
inline void RecordBlock(const std::vector<BYTE>& bytes, FieldLog& log) {
    constexpr std::size_t kHead = 16;
    constexpr std::array<BYTE, 4> kMagic = {0xD6, 'V', 'R', 'N'};
    const auto at = std::search(bytes.begin(), bytes.end(), kMagic.begin(), kMagic.end());
    if (bytes.end() - at < static_cast<std::ptrdiff_t>(kHead)) return;
    log.Write(&*at, kHead);
    MemoryFile block({at + kHead, bytes.end()});
    detail::RecordReader read(block);
    detail::RecordWriter write(log);
    const auto copy = [&](std::int32_t size) {
        std::vector<BYTE> value(static_cast<std::size_t>(std::max(size, 0)));
        block.Read(value.data(), value.size());
        log.Write(value.data(), value.size());
    };
    while (block.Remaining() > sizeof(std::int32_t)) {
        CString path, name;
        std::int32_t count = 0, kind = 0, size = 0;
        read(path, count);
        write(path, count);
        for (std::int32_t i = 0; i < count && block.Remaining() > sizeof count; ++i) {
            read(name, kind, size);
            if (!read.Has(size, 1)) return;
            write(name, kind, size);
            copy(size);
        }
    }
    copy(sizeof(std::int32_t));
}

/// A view on a window of its own, made once.
struct FuzzedView {
    CWnd window{kSide, kSide};
    CChartView3D view{&window, kSide, kSide};

    /// False when the bytes are no chart file.
    bool Load(const std::uint8_t* bytes, std::size_t size) {
        view.DeleteChartViewObjects();
        const MemoryPath file(bytes, size);
        try {
            view.Load(file.Path());
            return true;
        } catch (const CErr3D&) {
            return false;
        }
    }
    /// Writes what was loaded: the view's own fields as they came, then everything else.
    void Record(const std::uint8_t* bytes, std::size_t size, FieldLog& log) {
        constexpr std::size_t kLengthAt = 16;  // behind four integers
        std::int32_t length = 0;
        if (size >= kLengthAt + sizeof length) std::memcpy(&length, bytes + kLengthAt, 4);
        const std::size_t own =
            kLengthAt + 4 + static_cast<std::size_t>(length) + 32 + 4 + 8 + 32 + 4;
        if (own > size) return;
        log.Write(bytes, kLengthAt + 4);
        log.Write(bytes + kLengthAt + 4, own - kLengthAt - 4);
        const std::int32_t charts = view.GetNumCharts();
        const std::int32_t legends = view.GetNumLegends();
        log.Write(&charts, sizeof charts);
        for (int i = 0; i < charts; ++i)
            view.GetChart(i)->Save(&log);
        log.Write(&legends, sizeof legends);
        for (int i = 0; i < legends; ++i)
            view.GetLegend(i)->Save(&log);
        view.GetHeader()->Save(&log);
        RecordBlock({bytes, bytes + size}, log);
    }
};

/// The view that is drawn, in one context with one set of fonts for all runs.
inline FuzzedView& Drawn() {
    static FuzzedView view;
    return view;
}

}  // namespace varnel::test

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    using namespace varnel;
    CErr3D::SetErrorReportMode(0);
    SetNoticeHandler([](const std::string&) {});
    // Pictures are what another target is for; files of this machine are not.
    SetPictureFileHook([](const CString&, const CString&) { return CString(); });
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t size,
                                               std::size_t most, unsigned int seed) {
    static varnel::test::FuzzedView read;
    if (seed % 2 == 0 || !read.Load(bytes, size)) return LLVMFuzzerMutate(bytes, size, most);
    varnel::test::FieldLog log;
    read.Record(bytes, size, log);
    if (log.Fields().empty()) return LLVMFuzzerMutate(bytes, size, most);
    return varnel::test::MutateFields(log, bytes, most, seed);
}
