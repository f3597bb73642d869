// Pages of a PDF or PostScript file that consist of areas, lines and text.
#pragma once

#include <memory>

#include "varnel/foundation/file.h"
#include "varnel/platform/detail/page_canvas.h"

namespace varnel::detail {

class PdfWriter {
 public:
    /// Writes to a file, which must outlive this; FileException when its medium fails.
    explicit PdfWriter(File& file);
    ~PdfWriter();
    PdfWriter(const PdfWriter&) = delete;
    PdfWriter& operator=(const PdfWriter&) = delete;

    /// Starts a page of `pageWidth` x `pageHeight` points (1/72 inch) that shows a picture of
    /// `width` x `height` pixels over all of it. The canvas is valid until the next page or Finish.
    PageCanvas& BeginPage(double pageWidth, double pageHeight, double width, double height);

    /// Completes the file's bytes; the file itself is committed by its owner. Throws FileException
    /// when the medium failed and std::bad_alloc when memory did.
    void Finish();

 private:
    struct Impl;
    std::unique_ptr<Impl> m_Impl;
};

}  // namespace varnel::detail
