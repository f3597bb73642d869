// CHeader3D: two titles at the top and a footer at the bottom of a view or of a chart.
//
// The texts face the viewer and are centred; they live in the device coordinates of the current
// viewport, -1..1, under a transform of the header's own. The owner sets the aspect and, for a
// chart, the font height factor before each drawing.
#pragma once

#include <memory>

#include "varnel/axes/text_object.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/types.h"
#include "varnel/transform/transform.h"

namespace varnel {

class COpenGL;

namespace detail {
class AddedFields;
}

class VARNEL_API CHeader3D {
 public:
    static constexpr int kSignature = 1212;

    /// How many headers were made; the first word of every record.
    static int nSelfID;

    /// Defaults alone: texts can be set, nothing is drawn until InitHeaders. A failing allocation
    /// raises "Object New Error" ("InitHeaderDefaults").
    CHeader3D();
    /// Defaults, then InitHeaders.
    explicit CHeader3D(COpenGL* gl);
    ~CHeader3D();
    CHeader3D(const CHeader3D&) = delete;
    CHeader3D& operator=(const CHeader3D&) = delete;

    int GetSignature() const { return m_Signature; }

    /// Binds the header to a live rendering context, which is not owned ("OpenGL Parameter Error"),
    /// with a font, and creates its transform ("Object New Error").
    void InitHeaders(COpenGL* gl);

    void SetTitle1(const CString& text) { m_pTitle1->SetString(text); }
    void SetTitle2(const CString& text) { m_pTitle2->SetString(text); }
    void SetFooter(const CString& text) { m_pFooter->SetString(text); }
    CString GetTitle1() const { return m_pTitle1->GetString(); }
    CString GetTitle2() const { return m_pTitle2->GetString(); }
    CString GetFooter() const { return m_pFooter->GetString(); }

    /// The colour of all three texts. Default black.
    void SetTextColor(const RGBDType& color);
    RGBDType GetTextColor() const { return m_pTitle1->GetColor(); }
    /// 0: nothing is drawn.
    void EnableHeader(int on) { m_Saved.enable = on; }
    int GetHeaderEnable() const { return m_Saved.enable; }
    /// Height over width of the area drawn to: what keeps letters from being stretched.
    void SetViewAspect(double aspect) { m_Saved.viewAspect = aspect; }
    /// Factor on the height of the texts.
    void SetFontHeightSF(double factor) { m_Saved.fontHeightSF = factor; }
    double GetFontHeightSF() const { return m_Saved.fontHeightSF; }
    /// The same factor, by the name that a chart calls it.
    void SetRelSize(double factor) { m_Saved.fontHeightSF = factor; }
    /// The sizes of the two titles and of the footer in terms of the chart's text. Default 1 each.
    void SetTextSizes(double title1, double title2, double footer);
    double GetTitle1Size() const { return m_pTitle1->GetCharSize(); }
    double GetTitle2Size() const { return m_pTitle2->GetCharSize(); }
    double GetFooterSize() const { return m_pFooter->GetCharSize(); }
    /// 1: a text that is too wide is drawn smaller, so that it ends at the edges' margins. Not
    /// saved; the owner sets it.
    void SetFitWidth(int on) { m_FitWidth = on; }
    /// Where the middle of the texts stands, -1 the left edge, 1 the right one. A text that would
    /// leave the edges' margins there stands as near as it can. Not saved; default 0.
    void SetCenter(double center) { m_Center = center; }
    /// From the edges, which are at -1 and 1. Default 0.05.
    void SetMargin(double margin) { m_Saved.margin = margin; }
    double GetMargin() const { return m_Saved.margin; }
    /// Stored and saved only.
    void SetFontSize(double size) { m_Saved.fontSize = size; }
    double GetFontSize() const { return m_Saved.fontSize; }

    /// Takes over another header's texts and attributes, not what it is bound to.
    void CopyFrom(CHeader3D& other);

    /// Draws the texts that are not empty; without a first title the second one takes its place.
    void DrawHeader();

    /// The record, texts included. A failing medium raises "Disk I/O Error"; a null file does
    /// nothing.
    void Save(HANDLE file);
    void Load(HANDLE file);

    /// Hands what the plain record lacks, of this and of what it owns, to the chart file.
    void VisitAdded(detail::AddedFields& fields);

    template <class Archive>
    void Record(Archive& record);

 private:
    /// The header's own part of its record.
    struct Saved {
        int transformID = 0;   ///< of the header's own transform
        double margin = 0.05;  ///< from the edges, which are at -1 and 1
        double viewAspect = 1.0;
        double fontHeightSF = 1.0;
        double fontSize = 0.1;
        int enable = 1;
    };

    void InitHeaderDefaults();
    void DrawLine(CTextObj3D& text, double y, int yJustify) const;

    COpenGL* m_pOpenGL = nullptr;
    Saved m_Saved;
    int m_FitWidth = 0;
    double m_Center = 0.0;
    int m_Signature = kSignature;
    std::unique_ptr<CTransform3D> m_pTransform;
    std::unique_ptr<CTextObj3D> m_pTitle1;
    std::unique_ptr<CTextObj3D> m_pTitle2;
    std::unique_ptr<CTextObj3D> m_pFooter;
};

}  // namespace varnel
