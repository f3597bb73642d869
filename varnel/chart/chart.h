// CChart3D: one chart in a view, a rectangle of the view with its own background, border, light and
// colour table, and with the transforms, axes, data sets, texts, solids and bitmap planes that it
// owns, draws in a fixed order, saves and loads.
//
// Objects come from the factories below and live until the chart is destroyed; the pointers that
// the factories return are not the caller's to delete. Positions in the view are fractions of its
// size from its lower left corner.
#pragma once

#include <span>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/object_list.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"
#include "varnel/foundation/viewports.h"

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

    // --- Factories: the chart owns what they return. A failed allocation raises "Object New
    // Error", a null or missing transform "Transform Parameter Error", with the operation's name
    // -----------

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
    CTransform3D* GetTransform(int index) const { return m_TransformList.GetAt(index); }
    CAxes3D* GetAxes(int index) const { return m_AxesList.GetAt(index); }
    CChartObj3D* GetChartObj(int index) const { return m_ChartObjList.GetAt(index); }
    CTextObj3D* GetChartTextObj(int index) const { return m_TextList.GetAt(index); }
    CAuxObj3D* GetAuxObj(int index) const { return m_AuxObjList.GetAt(index); }
    CDIBObj3D* GetDIBObj(int index) const { return m_DIBObjList.GetAt(index); }
    int GetNumTransforms() const { return m_TransformList.GetCount(); }
    int GetNumAxes() const { return m_AxesList.GetCount(); }
    int GetNumChartObjs() const { return m_ChartObjList.GetCount(); }
    int GetNumChartTextObjs() const { return m_TextList.GetCount(); }
    int GetNumAuxObjs() const { return m_AuxObjList.GetCount(); }
    int GetNumDIBObjs() const { return m_DIBObjList.GetCount(); }

    // --- Attributes --------------------------------------------------------------------------

    /// 0: the chart is not drawn, not even its background. Default 1.
    void EnableChart(int on) { m_ChartEnable = on; }
    int GetChartEnable() const { return m_ChartEnable; }
    void EnableBorder(int on) { m_BorderEnable = on; }
    int GetBorderEnable() const { return m_BorderEnable; }
    /// Width of the border in pixels. Default 1.
    void SetBorderThickness(double width) { m_BorderThickness = width; }
    double GetBorderThickness() const { return m_BorderThickness; }
    void SetBorderColor(const RGBDType& c) { m_BorderColor = c; }
    RGBDType GetBorderColor() const { return m_BorderColor; }
    void SetChartBkColor(const RGBDType& c) { m_ChartBkColor = c; }
    RGBDType GetChartBkColor() const { return m_ChartBkColor; }
    /// Scale of the chart's text: the height of an em in device units (the chart is 2 high).
    /// Default 0.1.
    void SetFontSize(double size) { m_FontSize = size; }
    double GetFontSize() const { return m_FontSize; }
    /// Further factor on the height of all text of the chart. Default 1.
    void SetFontHeightSF(double factor) { m_FontHeightSF = factor; }
    double GetFontHeightSF() const { return m_FontHeightSF; }
    /// Factor on the aspect of text, besides the aspect of the chart's viewport. Default 1.
    void SetViewAspect(double aspect) { m_ViewAspect = aspect; }
    double GetViewAspect() const { return m_ViewAspect; }
    /// Direction of the light, z up. Default (0, 1, 1).
    void SetLightPosition(const point3Dtype& p) { m_LightPosition = p; }
    point3Dtype GetLightPosition() const { return m_LightPosition; }
    /// Code 4609 the diffuse colour, LIGHT_MODEL_AMBIENT the ambient one; others are ignored.
    void SetLightComponent(int code, const RGBDType& c);
    /// The same two; (0, 0, 0, 0) for any other code.
    RGBDType GetLightComponent(int code) const;

    /// Which coordinate of a vertex is turned into a texture colour: 0 x, 1 y, 3 the value w, other
    /// numbers z; negative (the default, -1): the chart uses no texture.
    void SetTextureMode(int mode) { m_TextureMode = mode; }
    int GetTextureMode() const { return m_TextureMode; }
    /// Copies n colours for values from min to max; n outside 0..258 or a null array changes
    /// nothing.
    void SetTextureColorArray(const RGBDType* colors, double min, double max, int n);
    /// Copies the valid colours and the range out; null pointers are skipped.
    void GetTextureColorArray(RGBDType* colors, double* min, double* max) const;
    int GetNumTextureColors() const { return m_NumTextureColors; }
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
    /// is 3.
    bool ColorSurfaceByValue(CChartObj3D* surfaceObject, std::span<const double> values,
                             const CString& colorMap);

    /// Places the chart in the view, in fractions of the view's size.
    void SetChartPosition(const GLViewRType& p);
    GLViewRType GetChartPosition() const { return m_ChartPosition; }
    /// The viewport in pixels of the view; drawing recomputes it from the position.
    void SetChartViewport(const GLViewportType& v);
    GLViewportType GetChartViewport() const { return m_ChartViewport; }

    /// Hands the font factors to the context and to all transforms.
    void SetFontFactors();

    // --- Automatic scaling: round limits and tics from data; NaN is no data --------------------

    /// Widens a range to round limits; `minorOnly` non-zero rounds to minor tics only.
    static void RoundAxis(double& min, double& max, int minorOnly);
    /// Chooses tics for a range: where they start, their spacing, how many make a major one and the
    /// decimals of the labels.
    static void CalcAxisTicMarks(double min, double max, double& ticOrigin, double& ticSpace,
                                 int& ticsPerMajor, int& decimals);
    /// A new transform with the rounded limits of n points.
    CTransform3D* AutoTransform3D(const point3Dtype* pts, int n, int minorOnly);
    CTransform3D* AutoTransformPolysurface(CPolysurface* ps, int minorOnly);
    /// Limits for n values y over x drawn at depths 0..depth; orientation 1 puts x on the y axis.
    static void MinMaxValues25D(const double* x, const double* y, int n, double depth,
                                int orientation, int minorOnly, point3Dtype& min, point3Dtype& max);
    CTransform3D* AutoTransform25D(const double* x, const double* y, int n, double depth,
                                   int orientation, int minorOnly);
    /// Over nSets sets, each rounded on its own. The maximum never falls below 1e-100.
    CTransform3D* AutoTransformN25D(double** x, double** y, const int* counts, int nSets,
                                    double depth, int orientation, int minorOnly);
    /// Over nGroups rows of n values that share x; `base` can only lower the minimum.
    CTransform3D* AutoTransformGroup25D(const double* x, const double* y, double base, int n,
                                        int nGroups, double depth, int orientation, int stacked,
                                        int minorOnly);
    /// New axes over the transform's limits, with tics, labels and colours that show.
    CAxes3D* AutoAxes(CTransform3D* t);

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
    /// Identifiers of transforms are made unique within the chart first.
    void Save(HANDLE file);
    /// Reads the record into a chart without objects; on one that has some, nothing is done. The
    /// chart must be bound to a view (InitChart3D) for its objects to be bound.
    void Load(HANDLE file);

    static int nSelfID;  ///< charts made so far; saved and restored

    /// Hands what the plain record lacks, of this and of what it owns, to the chart file.
    void VisitAdded(detail::AddedFields& fields);

    template <class Archive>
    void Record(Archive& record);

 private:
    CTransform3D* RequireTransform(CTransform3D* t, const char* operation) const;
    void MakeTransformIDsUnique();

    COpenGL* m_pOpenGL = nullptr;
    CChartView3D* m_pChartView = nullptr;
    double m_ViewAspect = 1.0;
    double m_ViewportAspect = 1.0;
    double m_FontHeightSF = 1.0;
    double m_FontSize = 0.1;
    double m_Spare = 0.05;
    double m_BorderThickness = 1.0;
    int m_ChartEnable = 1;
    int m_BorderEnable = 1;
    GLViewportType m_ChartViewport;
    GLViewRType m_ChartPosition;
    point3Dtype m_LightPosition;
    RGBDType m_ChartBkColor;
    RGBDType m_BorderColor;
    RGBDType m_TextureColors[kTextureColors];
    RGBDType m_DiffuseLight;
    RGBDType m_AmbientLight;
    double m_TextureMin = 0.0;
    double m_TextureMax = 1.0;
    int m_TextureMode = -1;
    int m_NumTextureColors = 0;
    int m_Signature = kSignature;
    std::unique_ptr<CHeader3D> m_pHeader;
    ObjectList<CTransform3D> m_TransformList;
    ObjectList<CAxes3D> m_AxesList;
    ObjectList<CTextObj3D> m_TextList;
    ObjectList<CChartObj3D> m_ChartObjList;
    ObjectList<CAuxObj3D> m_AuxObjList;
    ObjectList<CDIBObj3D> m_DIBObjList;
};

}  // namespace varnel
