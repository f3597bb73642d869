// A printer: pages of a PDF or PostScript file, and their hand-over to the print system.
//
// The device's pixels count from the upper left corner of the printable area, which is the paper
// less its margins; they are as large as the resolution says. What the library prints goes through
// GetDC(); each page is ended with EndPage, the file with Finish.
#pragma once

#include <memory>

#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"
#include "varnel/platform/device_context.h"

namespace varnel {

/// Paper and resolution. Lengths are millimetres.
struct PageSetup {
    enum class Format { Pdf, PostScript };

    Format format = Format::Pdf;
    double paperWidth = 210.0;  ///< upright; A4 by default
    double paperHeight = 297.0;
    bool landscape = false;  ///< turns the paper: the margins are those of the page as it is read
    double marginLeft = 10.0;
    double marginTop = 10.0;
    double marginRight = 10.0;
    double marginBottom = 10.0;
    int dotsPerInchX = 300;
    int dotsPerInchY = 300;

    /// Sets the paper to one of "A3", "A4", "A5", "Letter", "Legal". False for other names.
    VARNEL_API bool SetPaper(const CString& name);
};

class VARNEL_API Printer {
 public:
    /// A printer that writes a file. When the file cannot be made, or the margins leave nothing of
    /// the paper, there is no device: printing raises "Print DC Error".
    Printer(const CString& fileName, const PageSetup& setup);
    /// Without a Finish before, no file is left where that is possible.
    ~Printer();
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

    /// The device context of the current page, owned by the printer. It has no device (see
    /// CDC::GetSafeHdc) when the file could not be made, and after Finish.
    CDC* GetDC() { return &m_DC; }

    /// Ends the page; what is drawn next is on another one. False when the printer has failed.
    bool EndPage();

    /// Completes the file, with a page that was not ended. False when the medium failed (then there
    /// is no file) or this is not the first call.
    bool Finish();

    /// Hands a finished file to the print system's `lp`, for the printer of that name (empty: the
    /// default one). False when there is no print system or it refuses; then `why` tells in a
    /// sentence. Waits for lp's answer, not for the paper.
    static bool Submit(const CString& fileName, const CString& printer, CString& why);

 private:
    class Device;

    std::shared_ptr<Device> m_Device;
    CDC m_DC;
};

}  // namespace varnel
