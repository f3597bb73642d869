// CChart3D: one chart in a view, a rectangle of the view with its own background, border, light and
// colour table, and with the transforms, axes, data sets, texts, solids and bitmap planes that it
// owns, draws in a fixed order, saves and loads.
//
// Objects come from the factories below and live until the chart is destroyed; the pointers that
// the factories return are not the caller's to delete. Positions in the view are fractions of its
// size from its lower left corner.
#pragma once

#include <array>
#include <memory>
#include <span>
#include <vector>

#include "varnel/chart/auto_frame.h"
#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/object_list.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"
#include "varnel/foundation/viewports.h"
#include "varnel/layout/fit.h"
#include "varnel/scale/auto_scale.h"

namespace varnel {

class CAuxObj3D;
class CAxes3D;
class CChartObj3D;
class CChartView3D;
class CDIBObj3D;
class CHeader3D;
class COpenGL;
class CPolysurface;
class CTextObj3D;
class CTransform3D;

namespace detail {
class AddedFields;
}

/// When the box is placed anew.
enum AutoFit3D : int {
    AUTOFIT_OFF = 0,   ///< by FitToView alone
    AUTOFIT_VIEW = 1,  ///< at every drawing
    AUTOFIT_TURN = 2,  ///< the same, in one size for all rotations about z: nothing pulsates
};

class VARNEL_API CChart3D {
 public:
    static constexpr int kSignature = 505;
    /// Entries of the texture colour table; 256 of them can be used.
    static constexpr int kTextureColors = 258;

    // --- Construction ------------------------------------------------------------------------

    /// Defaults alone; for loading.
    CChart3D();
    /// A chart of `view`, which must not be null ("CView Parameter Error", "InitChart3D").
    explicit CChart3D(CChartView3D* view);
    /// With a transform and axes over the given data limits.
    CChart3D(CChartView3D* view, const point3Dtype& min, const point3Dtype& max);
    /// With a transform, returned through `t` when that is not null.
    CChart3D(CChartView3D* view, const point3Dtype& min, const point3Dtype& max, CTransform3D** t);
    /// With a transform and axes, both returned.
    CChart3D(CChartView3D* view, const point3Dtype& min, const point3Dtype& max, CTransform3D** t,
             CAxes3D** a);
    /// Destroys what the chart owns. No object's destructor touches its transform.
    ~CChart3D();
    CChart3D(const CChart3D&) = delete;
    CChart3D& operator=(const CChart3D&) = delete;

    int GetSignature() const { return m_Signature; }

    /// Gives every attribute its default and creates the header ("Object New Error").
    void InitChartDefaults();
    /// Binds the chart to a view and its rendering context, and sends the light's colours.
    void InitChart3D(CChartView3D* view);

    // --- Factories ---------------------------------------------------------------------------
    //
    // The chart owns what they return. A failed allocation raises "Object New Error", a null or
    // missing transform "Transform Parameter Error", with the operation's name.

    CTransform3D* NewTransform();
    /// Scale limits in data units.
    CTransform3D* NewTransform(const point3Dtype& min, const point3Dtype& max);
    CAxes3D* NewAxes();
    CAxes3D* NewAxes(CTransform3D* t, const point3Dtype& min, const point3Dtype& max);
    /// Over the transform's own scale limits.
    CAxes3D* NewAxes(CTransform3D* t);
    /// Under the transform that was appended last.
    CAxes3D* NewAxes(const point3Dtype& min, const point3Dtype& max);
    CChartObj3D* NewChartObj();
    CChartObj3D* NewChartObj(CTransform3D* t);
    CTextObj3D* NewChartTextObj();
    CTextObj3D* NewChartTextObj(CTransform3D* t, const CString& text);
    /// Under the chart's first transform, as the other factories without one.
    CTextObj3D* NewChartTextObj(const CString& text);
    CAuxObj3D* NewAuxObj();
    /// A solid of the given shape code; its transform error names the operation "NewAUXObj".
    CAuxObj3D* NewAuxObj(CTransform3D* t, int shape);
    CAuxObj3D* NewAuxObj(int shape);
    CDIBObj3D* NewDIBObj();
    CDIBObj3D* NewDIBObj(CTransform3D* t, const CString& file);
    CDIBObj3D* NewDIBObj(const CString& file);

    /// The chart's first transform with this identifier, null when there is none.
    CTransform3D* MatchTransformID(int id) const;

    // --- Owned objects, in the order of their creation; null outside the list -----------------

    CHeader3D* GetHeader() const { return m_pHeader.get(); }
    CTransform3D* GetTransform(int index) const { return m_Objects.transforms.GetAt(index); }
    CAxes3D* GetAxes(int index) const { return m_Objects.axes.GetAt(index); }
    CChartObj3D* GetChartObj(int index) const { return m_Objects.objects.GetAt(index); }
    CTextObj3D* GetChartTextObj(int index) const { return m_Objects.texts.GetAt(index); }
    CAuxObj3D* GetAuxObj(int index) const { return m_Objects.solids.GetAt(index); }
    CDIBObj3D* GetDIBObj(int index) const { return m_Objects.pictures.GetAt(index); }
    int GetNumTransforms() const { return m_Objects.transforms.GetCount(); }
    int GetNumAxes() const { return m_Objects.axes.GetCount(); }
    int GetNumChartObjs() const { return m_Objects.objects.GetCount(); }
    int GetNumChartTextObjs() const { return m_Objects.texts.GetCount(); }
    int GetNumAuxObjs() const { return m_Objects.solids.GetCount(); }
    int GetNumDIBObjs() const { return m_Objects.pictures.GetCount(); }

    // --- Attributes --------------------------------------------------------------------------

    /// 0: the chart is not drawn, not even its background. Default 1.
    void EnableChart(int on) { m_Saved.chartEnable = on; }
    int GetChartEnable() const { return m_Saved.chartEnable; }
    void EnableBorder(int on) { m_Saved.borderEnable = on; }
    int GetBorderEnable() const { return m_Saved.borderEnable; }
    /// Width of the border in pixels. Default 1.
    void SetBorderThickness(double width) { m_Saved.borderThickness = width; }
    double GetBorderThickness() const { return m_Saved.borderThickness; }
    void SetBorderColor(const RGBDType& c) { m_Saved.borderColor = c; }
    RGBDType GetBorderColor() const { return m_Saved.borderColor; }
    void SetChartBkColor(const RGBDType& c) { m_Saved.bkColor = c; }
    RGBDType GetChartBkColor() const { return m_Saved.bkColor; }
    /// Scale of the chart's text: the height of an em in device units (the chart is 2 high).
    /// Default 0.1.
    void SetFontSize(double size) { m_Saved.fontSize = size; }
    double GetFontSize() const { return m_Saved.fontSize; }
    /// Further factor on the height of all text of the chart. Default 1.
    void SetFontHeightSF(double factor) { m_Saved.fontHeightSF = factor; }
    double GetFontHeightSF() const { return m_Saved.fontHeightSF; }
    /// Factor on the aspect of text, besides the aspect of the chart's viewport. Default 1.
    void SetViewAspect(double aspect) { m_Saved.viewAspect = aspect; }
    double GetViewAspect() const { return m_Saved.viewAspect; }
    /// Direction of the light, z up. Default (0, 1, 1).
    void SetLightPosition(const point3Dtype& p) { m_Saved.lightPosition = p; }
    point3Dtype GetLightPosition() const { return m_Saved.lightPosition; }
    /// LIGHT_DIFFUSE (4609) the diffuse colour, LIGHT_MODEL_AMBIENT (12345) the ambient one; others
    /// are ignored.
    void SetLightComponent(int code, const RGBDType& c);
    /// The same two; (0, 0, 0, 0) for any other code.
    RGBDType GetLightComponent(int code) const;

    /// One white light for this chart instead of that of the calls above: `direction` leads towards
    /// it as the viewer sees it, x right, y up, z towards the viewer, and stays when the chart
    /// turns. A surface has `ambient` of its colour everywhere and up to `diffuse` more in the
    /// light; `specular` is the brightness of a white highlight, the smaller the larger `shininess`
    /// (from 1) is. The defaults: a light over the viewer's left shoulder, no highlight.
    void SetLight(const point3Dtype& direction = {-0.45, 0.65, 0.8, 0.0}, double ambient = 0.35,
                  double diffuse = 0.75, double specular = 0.0, double shininess = 20.0);
    /// 1: no surface is brighter than its own colour, which one that faces the viewer has, and
    /// slopes show on all sides (COpenGL::SetLightLimit). Default 0.
    void SetLightLimit(int on) { m_Added.lightLimit = on; }
    int GetLightLimit() const { return m_Added.lightLimit; }
    /// The light of the calls above again.
    void ClearLight() { m_Added.viewLight = 0; }
    int HasLight() const { return m_Added.viewLight; }

    /// Which coordinate of a vertex is turned into a texture colour: TEXTURE_X (0), TEXTURE_Y (1),
    /// TEXTURE_VALUE (3) the value w, other numbers z; negative (the default, -1): the chart uses
    /// no texture.
    void SetTextureMode(int mode) { m_Saved.textureMode = mode; }
    int GetTextureMode() const { return m_Saved.textureMode; }
    /// Copies n colours for values from min to max; n outside 0..258 or a null array changes
    /// nothing.
    void SetTextureColorArray(const RGBDType* colors, double min, double max, int n);
    /// The same for as many colours as there are; more than 258 raise "Parameter Error".
    void SetTextureColorArray(std::span<const RGBDType> colors, double min, double max);
    /// Copies the valid colours and the range out; null pointers are skipped.
    void GetTextureColorArray(RGBDType* colors, double* min, double* max) const;
    int GetNumTextureColors() const { return m_Saved.numTextureColors; }
    /// Colours a surface in space by height, from its lowest polygon corner to its highest: gives
    /// the chart the 256 colours of a map of surface/color_map.h over the surface's range (in
    /// working coordinates, so call it after a change of the z axis's scale mode) and texture mode
    /// 2, and the object colour mode 2. A surface without a height range has the map's middle
    /// colour. False, and nothing is changed, for an unknown map, for what is no
    /// POLYSURFACECHART3D, and for a surface without a finite height. A chart has one set of
    /// colours: the last call holds.
    bool ColorSurfaceByHeight(CChartObj3D* surfaceObject, const CString& colorMap);
    /// The same by another quantity: the points of the surface take `values` as their w, one after
    /// the other (none given: those that they have), the range is that of w, and the texture mode
    /// is 3. Where some are not finite it sets SetNoDataGrey(1).
    bool ColorSurfaceByValue(CChartObj3D* surfaceObject, std::span<const double> values,
                             const CString& colorMap);

    /// Places the chart in the view, in fractions of the view's size.
    void SetChartPosition(const GLViewRType& p);
    GLViewRType GetChartPosition() const { return m_Saved.position; }
    /// The viewport in pixels of the view; drawing recomputes it from the position.
    void SetChartViewport(const GLViewportType& v);
    GLViewportType GetChartViewport() const { return m_Saved.viewport; }

    /// Hands the font factors to the context and to all transforms.
    void SetFontFactors();

    // --- Automatic scaling -------------------------------------------------------------------
    //
    // Round limits and tics from data. What is not finite is no data. Spans whose lengths do not
    // fit together raise "Parameter Error".

    /// Widens a range to round limits; `minorOnly` non-zero rounds to minor tics only. About a
    /// quarter of the axis stays empty on average, and a range that reaches below 0 and whose
    /// extent is just above a power of ten loses its lowest datum: -10.0001..0 gives -10..2.
    static void RoundAxis(double& min, double& max, int minorOnly);
    /// Chooses tics for a range: where they start, their spacing, how many make a major one and the
    /// decimals of the labels.
    static void CalcAxisTicMarks(double min, double max, double& ticOrigin, double& ticSpace,
                                 int& ticsPerMajor, int& decimals);
    /// The scale mode (ScaleMode) of axis 0..2 in the transforms that the AutoTransform calls make
    /// from now on. The limits of a logarithmic axis are whole decades, or 1, 2 or 5 times one
    /// where the data lie within a decade or `minorOnly` is not 0. Values of 0 and below are no
    /// data then, and are told as a diagnostic; without others the limits are 1..10. The depth
    /// of 2.5D data stays linear. Default linear; not saved.
    void SetAutoScaleMode(int axis, int mode);
    /// A new transform with the rounded limits of n points.
    CTransform3D* AutoTransform3D(const point3Dtype* pts, int n, int minorOnly);
    CTransform3D* AutoTransform3D(std::span<const point3Dtype> pts, int minorOnly);
    CTransform3D* AutoTransformPolysurface(CPolysurface* ps, int minorOnly);
    /// Limits for n values y over x drawn at depths 0..depth; orientation 1 puts x on the y axis,
    /// any other number on the x axis.
    static void MinMaxValues25D(const double* x, const double* y, int n, double depth,
                                int orientation, int minorOnly, point3Dtype& min, point3Dtype& max);
    static void MinMaxValues25D(std::span<const double> x, std::span<const double> y, double depth,
                                int orientation, int minorOnly, point3Dtype& min, point3Dtype& max);
    CTransform3D* AutoTransform25D(const double* x, const double* y, int n, double depth,
                                   int orientation, int minorOnly);
    CTransform3D* AutoTransform25D(std::span<const double> x, std::span<const double> y,
                                   double depth, int orientation, int minorOnly);
    /// Over nSets sets, each rounded on its own. The maximum never falls below 1e-100.
    CTransform3D* AutoTransformN25D(double** x, double** y, const int* counts, int nSets,
                                    double depth, int orientation, int minorOnly);
    CTransform3D* AutoTransformN25D(std::span<const std::span<const double>> x,
                                    std::span<const std::span<const double>> y, double depth,
                                    int orientation, int minorOnly);
    /// Over nGroups rows of n values that share x; `base` can only lower the minimum.
    CTransform3D* AutoTransformGroup25D(const double* x, const double* y, double base, int n,
                                        int nGroups, double depth, int orientation, int stacked,
                                        int minorOnly);
    CTransform3D* AutoTransformGroup25D(std::span<const double> x, std::span<const double> y,
                                        double base, int nGroups, double depth, int orientation,
                                        int stacked, int minorOnly);
    /// New axes over the transform's limits, with tics, labels and colours that show. Labels have
    /// the format whose texts are the shortest among those that show every value exactly and no two
    /// alike.
    CAxes3D* AutoAxes(CTransform3D* t);

    // --- Automatic charts -----------------------------------------------------------------------

    /// Gives the data sets of a transform of this chart all that makes them a chart: limits from
    /// the data, a view, axes that follow it, walls, grids, labels, titles, text sizes and layout.
    /// The transform's first axes are used, or new ones made; its data sets must have been set up,
    /// and after changes it can be called again. Data sets are lit on both sides, surfaces smoothly
    /// and under their colours, with the light of SetLight unless one is set; their extents are
    /// exact on every axis, and areas and ribbons have no lines inside. A null transform raises
    /// "Transform Parameter Error". What was chosen is in the transform, the axes, the data sets
    /// and the header, and can be changed there.
    Frame AutoFrame(CTransform3D* t, const FrameOptions& options = {});

    /// Places the box of each transform that has axes so that everything around it is inside the
    /// chart with a margin of 2 %, as large as that allows, for the rotation and the size that the
    /// view has now: CTransform3D::SetFit. Offset and chart rect that were set stay. Returns where
    /// the last box stands; its width is 0 when there are no axes.
    BoxPlacement FitToView();
    /// FitToView at every drawing (AutoFit3D). Default AUTOFIT_OFF.
    void SetAutoFit(int mode) { m_Added.autoFit = mode; }
    int GetAutoFit() const { return m_Added.autoFit; }
    /// 1: the size of the chart's text follows the smaller side of its viewport (TextSizesFor), and
    /// so do the widths of its axes, walls and grids, which are as given in a chart of 640 x 480;
    /// 0, the default: they are as set.
    void SetAutoText(int on) { m_Added.autoText = on; }
    int GetAutoText() const { return m_Added.autoText; }
    /// 1: axes, grids, outlines and all other lines of the chart have no gaps with antialiasing;
    /// see COpenGL::SetLineAreas. 0, the default: as OpenGL draws lines. AutoFrame sets 1.
    void SetLineAreas(int on) { m_Added.lineAreas = on; }
    int GetLineAreas() const { return m_Added.lineAreas; }
    /// 1: what has no value to be coloured by is grey; see COpenGL::SetNoDataGrey. Default 0;
    /// AutoFrame sets 1, and ColorSurfaceByValue where values are missing.
    void SetNoDataGrey(int on) { m_Added.noDataGrey = on; }
    int GetNoDataGrey() const { return m_Added.noDataGrey; }
    /// The sizes that text which follows the viewport has: those of a frame whose smaller side lies
    /// halfway (their geometric mean) between those of the chart and of the view, so that charts
    /// beside each other can be read.
    TextSizes GetTextSizes() const;
    /// Above 0: FitToView makes the box as wide and high as the viewport allows, and its third edge
    /// this fraction of its width deep (FitOptions::fillDepth). 0, the default: it keeps its
    /// proportions.
    void SetFillDepth(double depth) { m_Added.fillDepth = depth; }
    double GetFillDepth() const { return m_Added.fillDepth; }
    /// Pixels at the chart's edges that FitToView leaves to others, legends for one. Not saved.
    void SetReservedRoom(double left, double bottom, double right, double top);
    /// The same, one number an edge.
    const PixelRect& GetReservedRoom() const { return m_Reserved; }
    /// What titles and reserved room left of the chart for the last FitToView, and what its last
    /// box covers, in pixels of the view from its lower left corner; empty before.
    PixelRect GetPlotArea() const { return m_PlotArea; }
    /// Where a legend to the right of the chart begins: beside one that is narrower than its room.
    double GetCoveredRight() const { return m_CoveredRight; }
    PixelRect GetBoxArea() const { return m_BoxArea; }
    /// Makes the transforms map data to pixels as the next drawing will.
    void UpdateTransforms();
    /// Of a box that fills its frame (SetFillDepth), the part of that which lies within its front
    /// and its back; of others all of it. For legends in the plot.
    PixelRect GetInnerArea() const { return m_InnerArea; }

    // --- Drawing, called by the view; and persistence ------------------------------------------

    /// Draws the chart into the context's image: background, border, header, axes, data, solids,
    /// bitmap planes, texts.
    void DrawChart();
    void SetupOpenGL();
    void DrawBorder();
    void DrawHeader();
    void DrawAxes();
    void DrawChartObjs();
    void DrawAuxObjects();
    void DrawDIBObjects();
    void DrawChartText();

    /// Writes the record; a null file does nothing, a failing medium raises "Disk I/O Error".
    /// Identifiers of transforms are made unique within the chart first. An object without a
    /// transform is saved, and told: loading it raises "Transform Parameter Error".
    void Save(HANDLE file);
    /// Reads the record, which takes the place of everything that the chart has; after an error the
    /// chart is as it was. The chart must be bound to a view (InitChart3D) for its objects to be
    /// bound.
    void Load(HANDLE file);

    static int nSelfID;  ///< charts made so far; saved and restored

    /// Hands what the plain record lacks, of this and of what it owns, to the chart file.
    void VisitAdded(detail::AddedFields& fields);

 private:
    /// The chart's own part of its record.
    struct Saved {
        double viewAspect = 1.0;      ///< factor on the aspect of text
        double viewportAspect = 1.0;  ///< height by width of the viewport
        double fontHeightSF = 1.0;
        double fontSize = 0.1;
        double spare = 0.05;           ///< in the record only
        double borderThickness = 1.0;  ///< pixels
        RGBDType borderColor{0.0, 0.0, 0.0, 1.0};
        int chartEnable = 1;
        int borderEnable = 1;
        GLViewportType viewport{0, 0, 100, 100};   ///< pixels of the view
        GLViewRType position{0.0, 0.0, 1.0, 1.0};  ///< fractions of the view
        point3Dtype lightPosition{0.0, 1.0, 1.0, 0.0};
        RGBDType ambientLight{0.4, 0.4, 0.4, 1.0};
        RGBDType diffuseLight{1.0, 1.0, 1.0, 1.0};
        RGBDType bkColor{1.0, 1.0, 1.0, 1.0};
        std::array<RGBDType, kTextureColors> textureColors = Black();
        double textureMin = 0.0;  ///< the values of the first and the last colour
        double textureMax = 1.0;
        int textureMode = -1;
        int numTextureColors = 0;

        static std::array<RGBDType, kTextureColors> Black() {
            std::array<RGBDType, kTextureColors> colors;
            colors.fill({0.0, 0.0, 0.0, 1.0});
            return colors;
        }
    };

    /// What a chart owns, but for its header. Objects that refer to transforms go first.
    struct Objects {
        ObjectList<CTransform3D> transforms;
        ObjectList<CTextObj3D> texts;
        ObjectList<CDIBObj3D> pictures;
        ObjectList<CAuxObj3D> solids;
        ObjectList<CChartObj3D> objects;
        ObjectList<CAxes3D> axes;
    };

    /// What the record lacks.
    struct Added {
        int autoFit = AUTOFIT_OFF;
        int lineAreas = 0;
        int noDataGrey = 0;
        int autoText = 0;
        double fillDepth = 0.0;
        int lightLimit = 0;
        int viewLight = 0;  ///< 1: the light below
        point3Dtype lightDirection;
        double lightAmbient = 0.0;
        double lightDiffuse = 0.0;
        double lightSpecular = 0.0;
        double lightShininess = 1.0;
    };

    using AutoRanges = std::array<DataRange, 3>;

    template <class Archive>
    static void Record(Archive& record, Saved& saved);
    void SetupLight();
    double DrawnFontSize() const;
    CAxes3D* FindAxes(const CTransform3D& t) const;
    BoxPlacement FitAxes(CAxes3D& axes, CTransform3D& t, FitOptions options) const;
    FitOptions RoomForBox() const;
    static CTransform3D* FindTransform(const Objects& objects, int id);
    void LoadObjects(File& file, Objects& objects);
    void TellWhatCannotBeLoaded() const;
    void TellWhatDoesNotShow() const;
    std::vector<PixelRect> LinePlaces() const;
    std::vector<PixelRect> MarkerPlaces() const;
    void PlaceTexts();
    CTransform3D* RequireTransform(CTransform3D* t, const char* operation) const;
    void MakeTransformIDsUnique();
    bool IsLogarithmic(int axis) const {
        return m_AutoScaleMode[static_cast<std::size_t>(axis)] != 0;
    }
    void AddData(AutoRanges& ranges, int axis, const double* values, int n) const;
    void AddData25D(AutoRanges& ranges, const double* x, const double* y, int n,
                    int orientation) const;
    CTransform3D* Scaled(CTransform3D* t, const AutoRanges& ranges, int minorOnly) const;

    COpenGL* m_pOpenGL = nullptr;
    CChartView3D* m_pChartView = nullptr;
    Saved m_Saved;
    Added m_Added;
    std::array<int, 3> m_AutoScaleMode{};
    PixelRect m_Reserved;  ///< pixels at each edge
    PixelRect m_PlotArea;
    double m_CoveredRight = 0.0;
    PixelRect m_BoxArea;
    PixelRect m_InnerArea;
    int m_Signature = kSignature;
    std::unique_ptr<CHeader3D> m_pHeader;
    Objects m_Objects;
};

}  // namespace varnel
