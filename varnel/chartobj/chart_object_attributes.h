// The attributes of a chart object, each once with its default. They are private to CChartObj3D,
// which tells what they mean at the operations that set them.
#pragma once

#include <memory>
#include <vector>

#include "varnel/chartobj/chart_codes.h"
#include "varnel/chartobj/contour_style.h"
#include "varnel/chartobj/shared_array.h"
#include "varnel/foundation/colors.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"

namespace varnel {

class CPolysurface;

namespace detail {

class HidingSurfaces;

/// What the record holds, and what InitChartObjDefaults sets afresh.
struct ChartObjectSaved {
    // Placement, in data units.
    double m_ConstValue = 0.0;  ///< of a 2.5D chart along its depth axis, or of a projection
    double m_BaseValue = 0.0;   ///< from which bars and areas rise
    double m_RelSize = 1.0;     ///< of symbols (in tenths of a device unit) and texts
    double m_DepthWidth = 1.0;
    double m_IndWidth = 1.0;
    double m_FillGap = 0.0016;             ///< share of the independent axis's working range
    double m_OutlineWidth = 1.0;           ///< pixels
    double m_PlaneThicknessFactor = 0.02;  ///< share of the working range of z
    RGBDType m_FillColor{0.0, 0.0, 1.0, 1.0};
    RGBDType m_OutlineColor{0.0, 0.0, 0.0, 1.0};
    RGBDType m_LineColor{0.0, 0.0, 0.0, 1.0};  ///< of price charts
    int m_Symbol = SYMBOL_NONE;
    int m_Symbol2 = SYMBOL_NONE;  ///< of closing prices
    int m_NumDataPnts = 0;
    // What was stored last; they tell the reader of a record which arrays follow.
    int m_NumDepData2 = 0;
    int m_NumBarHeights = 0;
    int m_Num3DPoints = 0;
    int m_NumGroupColors = 0;
    int m_NumSegmentColors = 0;
    int m_NumDataStrings = 0;
    int m_bPolysurface = 0;
    int m_NumGroups = 0;
    int m_LineWidth = 1;  ///< pixels
    int m_LineStyle = 0;
    int m_IndJustify = WIDTH_STARTS;
    int m_DepJustify = WIDTH_STARTS;  ///< of m_IndWidth in price and box charts
    int m_DepthJustify = WIDTH_STARTS;
    int m_IndAxis = INDAXIS_X;
    int m_ProjectionPlane = PROJECTION_ALONG_Z;
    int m_TextPlane = 1;  ///< x-z
    int m_GroupType = GROUPS_SIDE_BY_SIDE;
    int m_ChartType = 0;
    int m_NumContours = 0;
    int m_ColorMode = 1;         ///< lit
    int m_ContourLabelFlag = 0;  ///< kept, without effect
    int m_SegmentColorMode = 0;
    int m_Clipping = 0;
    int m_OutlineMode = 1;
    int m_ComboChartFlags[6] = {};  ///< parts of price and box charts
    int m_Enable = 1;
    SharedArray<double> m_pIndData;  ///< of contour charts, the levels
    SharedArray<double> m_pDepData;
    SharedArray<double> m_pGroupData;
    SharedArray<double> m_pDepData2;
    SharedArray<double> m_pBarHeights;
    SharedArray<point3Dtype> m_p3DPoints;
    SharedArray<RGBDType> m_pGroupColors;
    SharedArray<RGBDType> m_pSegmentColors;  ///< of contour charts, the levels' colours
    std::shared_ptr<CPolysurface> m_pPolysurface;
    SharedArray<CString> m_pDataStrings;
};

/// What was computed for an object and is computed anew for its copies.
template <class T>
struct Cache {
    std::shared_ptr<T> kept;

    Cache() = default;
    Cache(const Cache&) {}
    Cache& operator=(const Cache&) {
        kept.reset();
        return *this;
    }
    ~Cache() = default;
};

/// Attributes beyond the plain record, each of which leaves everything as it was by default.
struct ChartObjectAdded {
    int m_ExactExtents = 0;
    int m_SegmentOutlines = 1;
    int m_CandleStyle = 0;
    int m_Contours = 0;  ///< 1: as the style below
    double m_ContourLineWidth = ContourStyle().lineWidth;
    int m_ContourLineStyle = ContourStyle().lineStyle;
    int m_ContourOnSurface = ContourStyle().onSurface;
    int m_ContourLabels = ContourStyle().labels;
    double m_ContourLabelSize = ContourStyle().labelSize;
    double m_ContourLabelSpacing = ContourStyle().labelSpacing;
    std::vector<double> m_ErrorsBelow;
    std::vector<double> m_ErrorsAbove;
    std::vector<point3Dtype> m_Components;  ///< of arrows
    double m_VectorScale = 1.0;
    int m_FlatHeads = 0;
    int m_Shading = 0;
    double m_CreaseAngle = 60.0;  ///< degrees
    int m_TwoSided = 0;
    int m_TextureLighting = 0;
    double m_TextureLeast = 0.75;  ///< factors on colours by value
    double m_TextureMost = 1.0;
    int m_Marker = 0;           ///< none
    double m_MarkerSize = 6.0;  ///< points
    int m_LineJoins = 0;
    double m_MitreLimit = 4.0;
    int m_LineStyleFactor = 1;
    double m_TextHalo = 0.0;               ///< ems
    RGBDType m_TextHaloColor{0, 0, 0, 0};  ///< transparent: the background's
    int m_TextBeside = 0;
    std::vector<point3Dtype> m_TextShifts;               ///< of the last layout, not saved
    std::shared_ptr<detail::HidingSurfaces> m_HiddenBy;  ///< while the chart is drawn
    double m_MedianWidth = 0.0;
};

}  // namespace detail
}  // namespace varnel
