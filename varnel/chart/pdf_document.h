// PdfDocument: several views in one PDF file, a page each, as vectors with selectable text.
#pragma once

#include <memory>

#include "varnel/chart/page_size.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"

namespace varnel {

class CChartView3D;

namespace detail {
class PdfWriter;
}

class VARNEL_API PdfDocument {
 public:
    /// Prepares the file; one that is there keeps its content until Close. Raises "Error Opening
    /// File for Output" (class of the view, "PdfDocument").
    explicit PdfDocument(const CString& fileName);
    /// Without Close, nothing is left of the document.
    ~PdfDocument();
    PdfDocument(const PdfDocument&) = delete;
    PdfDocument& operator=(const PdfDocument&) = delete;

    /// Adds a page that shows the view as it stands, in millimetres; 0, the default: 96 pixels of
    /// the view to the inch. The errors of CChartView3D::SaveToPDF, with the operation "AddPage".
    void AddPage(CChartView3D& view, double width = 0.0, double height = 0.0);
    void AddPage(CChartView3D& view, const PageSize& page) {
        AddPage(view, page.width, page.height);
    }

    /// Completes the file. "Disk I/O Error" ("Close") when its medium fails.
    void Close();

 private:
    std::unique_ptr<File> m_File;
    std::unique_ptr<detail::PdfWriter> m_Writer;
};

}  // namespace varnel
