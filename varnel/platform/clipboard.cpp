#include "varnel/platform/clipboard.h"

#include <chrono>
#include <utility>

#include "varnel/platform/detail/clipboard_owner.h"
#include "varnel/platform/detail/pixel_rows.h"
#include "varnel/platform/detail/png_file.h"
#include "varnel/platform/files.h"

namespace varnel {
namespace {

using detail::ClipboardForm;
using detail::ClipboardOwner;

std::vector<BYTE> EncodePNG(const Bitmap& picture) {
    MemoryFile file;
    WritePNG(picture, file);
    return file.GetBytes();
}

/// A .bmp file of 24 bits without a colour table: the form that every program reads.
std::vector<BYTE> EncodeBMP(const Bitmap& picture) {
    constexpr std::size_t kHeaders = 14 + 40;
    const std::size_t stride = RowStride(picture.Width(), 24);
    const auto height = static_cast<std::size_t>(picture.Height());
    std::vector<BYTE> file(kHeaders + stride * height);
    const auto put32 = [&](std::size_t at, std::size_t value) {
        for (std::size_t i = 0; i < 4; ++i)
            file[at + i] = static_cast<BYTE>(value >> 8 * i);
    };
    file[0] = 'B';
    file[1] = 'M';
    put32(2, file.size());
    put32(10, kHeaders);
    put32(14, 40);
    put32(18, static_cast<std::size_t>(picture.Width()));
    put32(22, height);
    file[26] = 1;   // planes
    file[28] = 24;  // bits per pixel
    put32(34, stride * height);
    const auto width = static_cast<std::size_t>(picture.Width());
    std::vector<BYTE> row(width * 4);
    for (int y = 0; y < picture.Height(); ++y) {
        detail::UnpackRow(picture, 0, picture.Height() - 1 - y, width, row.data());
        detail::PackRow(row.data(), width, 24,
                        file.data() + kHeaders + static_cast<std::size_t>(y) * stride);
    }
    return file;
}

}  // namespace

Clipboard::Clipboard() = default;
Clipboard::~Clipboard() = default;

Clipboard& Clipboard::Get() {
    static Clipboard clipboard;
    return clipboard;
}

bool Clipboard::SetPicture(const Bitmap& picture, std::vector<BYTE> dib, const char* display) {
    std::shared_ptr<ClipboardOwner> owner;
    if (display != nullptr) {
        std::vector<ClipboardForm> forms;
        forms.push_back({"image/png", EncodePNG(picture)});
        forms.push_back({"image/bmp", EncodeBMP(picture)});
        owner = ClipboardOwner::Make(display, std::move(forms));
    }
    const std::lock_guard lock(m_Mutex);
    m_DIB = std::move(dib);
    m_Owner = std::move(owner);
    return display == nullptr || m_Owner;
}

std::vector<BYTE> Clipboard::GetDIB() const {
    const std::lock_guard lock(m_Mutex);
    return m_DIB;
}

void Clipboard::Clear() {
    const std::lock_guard lock(m_Mutex);
    m_DIB.clear();
    m_Owner.reset();
}

bool Clipboard::IsOffered() const {
    const std::lock_guard lock(m_Mutex);
    return m_Owner != nullptr;
}

int Clipboard::ConnectionFd() const {
    const std::lock_guard lock(m_Mutex);
    return m_Owner ? m_Owner->Fd() : -1;
}

bool Clipboard::Pump() {
    const std::lock_guard lock(m_Mutex);
    if (m_Owner && !m_Owner->Pump()) m_Owner.reset();
    return m_Owner != nullptr;
}

bool Clipboard::ServeUntilTakenOver(int milliseconds) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (Pump()) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        if (milliseconds >= 0 && left <= 0) return false;
        std::shared_ptr<ClipboardOwner> owner;
        {
            const std::lock_guard lock(m_Mutex);
            owner = m_Owner;
        }
        if (owner) owner->Wait(milliseconds < 0 ? -1 : static_cast<int>(left));
    }
    return true;
}

}  // namespace varnel
