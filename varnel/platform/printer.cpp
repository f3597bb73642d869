#include "varnel/platform/printer.h"

#include <cairo-pdf.h>
#include <cairo-ps.h>
#include <cairo.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <utility>

#include "varnel/foundation/detail/diagnose.h"
#include "varnel/platform/detail/cairo_canvas.h"
#include "varnel/platform/detail/pixel_rows.h"
#include "varnel/platform/files.h"

namespace varnel {
namespace {

constexpr double kPointsPerMillimetre = 72.0 / 25.4;
constexpr double kPointsPerInch = 72.0;
/// Pages beyond 100 m cannot be described in the files.
constexpr double kLongestPaper = 100000.0;
constexpr int kHighestResolution = 10000;

struct SurfaceDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

struct ContextDeleter {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using Context = std::unique_ptr<cairo_t, ContextDeleter>;

cairo_status_t WriteToFile(void* file, const unsigned char* bytes, unsigned int size) {
    try {
        static_cast<File*>(file)->Write(bytes, size);
        return CAIRO_STATUS_SUCCESS;
    } catch (const FileException&) {
        return CAIRO_STATUS_WRITE_ERROR;
    }
}

bool IsLength(double millimetres, double least) {
    return std::isfinite(millimetres) && millimetres >= least && millimetres <= kLongestPaper;
}

bool IsUsable(const PageSetup& s) {
    for (const double margin : {s.marginLeft, s.marginTop, s.marginRight, s.marginBottom})
        if (!IsLength(margin, 0.0)) return false;
    for (const int resolution : {s.dotsPerInchX, s.dotsPerInchY})
        if (resolution < 1 || resolution > kHighestResolution) return false;
    return IsLength(s.paperWidth, 1.0) && IsLength(s.paperHeight, 1.0);
}

int Pixels(double millimetres, int perInch) {
    return millimetres > 0 ? static_cast<int>(millimetres / 25.4 * perInch) : 0;
}

/// Part of a bitmap as cairo wants it.
Surface MakeImage(const Bitmap& source, const RECT& part) {
    const int width = part.right - part.left;
    const int height = part.bottom - part.top;
    Surface image(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
    if (cairo_surface_status(image.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
    cairo_surface_flush(image.get());
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(image.get()));
    unsigned char* bits = cairo_image_surface_get_data(image.get());
    std::vector<BYTE> row(static_cast<std::size_t>(width) * 4);
    for (int y = 0; y < height; ++y) {
        detail::UnpackRow(source, part.left, part.top + y, static_cast<std::size_t>(width),
                          row.data());
        unsigned char* out = bits + static_cast<std::size_t>(y) * stride;
        // cairo's pixels are native words.
        for (std::size_t i = 0; i < row.size(); i += 4) {
            const std::uint32_t pixel =
                0xFF000000u | row[i + 2] * 0x10000u | row[i + 1] * 0x100u | row[i];
            std::memcpy(out + i, &pixel, sizeof pixel);
        }
    }
    cairo_surface_mark_dirty(image.get());
    return image;
}

}  // namespace

bool PageSetup::SetPaper(const CString& name) {
    struct Paper {
        const char* name;
        double width;
        double height;
    };
    constexpr Paper kPapers[] = {{"A3", 297, 420},
                                 {"A4", 210, 297},
                                 {"A5", 148, 210},
                                 {"Letter", 215.9, 279.4},
                                 {"Legal", 215.9, 355.6}};
    for (const Paper& paper : kPapers) {
        if (name != paper.name) continue;
        paperWidth = paper.width;
        paperHeight = paper.height;
        return true;
    }
    return false;
}

/// A page; without a file it takes nothing.
class Printer::Device : public DeviceContext {
 public:
    Device(const CString& fileName, const PageSetup& setup) : m_Setup(setup) {
        if (!IsUsable(setup)) return;
        if (setup.landscape) std::swap(m_Setup.paperWidth, m_Setup.paperHeight);
        m_Width =
            Pixels(m_Setup.paperWidth - setup.marginLeft - setup.marginRight, setup.dotsPerInchX);
        m_Height =
            Pixels(m_Setup.paperHeight - setup.marginTop - setup.marginBottom, setup.dotsPerInchY);
        if (m_Width > 0 && m_Height > 0) Open(fileName);
    }

    bool IsOpen() const { return m_Page != nullptr; }

    int Caps(int code) const override {
        switch (code) {
            case HORZRES:
                return m_Width;
            case VERTRES:
                return m_Height;
            case BITSPIXEL:
                return 24;
            case PLANES:
                return 1;
            case LOGPIXELSX:
                return m_Setup.dotsPerInchX;
            case LOGPIXELSY:
                return m_Setup.dotsPerInchY;
            default:
                return 0;
        }
    }

    bool Put(int x, int y, int width, int height, const Bitmap& source, int sourceX,
             int sourceY) override {
        return Stretch({x, y, x + width, y + height}, source,
                       {sourceX, sourceY, sourceX + width, sourceY + height});
    }

    bool Stretch(const RECT& target, const Bitmap& source, const RECT& from) override;
    bool DrawVectors(const RECT& target, double width, double height,
                     const std::function<void(detail::PageCanvas&)>& draw) override;

    bool EndPage() {
        if (!m_Page) return false;
        cairo_show_page(m_Page.get());
        m_PageUsed = false;
        ++m_Pages;
        return IsWell();
    }

    bool Finish() {
        if (!m_Page) return false;
        if (m_PageUsed || m_Pages == 0) EndPage();
        m_Page.reset();
        cairo_surface_finish(m_Surface.get());
        const bool written = cairo_surface_status(m_Surface.get()) == CAIRO_STATUS_SUCCESS;
        m_Surface.reset();
        const std::unique_ptr<File> file = std::move(m_File);
        if (!written) return false;
        try {
            file->Commit();
        } catch (const FileException& failure) {
            detail::Diagnose("Finish", failure.what());
            return false;
        }
        return true;
    }

    ~Device() override {
        // The surface writes when it ends, so it must end before its file.
        m_Page.reset();
        m_Surface.reset();
    }

 private:
    void Open(const CString& fileName) {
        CString why;
        m_File = OpenOutputFile(fileName, &why);
        if (!m_File) {
            detail::Diagnose("Printer", why);
            return;
        }
        const double width = m_Setup.paperWidth * kPointsPerMillimetre;
        const double height = m_Setup.paperHeight * kPointsPerMillimetre;
        const bool pdf = m_Setup.format == PageSetup::Format::Pdf;
        m_Surface.reset(
            pdf ? cairo_pdf_surface_create_for_stream(WriteToFile, m_File.get(), width, height)
                : cairo_ps_surface_create_for_stream(WriteToFile, m_File.get(), width, height));
        m_Page.reset(cairo_create(m_Surface.get()));
        if (!IsWell()) {
            m_Page.reset();
            return;
        }
        // From here on a unit is a pixel of the printable area.
        cairo_translate(m_Page.get(), m_Setup.marginLeft * kPointsPerMillimetre,
                        m_Setup.marginTop * kPointsPerMillimetre);
        cairo_scale(m_Page.get(), kPointsPerInch / m_Setup.dotsPerInchX,
                    kPointsPerInch / m_Setup.dotsPerInchY);
    }

    bool IsWell() const { return cairo_status(m_Page.get()) == CAIRO_STATUS_SUCCESS; }

    PageSetup m_Setup;
    int m_Width = 0;
    int m_Height = 0;
    int m_Pages = 0;
    bool m_PageUsed = false;
    std::unique_ptr<File> m_File;
    Surface m_Surface;
    Context m_Page;
};

bool Printer::Device::Stretch(const RECT& target, const Bitmap& source, const RECT& from) {
    if (!m_Page || target.left >= target.right || target.top >= target.bottom || from.left < 0 ||
        from.top < 0 || from.left >= from.right || from.top >= from.bottom ||
        from.right > source.Width() || from.bottom > source.Height())
        return false;
    const Surface image = MakeImage(source, from);
    if (!image) return false;
    cairo_t* page = m_Page.get();
    cairo_save(page);
    cairo_rectangle(page, 0, 0, m_Width, m_Height);
    cairo_clip(page);
    cairo_translate(page, target.left, target.top);
    cairo_scale(page, (static_cast<double>(target.right) - target.left) / (from.right - from.left),
                (static_cast<double>(target.bottom) - target.top) / (from.bottom - from.top));
    cairo_set_source_surface(page, image.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(page), CAIRO_FILTER_NEAREST);
    cairo_rectangle(page, 0, 0, from.right - from.left, from.bottom - from.top);
    cairo_fill(page);
    cairo_restore(page);
    m_PageUsed = true;
    return IsWell();
}

bool Printer::Device::DrawVectors(const RECT& target, double width, double height,
                                  const std::function<void(detail::PageCanvas&)>& draw) {
    if (!m_Page || target.left >= target.right || target.top >= target.bottom) return false;
    cairo_t* page = m_Page.get();
    cairo_save(page);
    cairo_rectangle(page, 0, 0, m_Width, m_Height);
    cairo_clip(page);
    cairo_translate(page, target.left, target.top);
    cairo_scale(page, (static_cast<double>(target.right) - target.left) / width,
                (static_cast<double>(target.bottom) - target.top) / height);
    draw(*detail::MakeCairoCanvas(page, height));
    cairo_restore(page);
    m_PageUsed = true;
    return IsWell();
}

Printer::Printer(const CString& fileName, const PageSetup& setup)
    : m_Device(std::make_shared<Device>(fileName, setup)) {
    if (m_Device->IsOpen()) m_DC = CDC(m_Device);
}

Printer::~Printer() = default;

bool Printer::EndPage() {
    return m_Device->EndPage();
}

bool Printer::Finish() {
    m_DC.DeleteDC();
    return m_Device->Finish();
}

}  // namespace varnel
