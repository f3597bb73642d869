#include "varnel/platform/detail/pdf_document.h"

#include <cairo-pdf.h>
#include <cairo.h>

#include <new>

#include "varnel/foundation/detail/progress.h"
#include "varnel/platform/detail/cairo_canvas.h"

namespace varnel::detail {
namespace {

/// Where cairo writes to. Nothing may be thrown through it.
struct Output {
    File* file = nullptr;
    bool stopped = false;  ///< by the host
};

cairo_status_t WriteToFile(void* output, const unsigned char* bytes, unsigned int size) {
    auto& out = *static_cast<Output*>(output);
    if (out.stopped) return CAIRO_STATUS_WRITE_ERROR;
    try {
        Progress(0.0, 1.0);
        out.file->Write(bytes, size);
        return CAIRO_STATUS_SUCCESS;
    } catch (const Stopped&) {
        out.stopped = true;
    } catch (const FileException&) {
    }
    return CAIRO_STATUS_WRITE_ERROR;
}

struct Deleter {
    void operator()(cairo_surface_t* p) const { cairo_surface_destroy(p); }
    void operator()(cairo_t* p) const { cairo_destroy(p); }
};
template <class T>
using Owned = std::unique_ptr<T, Deleter>;

}  // namespace

struct PdfWriter::Impl {
    Output output;
    Owned<cairo_surface_t> surface;
    Owned<cairo_t> page;
    std::unique_ptr<PageCanvas> canvas;
};

PdfWriter::PdfWriter(File& file) : m_Impl(std::make_unique<Impl>()) {
    m_Impl->output.file = &file;
}

PdfWriter::~PdfWriter() = default;

PageCanvas& PdfWriter::BeginPage(double pageWidth, double pageHeight, double width, double height) {
    Impl& impl = *m_Impl;
    if (impl.page) cairo_show_page(impl.page.get());
    impl.page.reset();
    if (!impl.surface)
        impl.surface.reset(
            cairo_pdf_surface_create_for_stream(WriteToFile, &impl.output, pageWidth, pageHeight));
    else
        cairo_pdf_surface_set_size(impl.surface.get(), pageWidth, pageHeight);
    impl.page.reset(cairo_create(impl.surface.get()));
    if (cairo_status(impl.page.get()) == CAIRO_STATUS_NO_MEMORY) throw std::bad_alloc();
    cairo_scale(impl.page.get(), pageWidth / width, pageHeight / height);
    impl.canvas = MakeCairoCanvas(impl.page.get(), height);
    return *impl.canvas;
}

void PdfWriter::Finish() {
    Impl& impl = *m_Impl;
    impl.canvas.reset();
    if (impl.page) cairo_show_page(impl.page.get());
    const cairo_status_t drawn = impl.page ? cairo_status(impl.page.get()) : CAIRO_STATUS_SUCCESS;
    impl.page.reset();
    if (!impl.surface) return;
    cairo_surface_finish(impl.surface.get());
    const cairo_status_t written = cairo_surface_status(impl.surface.get());
    impl.surface.reset();
    if (impl.output.stopped) throw Stopped();
    if (drawn == CAIRO_STATUS_NO_MEMORY || written == CAIRO_STATUS_NO_MEMORY)
        throw std::bad_alloc();
    if (drawn != CAIRO_STATUS_SUCCESS || written != CAIRO_STATUS_SUCCESS) throw FileException();
}

}  // namespace varnel::detail
