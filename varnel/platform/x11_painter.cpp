#include "varnel/platform/detail/x11_painter.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XShm.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <array>
#include <bit>
#include <cstring>
#include <vector>

#include "varnel/platform/detail/pixel_rows.h"
#include "varnel/platform/detail/put_pixels.h"

namespace varnel::detail {
namespace {

/// How one visual packs colours: for every 8-bit component, its bits in the pixel.
class PixelPacking {
 public:
    PixelPacking(const Visual& visual, int depth) {
        const std::uint32_t used = Fill(m_Red, visual.red_mask) | Fill(m_Green, visual.green_mask) |
                                   Fill(m_Blue, visual.blue_mask);
        // Bits of the depth without a colour are the coverage of windows that can be seen through.
        const std::uint32_t all = depth >= 32 ? ~0u : (1u << depth) - 1;
        m_Opaque = all & ~used;
        m_AsBitmaps =
            visual.red_mask == 0xFF0000 && visual.green_mask == 0xFF00 && visual.blue_mask == 0xFF;
    }

    /// Whether pixels are those of 32-bit bitmaps already, given 32 bits with the lowest first.
    bool AsBitmaps() const { return m_AsBitmaps; }

    std::uint32_t Pixel(const BYTE* bgra) const {
        return m_Red[bgra[2]] | m_Green[bgra[1]] | m_Blue[bgra[0]] | m_Opaque;
    }

 private:
    using Table = std::array<std::uint32_t, 256>;

    static std::uint32_t Fill(Table& table, unsigned long mask) {
        const auto bits = static_cast<std::uint32_t>(mask);
        const int shift = bits != 0 ? std::countr_zero(bits) : 0;
        const std::uint64_t most = bits >> shift;
        for (std::size_t i = 0; i < table.size(); ++i)
            table[i] = static_cast<std::uint32_t>((i * most + 127) / 255) << shift;
        return bits;
    }

    Table m_Red{};
    Table m_Green{};
    Table m_Blue{};
    std::uint32_t m_Opaque = 0;
    bool m_AsBitmaps = false;
};

/// An image in the server's form; its pixels are in shared memory or in this process alone.
class ServerImage {
 public:
    ServerImage(X11Connection& connection, Visual* visual, int depth)
        : m_Connection(connection), m_Visual(visual), m_Depth(depth) {
        connection.Do([&](Display* d) { m_Shared = XShmQueryExtension(d) != 0; });
    }
    ~ServerImage() { Free(); }
    ServerImage(const ServerImage&) = delete;
    ServerImage& operator=(const ServerImage&) = delete;

    bool IsShared() const { return m_Shared; }
    XImage* Get() const { return m_Image; }

    /// Makes room for width x height pixels. False when that is not possible.
    bool Reserve(int width, int height) {
        if (m_Image != nullptr && m_Image->width >= width && m_Image->height >= height) return true;
        Free();
        if (m_Shared && AllocateShared(width, height)) return true;
        // A server on another machine has the extension too, but cannot read this memory.
        m_Shared = false;
        return AllocatePlain(width, height);
    }

    void Send(Display* display, Drawable window, GC gc, const CopySpan& h, const CopySpan& v) {
        const auto width = static_cast<unsigned>(h.count);
        const auto height = static_cast<unsigned>(v.count);
        if (m_Shared)
            XShmPutImage(display, window, gc, m_Image, 0, 0, h.target, v.target, width, height,
                         False);
        else
            XPutImage(display, window, gc, m_Image, 0, 0, h.target, v.target, width, height);
    }

 private:
    std::size_t Bytes() const {
        return static_cast<std::size_t>(m_Image->bytes_per_line) *
               static_cast<std::size_t>(m_Image->height);
    }

    bool AllocateShared(int width, int height) {
        m_Image = XShmCreateImage(m_Connection.Get(), m_Visual, static_cast<unsigned>(m_Depth),
                                  ZPixmap, nullptr, &m_Segment, static_cast<unsigned>(width),
                                  static_cast<unsigned>(height));
        if (m_Image == nullptr) return false;
        m_Segment.shmid = shmget(IPC_PRIVATE, Bytes(), IPC_CREAT | 0600);
        if (m_Segment.shmid >= 0) {
            void* memory = shmat(m_Segment.shmid, nullptr, 0);
            // NOLINTNEXTLINE(performance-no-int-to-ptr): how shmat says that it failed
            const bool mapped = memory != reinterpret_cast<void*>(-1);
            m_Segment.shmaddr = m_Image->data = mapped ? static_cast<char*>(memory) : nullptr;
            m_Segment.readOnly = True;
            const bool attached =
                mapped && m_Connection.Do([&](Display* d) { XShmAttach(d, &m_Segment); });
            // From here on it lives as long as it is attached, and leaves nothing behind.
            shmctl(m_Segment.shmid, IPC_RMID, nullptr);
            if (attached) return true;
            if (mapped) shmdt(memory);
        }
        DestroyImage();
        return false;
    }

    bool AllocatePlain(int width, int height) {
        m_Image = XCreateImage(m_Connection.Get(), m_Visual, static_cast<unsigned>(m_Depth),
                               ZPixmap, 0, nullptr, static_cast<unsigned>(width),
                               static_cast<unsigned>(height), 32, 0);
        if (m_Image == nullptr) return false;
        m_Plain.resize(Bytes());
        m_Image->data = m_Plain.data();
        return true;
    }

    void DestroyImage() {
        m_Image->data = nullptr;  // never Xlib's to free
        XDestroyImage(m_Image);
        m_Image = nullptr;
    }

    void Free() {
        if (m_Image == nullptr) return;
        if (m_Shared) {
            m_Connection.Do([&](Display* d) { XShmDetach(d, &m_Segment); });
            shmdt(m_Segment.shmaddr);
        }
        DestroyImage();
        m_Plain.clear();
    }

    X11Connection& m_Connection;
    Visual* m_Visual;
    int m_Depth;
    bool m_Shared = false;
    XShmSegmentInfo m_Segment{};
    std::vector<char> m_Plain;
    XImage* m_Image = nullptr;
};

class Painter : public X11Painter {
 public:
    Painter(std::shared_ptr<X11Connection> connection, Window window, const XWindowAttributes& a)
        : m_Connection(std::move(connection)),
          m_Window(window),
          m_Packing(*a.visual, a.depth),
          m_Image(*m_Connection, a.visual, a.depth),
          m_BitsPerPixel(a.depth <= 16 ? 16 : 32) {}

    bool Put(int x, int y, int width, int height, const Bitmap& source, int sourceX,
             int sourceY) override {
        int windowWidth = 0;
        int windowHeight = 0;
        Size(windowWidth, windowHeight);
        if (windowWidth == 0) return false;
        const CopySpan h = ClipCopy(x, sourceX, width, windowWidth, source.Width());
        const CopySpan v = ClipCopy(y, sourceY, height, windowHeight, source.Height());
        if (h.count == 0 || v.count == 0) return true;
        if (!m_Image.Reserve(h.count, v.count)) return false;
        for (int row = 0; row < v.count; ++row)
            Pack(source, h, v.source + row, row);
        return m_Connection->Do([&](Display* d) {
            // Made each time: one that is kept could not be freed once the server is gone.
            const GC gc = XCreateGC(d, m_Window, 0, nullptr);
            m_Image.Send(d, m_Window, gc, h, v);
            XFreeGC(d, gc);
        });
    }

    void Size(int& width, int& height) override {
        XWindowAttributes a{};
        const bool alive =
            m_Connection->Do([&](Display* d) { XGetWindowAttributes(d, m_Window, &a); });
        width = alive ? a.width : 0;
        height = alive ? a.height : 0;
    }

    int BitsPerPixel() const override { return m_BitsPerPixel; }
    bool UsesSharedMemory() const override { return m_Image.IsShared(); }

 private:
    void Pack(const Bitmap& source, const CopySpan& h, int sourceRow, int row) {
        XImage& image = *m_Image.Get();
        auto* out = reinterpret_cast<BYTE*>(image.data) +
                    static_cast<std::size_t>(row) * static_cast<std::size_t>(image.bytes_per_line);
        const auto count = static_cast<std::size_t>(h.count);
        const int bytes = image.bits_per_pixel / 8;
        const bool lowestFirst = image.byte_order == LSBFirst;
        if (source.BitsPerPixel() == 32 && bytes == 4 && lowestFirst && m_Packing.AsBitmaps()) {
            std::memcpy(out, source.RowFromTop(sourceRow) + static_cast<std::size_t>(h.source) * 4,
                        count * 4);
            return;
        }
        m_Row.resize(count * 4);
        UnpackRow(source, h.source, sourceRow, count, m_Row.data());
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint32_t pixel = m_Packing.Pixel(m_Row.data() + 4 * i);
            for (int b = 0; b < bytes; ++b)
                *out++ = static_cast<BYTE>(pixel >> 8 * (lowestFirst ? b : bytes - 1 - b));
        }
    }

    std::shared_ptr<X11Connection> m_Connection;
    Window m_Window;
    PixelPacking m_Packing;
    ServerImage m_Image;
    int m_BitsPerPixel;
    std::vector<BYTE> m_Row;
};

}  // namespace

std::unique_ptr<X11Painter> X11Painter::Make(std::shared_ptr<X11Connection> connection,
                                             unsigned long window) {
    XWindowAttributes a{};
    const bool found = connection->Do([&](Display* d) { XGetWindowAttributes(d, window, &a); });
    if (!found || a.c_class != InputOutput || a.visual == nullptr ||
        (a.visual->c_class != TrueColor && a.visual->c_class != DirectColor) || a.depth < 8)
        return nullptr;
    return std::make_unique<Painter>(std::move(connection), window, a);
}

}  // namespace varnel::detail
