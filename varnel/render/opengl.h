// COpenGL: the one object through which the library talks to OpenGL.
//
// A chart view owns one. It renders into the view's off-screen image, never into a window. Vertices
// are given in the coordinates of the current model-view matrix; the projection is the identity, so
// that matrix leads straight to normalized device coordinates: x right, y up, near = -1, the viewer
// on the side of negative z. Widths are in pixels of the image.
//
// Vertices are taken to normalized device coordinates in double precision here, not by OpenGL in
// floats, so that data far from the origin (time stamps, say) do not jitter. Between the start and
// the end of one object's drawing (CollectScope) primitives are collected and handed over in few
// large calls, fills before the lines on them; outside of it each primitive is drawn at once.
//
// Drawing with OpenGL calls of one's own: while this context is current on the thread and nothing
// is collected, OpenGL's matrix, current colour, lighting, texture switch and viewport follow the
// operations below at once; during a collection, SyncState brings them up to date. A context of the
// host's that is current instead is never touched. In turn, the primitives below take nothing from
// OpenGL but the depth test, depth mask, blending and the like: they replace its matrix (what was
// loaded with glLoadMatrix is ignored), and a projection other than the identity or a perspective
// draws them wrongly, because faces that look away are left out.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/object_list.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"
#include "varnel/foundation/viewports.h"
#include "varnel/platform/device_context.h"
#include "varnel/render/codes.h"

namespace varnel {

class CDIBSection;
class CFont3D;

namespace detail {
class MeshNormals;
class MeshPainter;
class MeshSource;
class Renderer;
class SceneSink;
struct SurfaceStyle;
}  // namespace detail

class VARNEL_API COpenGL {
 public:
    static constexpr int kSignature = 1717;

    // --- Construction and lifetime -----------------------------------------------------------

    /// A context that renders into `pDIB`, current on this thread, with one font. `pDC` is the
    /// device whose colour depth is used; neither is owned and both must outlive Close(). Raises
    /// "Pixel Format Error" ("InitContext") when no driver gives a usable context; what() says what
    /// was tried, and with report mode 1 the notice channel is told, too.
    COpenGL(CDC* pDC, CDIBSection* pDIB);

    /// Deletes the fonts; calls no OpenGL once Close() was called.
    ~COpenGL();
    COpenGL(const COpenGL&) = delete;
    COpenGL& operator=(const COpenGL&) = delete;

    int GetSignature() const { return m_Magic; }

    /// Gives every attribute its default, creates the context and the first font.
    void SetOpenGLDefaults();
    /// Creates the context and its fixed state: identity matrix, no lighting, no clipping, lines
    /// one pixel wide, a viewport that covers the image, no colour table. Called again, it replaces
    /// the context.
    void InitContext();
    /// Chooses and sets the pixel format of the image's device context.
    BOOL bSetupPixelFormat();
    /// Ends the context; drawing operations do nothing afterwards.
    void Close();

    /// Makes this context the thread's current one. Every operation below that reaches OpenGL does
    /// so by itself. 0 once the context is closed.
    BOOL MakeCurrent();
    /// The same; where the context cannot be made current (it is so on another thread, the process
    /// was forked) `why` says it, and stays empty once it is closed.
    BOOL MakeCurrent(CString& why);
    void MakeNonCurrent();
    /// Ends the drawing of a picture: OpenGL is told to get on with it. There is one buffer only.
    void ExchangeBuffers();
    /// Waits for OpenGL and brings the image's memory up to date.
    void ReadBack();
    /// The same for what the viewports set since the last call cover, which saves much time in an
    /// image that is larger than what is drawn in it.
    void ReadBackDrawn();

    /// The memory device context of the image; not owned by the caller.
    CDC* GetClientDC() const { return m_pClientDC; }
    CDIBSection* GetDIBSection() const { return m_pDIBSection; }

    // --- Frame and state ---------------------------------------------------------------------

    /// Sets the colour that Clear uses; its alpha is always 0, whatever `a` is.
    void SetClearColor(double r, double g, double b, double a);
    /// Clears inside the viewport what the mask says: CLEAR_COLOR (16384), CLEAR_DEPTH (256) or
    /// CLEAR_COLOR_AND_DEPTH (16640).
    void Clear(int mask);

    /// COLOR_MODE_FLAT (0): flat colours; anything else: lit (COLOR_MODE_LIT 1, COLOR_MODE_VALUE
    /// 2). Takes effect at once.
    void SetColorMode(int mode);
    int GetColorMode() const { return m_ColorMode; }

    /// Sets the viewport, in pixels from the lower left, and confines drawing to it.
    void SetViewport(const GLViewportType& viewport);
    /// The viewport that OpenGL has.
    void GetViewport(GLViewportType& viewport);
    void SetOutputViewport(const GLViewportType& viewport) { m_OutputViewport = viewport; }
    void GetOutputViewport(GLViewportType& viewport) const { viewport = m_OutputViewport; }

    /// Sets the six planes of the clip box in the coordinates of the current matrix. p1 is the
    /// lower corner when p1.x <= p2.x, else the upper one: x alone decides for all three axes. Each
    /// plane is moved by 0.00123456 of the box's extent: a little inward at the low side, so that
    /// what lies exactly on the minimum is cut, and outward at the high side.
    void SetClipLimits(const point3Dtype& p1, const point3Dtype& p2);
    void EnableClipping(BOOL on);

    /// Samples a pixel for antialiasing: 0 (none, the default) or what the driver has that is
    /// nearest. Changing it loses the picture drawn so far.
    void SetSamples(int samples);
    int GetSamples() const;

    /// Draws into another bitmap than the section's until null is given; line widths are multiplied
    /// by `lineScale`, so that a larger picture has the same look. What was drawn is lost. False,
    /// and nothing changed, when the driver cannot draw at that size.
    bool SetOutput(const HBITMAP& bitmap, double lineScale);

    /// Whether fills that get a frame are pushed back a little, so that the frame is seen whole
    /// (the default).
    void SetFrameOffset(BOOL on);
    BOOL GetFrameOffset() const;

    /// Whether polygons that cover no sample of the image, and segments that leave no pixel's
    /// diamond, are left out (the default). The picture is the same either way; turn it off to see
    /// everything in OpenGL's feedback or selection mode.
    void SetCulling(BOOL on);
    BOOL GetCulling() const;

    /// Whether the alpha of fill, outline and symbol colours and of pictures counts. What has one
    /// below 1 is then kept until DrawTransparent, and needs its viewport and colour table until
    /// then; turning it off drops what was not drawn. Default 0.
    void SetTransparency(BOOL on);
    /// Draws what can be seen through over what is opaque, from the back to the front.
    void DrawTransparent();

    /// Whether PolyFillAbs3D outlines each polygon in the frame colour. Default 0.
    void SetFrameFilled(BOOL on) { m_FrameFilled = on; }
    BOOL GetFrameFilled() const { return m_FrameFilled; }

    /// Draws what was collected and gives OpenGL the matrix, the current colour, lighting, texture
    /// switch and line width that this object holds. Call it before OpenGL calls of your own inside
    /// a collection, and after calls that changed one of these.
    void SyncState();

    /// Hands everything drawn from now on to another consumer than the image, until null is given;
    /// not owned. The state of OpenGL follows as before, the image keeps its picture.
    void SetSink(detail::SceneSink* sink);
    /// What the primitives drawn from now on stand for: the number of a chart object and of a datum
    /// in it; -1, the default, none. Only consumers that ask for it are told.
    void SetElement(int object, int index);

    // --- Matrices: operations on the model-view matrix, column-major as in OpenGL ------------
    // OpenGL's own matrix follows at once while this context is current on the thread and nothing
    // is collected, else with the next drawing or SyncState(). A foreign context stays untouched.

    void LoadIdentity();
    void PushMatrix();
    /// Does nothing when there is nothing to pop.
    void PopMatrix();
    /// Replaces the matrix by 16 doubles; null does nothing.
    void LoadMatrixTransform(const double* m);
    void Translate3D(double x, double y, double z);
    void Scale3D(double x, double y, double z);
    /// Rotates about x (axis 0), y (1) or z (2); any other axis does nothing.
    void Rotate3D(double degrees, int axis);
    /// Copies the 16 doubles of the matrix out, in double precision.
    void GetModelView(double m[16]) const;

    // --- Light: one directional light --------------------------------------------------------

    /// Stores a light component: LIGHT_AMBIENT (4608), LIGHT_DIFFUSE (4609), LIGHT_SPECULAR (4610)
    /// or LIGHT_MODEL_AMBIENT (12345); other codes are ignored. LoadLight sends it.
    void SetLightComponent(int which, const RGBDType& c);
    /// The stored component, (0, 0, 0, 0) for other codes.
    RGBDType GetLightComponent(int which) const;
    /// Stores the direction of the light in chart axes (z up): sent as (x, z, -y).
    void SetLightPosition(const point3Dtype& p);
    /// Sends a component to OpenGL: LIGHT_AMBIENT (4608) both ambient colours, LIGHT_DIFFUSE
    /// (4609), LIGHT_SPECULAR (4610), LIGHT_POSITION (4611) the position, seen through the current
    /// matrix.
    void LoadLight(int which);
    /// A white highlight of this brightness where polygons mirror the light; the larger `shininess`
    /// (1 or more), the smaller it is. Default 0: none. Takes effect at once.
    void SetGloss(double brightness, double shininess);
    /// 1: no surface is brighter than its own colour, but for gloss, and one that faces the viewer
    /// has it exactly if the light's colours together make 1 or more. The more a surface is turned
    /// aside the darker it is, down to the ambient light: slowly towards the light, the quicker
    /// away from it the farther the light stands aside. 0, the default: as OpenGL adds them up.
    void SetLightLimit(int on);
    /// Whether polygons that look away from the viewer are lit with their normal turned. Default 0.
    void SetTwoSided(BOOL on) { m_TwoSided = on; }
    BOOL GetTwoSided() const { return m_TwoSided; }
    /// Enables an OpenGL capability.
    void EnableLight(int cap);

    // --- Colour by value: a one-dimensional texture ------------------------------------------

    /// Which coordinate of a vertex drives the texture: TEXTURE_X (0), TEXTURE_Y (1), TEXTURE_VALUE
    /// (3) the value w, anything else z. A mode of 0 or more also sets the texture's parameters:
    /// nearest colour, repeated beyond its ends, replacing the lit colour.
    void SetTextureMode(int mode);
    void EnableTexture(BOOL on);
    /// Whether the light is seen on colours by value: they are then darkened by factors from
    /// `least` in the dark to `most` where a polygon has as much light as one that faces the
    /// viewer. Default 0: the colours replace the lit ones.
    void SetTextureLighting(BOOL on, double least = 0.75, double most = 1.0);
    BOOL GetTextureLighting() const { return m_TextureLighting; }
    /// 1: a polygon with a corner whose value is not finite is drawn in kNoDataColor. 0, the
    /// default: OpenGL is given that value, and llvmpipe takes the first colour.
    void SetNoDataGrey(BOOL on) { m_NoDataGrey = on; }
    BOOL GetNoDataGrey() const { return m_NoDataGrey; }
    /// The first n colours become the texture, the last one repeated up to a power of two (at least
    /// 2). Values from min are mapped onto it; the maximum used is max * size / n. A number outside
    /// 1..256 or a null array changes nothing.
    void SetTextureColorArray(const RGBDType* colors, double min, double max, int n);
    /// Another number than 1..256 raises "Parameter Error".
    void SetTextureColorArray(std::span<const RGBDType> colors, double min, double max);
    /// A grey ramp of 256 entries with the alpha of a run of colours from c1 to c2 in bands of
    /// `step` entries. A step below 1 changes nothing.
    void SetTextureEndpointColors(const RGBDType& c1, const RGBDType& c2, double min, double max,
                                  int step);
    /// Copies the 256 entries of the texture out.
    void CopyTextureArray(RGBDType* out) const;
    /// w = (coordinate - offset) * scale for each point; axis 0 x, 1 y, 2 z, any other leaves w.
    void CopyXYorZtoV(point3Dtype* pts, double scale, double offset, int axis, int n);
    void CopyXYorZtoV(std::span<point3Dtype> pts, double scale, double offset, int axis);

    // --- Palette of an 8-bit target ----------------------------------------------------------

    void InitPaletteConstants();
    /// The byte of the `bits`-wide component (1, 2 or 3) at `shift` of a palette index; 0 for other
    /// widths.
    BYTE ComponentFromIndex(int index, unsigned bits, unsigned shift) const;
    /// Builds and selects the palette, where the pixel format needs one.
    void CreateRGBPalette();
    /// Fills the first n entries (at most 256) for a pixel format.
    void CreateLogPalette(const PIXELFORMATDESCRIPTOR* pfd, LOGPALETTE* pal, int n) const;

    // --- Fonts: one at a time ----------------------------------------------------------------

    /// Replaces the font by a new one and returns the number of fonts, 1. Pointers to the old font
    /// are invalid afterwards.
    int NewFont3D();
    /// Registers a face with the current font, see CFont3D::RegisterFont; non-zero on success.
    int RegisterFont(const CString& name, double size, int weight, int italic, int numChars);
    int RegisterFont(const CString& name, double size, int weight, int italic, int underline,
                     int numChars);
    void SetCurrentFont(int index) { m_CurrentFont = index; }
    int GetCurrentFont() const { return m_CurrentFont; }
    /// The current font, null when the index set names none.
    CFont3D* GetFont() const { return m_FontList.GetAt(m_CurrentFont); }
    void SetFontScaleFactor(double factor);
    double GetFontScaleFactor() const;

    /// Takes `count` characters from what a picture may have in labels, 200,000, so that a mistyped
    /// step between labels costs no minutes. False, and a diagnostic, when they are used up; with
    /// the picture's end (ExchangeBuffers, ReadBack) all are there again.
    bool TakeLabelCharacters(std::size_t count);
    /// The same for a tic or a grid line, of which a picture has at most 400,000.
    bool TakeAxisLine();

    // --- Style -------------------------------------------------------------------------------

    // Colour components run from 0 to 1; one above 1 is told as a diagnostic and counts as 1.

    void SetLineColor3D(const RGBDType& c);
    RGBDType GetLineColor3D() const { return m_LineColor; }
    /// Style 0..15 of the stipple table, LINE_SOLID to LINE_DASH_DOT_DOT (others draw solid), width
    /// in pixels, colour.
    void SetLineStyle3D(int style, double width, const RGBDType& color);
    void SetLineStyle(int style) { m_LineStyle = style; }
    int GetLineStyle() const { return m_LineStyle; }
    /// How often each bit of a stipple pattern is repeated, 1..256. Default 1.
    void SetLineStyleFactor(int factor) { m_LineStyleFactor = factor; }
    int GetLineStyleFactor() const { return m_LineStyleFactor; }
    /// A width of 0 or less keeps the width of the line drawn before.
    void SetLineWidth3D(double width) { m_LineWidth = static_cast<float>(width); }
    double GetLineWidth3D() const { return static_cast<double>(m_LineWidth); }
    /// LINE_JOINS_ROUND: lines, polylines and dashes are drawn as areas of the screen with round
    /// joins, solid ones with round ends, without gaps whatever the antialiasing; the length of
    /// dashes is measured along the line. LINE_JOINS_MITRED: the same with pointed joins, which are
    /// cut off where their point would be farther than `limit` widths from the inner corner, and
    /// straight ends. LINE_JOINS_NONE (the default): as OpenGL draws lines, each segment by itself.
    /// Outlines of polygons are as before.
    void SetLineJoins(int kind, double limit = 4.0) {
        m_LineJoins = kind;
        m_MitreLimit = limit;
    }
    int GetLineJoins() const { return m_LineJoins; }
    double GetMitreLimit() const { return m_MitreLimit; }
    /// 1: lines without joins and outlines of polygons, too, become areas of the screen where a
    /// pixel has several samples: drivers may leave gaps in lines there; and the walls of boxes
    /// stand a little behind what lies on them. 0, the default: as OpenGL draws lines.
    void SetLineAreas(BOOL on);
    BOOL GetLineAreas() const;
    /// Pixels per inch of the picture, above 0; other values are ignored. Default 96.
    void SetResolution(double dpi);
    double GetResolution() const { return m_Resolution; }
    /// 1: all widths of lines, and the lengths of their dashes, are in points, 1/72 inch; 0 (the
    /// default): in pixels.
    void SetLineUnits(int points) { m_LineUnits = points; }
    int GetLineUnits() const { return m_LineUnits; }
    /// Pixels in a unit of width.
    double GetLineUnit() const {
        return (m_LineUnits != 0 ? m_Resolution / 72.0 : 1.0) * m_WidthFactor;
    }
    /// A factor on all widths of lines and the lengths of their dashes. Default 1.
    void SetWidthFactor(double factor) { m_WidthFactor = factor; }
    /// The markers of MarkerAbs3D: a MarkerCode, a size in points (at most 1000) and the width of
    /// the outline as that of lines, half of it inside; 0: none.
    void SetMarker3D(int kind, double size, double outlineWidth);
    /// Stores the normal of lines; when `absolute`, its components without their signs.
    void SetLineNormal(const point3Dtype& n, BOOL absolute);
    point3Dtype GetLineNormal() const { return m_LineNormal; }
    /// Stores the fill, second and frame colours and, in colour modes 0 and 1, makes `fill` the
    /// current colour; see SetCurrentColor.
    void SetFillStyle3D(const RGBDType& fill, const RGBDType& second, const RGBDType& frame);
    RGBDType GetFillColor() const { return m_FillColor; }
    RGBDType GetFillColor2() const { return m_FillColor2; }
    RGBDType GetFrameColor() const { return m_FrameColor; }
    /// Makes a colour the current one, whatever the colour mode. OpenGL's current colour follows at
    /// once while this context is current on the thread and nothing is collected.
    void SetCurrentColor(const RGBDType& color);

    // --- Lines -------------------------------------------------------------------------------

    /// One segment in the line style.
    void LineAbs3D(const point3Dtype& p1, const point3Dtype& p2);
    /// A polyline: one Start, any number of Appends, one End. Each vertex has the colour that is
    /// current when it is given, so that a fill style set between changes it. Anything else drawn
    /// before the End drops the polyline, or what of a very long one was not drawn yet.
    void StartLineAbs3D(const point3Dtype& p);
    void AppendLineAbs3D(const point3Dtype& p);
    void EndLineAbs3D(const point3Dtype& p);

    /// A marker that faces the viewer, its middle at a point, in flat colours.
    void MarkerAbs3D(const point3Dtype& p, const RGBDType& fill, const RGBDType& outline);

    // --- Polygons: n points, the first usually repeated at the end ----------------------------

    /// The outline, closed, solid, in the line colour.
    void PolyAbs3D(const point3Dtype* pts, int n);
    void PolyAbs3D(std::span<const point3Dtype> pts);
    /// Filled in the fill colour with the normal of its first three points, and framed when
    /// SetFrameFilled is on. Fewer than three points, a null array or a coordinate that is not
    /// finite draws nothing.
    void PolyFillAbs3D(const point3Dtype* pts, int n);
    void PolyFillAbs3D(std::span<const point3Dtype> pts);
    /// An open polyline, solid, in the frame colour.
    void Frame3D(const point3Dtype* pts, int n);
    void Frame3D(std::span<const point3Dtype> pts);

    /// The polygons of a mesh as PolyFillAbs3D or Frame3D would draw each in turn, `drawing` being
    /// MESH_FILLED, MESH_WIRE or MESH_WIRE_IN_LINE_COLOR, much faster. The element of each polygon
    /// (SetElement) is its number in the mesh. With `normals` of the mesh it is lit smoothly.
    void DrawMesh(const detail::MeshSource& mesh, int drawing,
                  const detail::MeshNormals* normals = nullptr);

    // --- Solids ------------------------------------------------------------------------------
    // A hexahedron has corners 0..3 at the bottom and 4..7 above them. A hexahedron given inside
    // out is drawn with its faces turned outward.

    /// Draws the faces whose flags are set, in the order of the faces' table: flag 0 (0 3 7 4),
    /// 5 (1 5 6 2), 1 (0 4 5 1), 2 (3 2 6 7), 3 (0 1 2 3), 4 (4 7 6 5). A negative flag marks a
    /// seam to a neighbouring solid: neither the face nor the edges around it are drawn.
    void DrawSolidObject3D(const point3Dtype* corners, const RGBDType& fill, const RGBDType& frame,
                           const int* faceFlags);
    /// `count` hexahedra that share layers of four corners, 4 * count + 4 corners in all.
    void DrawComplexObject3D(const point3Dtype* corners, int count, const RGBDType& fill,
                             const RGBDType& frame);
    /// All layers; a number of corners that is no multiple of four raises "Parameter Error".
    void DrawComplexObject3D(std::span<const point3Dtype> corners, const RGBDType& fill,
                             const RGBDType& frame);
    /// A box of w x h x d (along x, y, z) about the origin.
    void DrawCubeSolidObject3D(double w, double h, double d, const RGBDType& fill,
                               const RGBDType& frame, const int* faceFlags);
    void DrawCube(double size, const RGBDType& fill, const RGBDType& frame);
    /// A box with the corner (x, y, z) and the extents dx, dy, dz, which may be negative.
    void DrawPrism3D(double x, double y, double z, double dx, double dy, double dz,
                     const RGBDType& fill, const RGBDType& frame);
    /// A rectangle of w x h in the plane z = 0 about the origin; d is not used.
    void DrawSimpleZPlane(double w, double h, double d, const RGBDType& fill,
                          const RGBDType& frame);
    // Symbols of w x h x d about the origin.
    void DrawDiamondSolidObject3D(double w, double h, double d, const RGBDType& fill,
                                  const RGBDType& frame);
    void DrawPyramidSolidObject3D(double w, double h, double d, const RGBDType& fill,
                                  const RGBDType& frame);
    void DrawPlusSolidObject3D(double w, double h, double d, const RGBDType& fill,
                               const RGBDType& frame);
    void DrawArrowSolidObject3D(double w, double h, double d, const RGBDType& fill,
                                const RGBDType& frame);
    void DrawHourglassSolidObject3D(double w, double h, double d, const RGBDType& fill,
                                    const RGBDType& frame);
    /// One of the shapes AUX_SPHERE (1) to AUX_CONE (10) of render/aux_shapes.h, solid in the fill
    /// colour or as wire in the line colour; other codes draw nothing. After a wire shape the
    /// colour mode is 0.
    void DrawAuxObject(int shape, int solid, const point3Dtype& size);
    /// The solid shape, pushed back a little as fills are that get a frame (SetFrameOffset), so
    /// that wire drawn over it is seen whole.
    void DrawAuxObjectBehind(int shape, const point3Dtype& size);

    // --- Texts and pictures ------------------------------------------------------------------

    /// A text on one line, valid UTF-8, in the current colour, in ems from the origin of the
    /// current matrix. A `halo` above 0 surrounds the letters with a colour (none given: the
    /// background's), that many ems wide, and puts both a little in front of where they are.
    void DrawTextRun(const CFont3D& font, std::string_view text, double halo = 0.0,
                     const RGBDType* haloColor = nullptr);
    /// A picture on the quadrilateral of four corners (lower left, upper left, upper right, lower
    /// right) with the normal (0, 1, 0), repeated over it. `pixels` holds width x height times red,
    /// green, blue and alpha, the lowest row first; neither side may be longer than
    /// GetLargestPicture(). With SetTransparency they must live until DrawTransparent.
    void DrawPicture(const BYTE* pixels, int width, int height, const point3Dtype corners[4],
                     int repeatX, int repeatY);
    /// The longest side of a picture in pixels.
    int GetLargestPicture();

    /// The normal of planes 0, 3 (0, 0, 1), 1, 4 (0, 1, 0) and 2, 5 (1, 0, 0); numbers repeat every
    /// three, negative ones give (0, 0, 0) unless they are multiples of 3. w is left alone.
    void GetAxesPlaneNormal(int plane, point3Dtype& normal) const;

    /// The stipple pattern of a style; solid outside 0..15.
    WORD GetLineStipple(int style) const;

 private:
    friend class CollectScope;
    friend class MatrixScope;

    void BeginCollect();
    void EndCollect();
    void FinishPrimitive();
    bool Ready();
    bool Follows() const;
    void DropOpenLine();
    void FinishRun();
    void Outline(const point3Dtype* pts, int n, const RGBDType& color, bool closed);
    void MatrixChanged();
    void UseLineWidth();
    void SetupLine();
    detail::SurfaceStyle Style() const;
    void FillLogPalette(const PIXELFORMATDESCRIPTOR& pfd, LOGPALETTE& pal, int n) const;
    void UploadTexture(int size);

    RGBDType m_FillColor;
    RGBDType m_FillColor2;
    RGBDType m_FrameColor;
    RGBDType m_LineColor;
    RGBDType m_CurrentColor;
    int m_LineStyle;
    int m_TextureMode;
    BOOL m_TextureEnabled;
    BOOL m_TextureLighting = 0;
    BOOL m_NoDataGrey = 0;
    double m_TextureLeast = 0.75;
    double m_TextureMost = 1.0;
    BOOL m_TwoSided = 0;
    BOOL m_FrameFilled;
    float m_LineWidth;
    int m_ColorMode;
    int m_SavedColorMode = 0;
    BYTE m_TextureArray[256][4] = {};
    double m_TextureScale = 1.0;
    double m_TextureOffset = 0.0;
    point3Dtype m_LineNormal;
    RGBFType m_LightModelAmbient;
    RGBFType m_LightAmbient;
    RGBFType m_LightDiffuse;
    RGBFType m_LightSpecular;
    float m_LightPosition[4];
    WORD m_LineStipple[16];
    int m_LineStyleFactor;
    double m_MitreLimit = 4.0;
    int m_LineJoins = 0;
    int m_LineUnits = 0;
    double m_WidthFactor = 1.0;
    double m_Resolution = 96.0;  ///< pixels per inch
    BYTE m_ThreeBitRamp[8];
    BYTE m_TwoBitRamp[4];
    BYTE m_OneBitRamp[2];
    HPALETTE m_Palette;
    GLViewportType m_Viewport;
    GLViewportType m_OutputViewport;
    ObjectList<CFont3D> m_FontList;
    int m_CurrentFont = 0;
    int m_FontCount = 0;
    std::size_t m_LabelCharacters = 0;
    std::size_t m_AxisLines = 0;
    CDC* m_pDC;
    CDC* m_pClientDC;
    CDIBSection* m_pDIBSection;
    std::unique_ptr<detail::Renderer> m_Renderer;
    std::unique_ptr<detail::MeshPainter> m_Meshes;
    int m_Magic = kSignature;
};

/// Collects the primitives drawn during its life and draws them at its end.
class VARNEL_API CollectScope {
 public:
    explicit CollectScope(COpenGL& gl) : m_GL(gl) { gl.BeginCollect(); }
    ~CollectScope() { m_GL.EndCollect(); }
    CollectScope(const CollectScope&) = delete;
    CollectScope& operator=(const CollectScope&) = delete;

 private:
    COpenGL& m_GL;
};

/// While one lives, OpenGL is not told of changes of the matrix; it learns the last one when the
/// outermost ends. Without a context it does nothing.
class VARNEL_API MatrixScope {
 public:
    explicit MatrixScope(COpenGL* gl);
    ~MatrixScope();
    MatrixScope(const MatrixScope&) = delete;
    MatrixScope& operator=(const MatrixScope&) = delete;

 private:
    COpenGL* m_pOpenGL;
};

}  // namespace varnel
