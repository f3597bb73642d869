// CLegendObj3D: one entry of a legend, a text and a sample of what it stands for.
//
// The sample is a line in its style, a filled and outlined rectangle, or a symbol solid, turned and
// lit as in the chart. Entries hold copies of colours and styles and no pointer into a chart; their
// legend owns, places and draws them. Widths are in pixels.
#pragma once

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"

namespace varnel {

class CChart3D;
class CChartObj3D;

namespace detail {
class AddedFields;
class LegendPainter;
struct LegendRect;
}  // namespace detail

/// What stands beside the text of an entry; other codes are as LEGEND_NO_SAMPLE.
enum LegendSample3D : int {
    LEGEND_NO_SAMPLE = 0,
    LEGEND_LINE = 1,
    LEGEND_RECTANGLE = 2,
    LEGEND_SYMBOL = 3,
};

class VARNEL_API CLegendObj3D {
 public:
    static constexpr int kSignature = 811;

    /// How often InitLegendObjDefaults ran; the first word of every record.
    static int nSelfID;

    /// An empty text with a blue rectangle.
    CLegendObj3D();

    int GetSignature() const { return m_Signature; }

    /// Gives every attribute its default and counts the object.
    void InitLegendObjDefaults();

    // --- Samples -----------------------------------------------------------------------------

    /// Takes the sample from a chart object, which must be live ("Parameter Error",
    /// "InitLegendObj"). Line charts give a line, scatter charts their symbol, open-high-low-close
    /// and contour charts a line, all others a rectangle. Of a chart with groups this is group 0.
    void InitLegendObj(const CChartObj3D* object);
    /// The sample of one group of a grouped chart, as the chart draws that group; a group that it
    /// does not have is as above. The groups of open-high-low-close charts are 0 the symbol of the
    /// open, 1 the rising body, 2 the falling body, 3 the symbol of the close; those of
    /// box-and-whisker charts their six parts.
    void InitLegendObj(const CChartObj3D* object, int group);
    /// Takes over the light of a chart, for symbols; null does nothing.
    void SetLight(const CChart3D* chart);

    /// A line of a style 0..15 of the rendering context.
    void SetLineSample(int style, double width, const RGBDType& color);
    void SetRectangleSample(const RGBDType& fill, const RGBDType& outline);
    /// One of the symbols 10 cube, 11 plus, 12 diamond, 13 pyramid, 14 hourglass, 15 arrow; other
    /// codes draw nothing.
    void SetSymbolSample(int symbol, const RGBDType& fill, const RGBDType& outline);

    /// A marker over the sample: a MarkerCode (0: none, the default), its size in points, its
    /// colours and the width of its outline, 0 for none.
    void SetMarker(int kind, double size, const RGBDType& fill, const RGBDType& outline,
                   double outlineWidth);
    int GetMarker() const { return m_Added.marker; }

    /// Of lines: round ends and dashes as CChartObj3D has them with SetLineJoins, and the factor on
    /// the length of their dashes.
    void SetLineLook(int joins, int styleFactor);

    // --- Attributes --------------------------------------------------------------------------

    void SetString(const CString& text) { m_Saved.m_String = text; }
    CString GetString() const { return m_Saved.m_String; }
    void SetSampleType(int type) { m_Saved.m_SampleType = type; }
    int GetSampleType() const { return m_Saved.m_SampleType; }
    /// Of rectangles and symbols, and of lines.
    void SetFillColor(const RGBDType& color) { m_Saved.m_FillColor = color; }
    RGBDType GetFillColor() const { return m_Saved.m_FillColor; }
    void SetOutlineColor(const RGBDType& color) { m_Saved.m_OutlineColor = color; }
    RGBDType GetOutlineColor() const { return m_Saved.m_OutlineColor; }
    void SetOutlineWidth(double width) { m_Saved.m_OutlineWidth = width; }
    double GetOutlineWidth() const { return m_Saved.m_OutlineWidth; }
    /// Non-zero outlines rectangles and symbols.
    void SetOutlineMode(int on) { m_Saved.m_OutlineMode = on; }
    int GetOutlineMode() const { return m_Saved.m_OutlineMode; }
    void SetLineStyle(int style) { m_Saved.m_LineStyle = style; }
    int GetLineStyle() const { return m_Saved.m_LineStyle; }
    void SetLineWidth(double width) { m_Saved.m_LineWidth = width; }
    double GetLineWidth() const { return m_Saved.m_LineWidth; }
    void SetSymbol(int symbol) { m_Saved.m_Symbol = symbol; }
    int GetSymbol() const { return m_Saved.m_Symbol; }
    /// 0: symbols have flat colours; otherwise they are lit. Rectangles are always flat.
    void SetColorMode(int mode) { m_Saved.m_ColorMode = mode; }
    int GetColorMode() const { return m_Saved.m_ColorMode; }
    /// Degrees by which a symbol is turned about x, y and z, as a chart's transform.
    void SetRotation(const point3Dtype& degrees) { m_Saved.m_Rotation = degrees; }
    point3Dtype GetRotation() const { return m_Saved.m_Rotation; }
    /// 0: the entry is left out.
    void EnableLegendObj(int on) { m_Saved.m_Enable = on; }
    int GetLegendObjEnable() const { return m_Saved.m_Enable; }

    /// The place in the pile of a stacked chart's groups, 1 the lowest; 0: it is no such group.
    int GetPilePlace() const { return m_Added.pile; }

    /// Draws the sample into a rectangle of the legend at hand.
    void DrawSample(detail::LegendPainter& painter, const detail::LegendRect& place) const;

    /// Hands what the plain record lacks to the chart file.
    void VisitAdded(detail::AddedFields& fields);

    /// The record. A failing medium raises "Disk I/O Error"; a null file does nothing.
    void Save(HANDLE file);
    void Load(HANDLE file);

    template <class Archive>
    void Record(Archive& record);

 private:
    void TakeLine(const CChartObj3D& object, const RGBDType& color);
    void TakeFill(const CChartObj3D& object, const RGBDType& color);
    void TakeMarker(const CChartObj3D& object);
    void TakeSymbol(const CChartObj3D& object, int symbol, const RGBDType& color);
    void TakePriceGroup(const CChartObj3D& object, int group);
    void TakeBoxPart(const CChartObj3D& object, int part);

    /// The attributes, as records keep them.
    struct Saved {
        CString m_String;
        int m_SampleType = LEGEND_RECTANGLE;
        int m_LineStyle = 0;
        int m_Symbol = 0;
        int m_ColorMode = 1;
        int m_OutlineMode = 1;
        int m_Enable = 1;
        double m_LineWidth = 1.0;  ///< pixels
        double m_OutlineWidth = 1.0;
        RGBDType m_FillColor = {0.0, 0.0, 1.0, 1.0};
        RGBDType m_OutlineColor = {0.0, 0.0, 0.0, 1.0};
        // A view from above and from the side, and the light that charts have.
        point3Dtype m_Rotation = {-20.0, 0.0, 25.0, 0.0};
        point3Dtype m_LightPosition = {0.0, 1.0, 1.0, 0.0};
        RGBDType m_DiffuseLight = {1.0, 1.0, 1.0, 1.0};
        RGBDType m_AmbientLight = {0.4, 0.4, 0.4, 1.0};
    };

    /// The attributes that records do not have.
    struct Added {
        int marker = 0;
        double markerSize = 6.0;  ///< points
        RGBDType markerFill = {0.0, 0.0, 1.0, 1.0};
        RGBDType markerOutline = {0.0, 0.0, 0.0, 1.0};
        double markerOutlineWidth = 0.0;
        int lineJoins = 0;
        int lineStyleFactor = 1;
        int pile = 0;  ///< place in a pile of groups, 1 the lowest; 0: in none
    };

    Saved m_Saved;
    Added m_Added;
    int m_Signature = kSignature;
};

}  // namespace varnel
