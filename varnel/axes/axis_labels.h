// CAxisLabels3D: the labels along one axis and the axis' title.
//
// Labels stand at the major tics of their axis, off it in a direction (0 -x .. 5 +z, as for tics)
// by an offset in units of the tic length; they are text objects, built anew on every drawing. Text
// planes are 0, 1, 2 (fixed in the chart: x-y, x-z, y-z) and 3 (facing the viewer); rotations are
// whole degrees in the plane. Justification: x 0 start, 1 centre, 2 end; y 0 bottom, 1 centre, 2
// top; -1 lets a table choose.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "varnel/axes/axis.h"
#include "varnel/axes/text_object.h"
#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/object_list.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"

namespace varnel {

namespace detail {
class AddedFields;
struct AxisContent;
struct PlacedText;
struct TextPlace;
}  // namespace detail

/// How numbers at an axis are written; plain numbers may be given as well.
enum LabelFormat3D : int {
    LABELS_FIXED = 0,        ///< 1234.5
    LABELS_EXPONENTIAL = 1,  ///< 1.2e+03
    LABELS_ENGINEERING = 2,  ///< 1.5K, 3M
    LABELS_GENERAL = 3,      ///< the shorter of the first two
};

/// Which labels at special places may be shown, as a sum.
enum LabelEnds3D : int {
    LABELS_AT_MIN = 1,
    LABELS_AT_CENTER = 2,  ///< at the centre point of the tics
    LABELS_AT_MAX = 4,
    LABELS_AT_ALL = 7,
};

class VARNEL_API CAxisLabels3D {
 public:
    static constexpr int kSignature = 404;

    /// How often InitAxisLabelsDefaults ran; the first word of every record, which Load takes over.
    static int nSelfID;

    /// Defaults alone. Raises "Object New Error" ("InitAxisLabelsDefaults") without memory for the
    /// title.
    CAxisLabels3D();
    /// Labels of an axis; nothing that is given is owned.
    CAxisLabels3D(COpenGL* gl, CTransform3D* transform, CAxis3D* axis);
    ~CAxisLabels3D();
    CAxisLabels3D(const CAxisLabels3D&) = delete;
    CAxisLabels3D& operator=(const CAxisLabels3D&) = delete;

    int GetSignature() const { return m_nSignature; }

    /// Gives every member its default, with a new, empty title, and counts the object.
    void InitAxisLabelsDefaults();
    /// Binds the labels to a context ("OpenGL Parameter Error"), a transform ("Transform Parameter
    /// Error") and an axis; the title's plane follows from the axis type.
    void InitAxisLabels(COpenGL* gl, CTransform3D* transform, CAxis3D* axis);

    /// The identifier of the transform, for binding again after Load.
    int GetTransformID() const { return m_Saved.m_nTransformID; }

    // --- Labels ----------------------------------------------------------------------------------

    /// Text plane, rotation, direction, decimals, end mask, colour and user strings at once, and
    /// switches the labels on. The strings are copied; null leaves those set before.
    void SetAxisLabels(int plane, int rotation, int dir, int decimals, int ends,
                       const RGBDType& color, const CString* strings = nullptr, int count = 0);
    void SetAxisLabels(int plane, int rotation, int dir, int decimals, int ends,
                       const RGBDType& color, std::span<const CString> strings);
    /// A code of TextPlane3D: 0 x-y, 1 x-z, 2 y-z, 3 facing the viewer (the default).
    void SetAxisLabelsPlane(int plane) { m_Saved.m_LabelsPlane = plane; }
    int GetAxisLabelsPlane() const { return m_Saved.m_LabelsPlane; }
    /// Where the labels and the title stand off the axis: a code of AxisDirection3D, 0 -x, 1 -y,
    /// 2 -z, 3 +x, 4 +y, 5 +z.
    void SetAxisLabelsDir(int dir) { m_Saved.m_LabelsDir = dir; }
    int GetAxisLabelsDir() const { return m_Saved.m_LabelsDir; }
    void SetAxisLabelsRotation(int degrees) { m_Saved.m_LabelsRotation = degrees; }
    int GetAxisLabelsRotation() const { return m_Saved.m_LabelsRotation; }
    /// Digits after the point; significant digits for format 3.
    void SetAxisLabelsDecimals(int decimals) { m_Saved.m_LabelsDecimals = decimals; }
    int GetAxisLabelsDecimals() const { return m_Saved.m_LabelsDecimals; }
    /// A code of LabelFormat3D: 0 fixed, 1 exponential, 2 engineering, 3 general; others as fixed.
    void SetAxisLabelsFormat(int format) { m_Saved.m_LabelsFormat = format; }
    int GetAxisLabelsFormat() const { return m_Saved.m_LabelsFormat; }
    /// A sum of codes of LabelEnds3D: 1 at the minimum, 2 at the centre point, 4 at the maximum.
    /// Default 7.
    void SetAxisLabelsEnds(int mask) { m_Saved.m_LabelsEnds = mask; }
    int GetAxisLabelsEnds() const { return m_Saved.m_LabelsEnds; }
    /// A code of TextJustify3D: -1 automatic (the default), 0 start, 1 centre, 2 end; for y 0
    /// bottom, 1 centre, 2 top.
    void SetAxisLabelsXJust(int just) { m_Saved.m_LabelsXJust = just; }
    int GetAxisLabelsXJust() const { return m_Saved.m_LabelsXJust; }
    void SetAxisLabelsYJust(int just) { m_Saved.m_LabelsYJust = just; }
    int GetAxisLabelsYJust() const { return m_Saved.m_LabelsYJust; }
    /// Factor on the character size.
    void SetAxisLabelsSize(double size) { m_Saved.m_LabelsSize = size; }
    double GetAxisLabelsSize() const { return m_Saved.m_LabelsSize; }
    /// Distance from the axis, in units of the major tic length or the wall thickness of the axis,
    /// whichever is larger.
    void SetAxisLabelsTicOffset(double offset) { m_Saved.m_LabelsTicOffset = offset; }
    double GetAxisLabelsTicOffset() const { return m_Saved.m_LabelsTicOffset; }
    void SetAxisLabelsColor(const RGBDType& c) { m_Saved.m_LabelsColor = c; }
    RGBDType GetAxisLabelsColor() const { return m_Saved.m_LabelsColor; }
    void SetAxisLabelsFlipX(int flip) { m_Saved.m_LabelsFlipX = flip; }
    int GetAxisLabelsFlipX() const { return m_Saved.m_LabelsFlipX; }
    void SetAxisLabelsFlipY(int flip) { m_Saved.m_LabelsFlipY = flip; }
    int GetAxisLabelsFlipY() const { return m_Saved.m_LabelsFlipY; }
    /// Kept, but neither used nor saved: labels follow the major tics of the axis.
    void SetAxisLabelsNthTic(int n) { m_Added.m_LabelsNthTic = n; }
    int GetAxisLabelsNthTic() const { return m_Added.m_LabelsNthTic; }
    /// The halo of labels and title (CTextObj3D::SetHalo). Default 0.
    void SetAxisLabelsHalo(double ems) { m_Added.halo = ems; }
    double GetAxisLabelsHalo() const { return m_Added.halo; }
    void SetTextureEnable(int on) { m_Saved.m_bTextureEnable = on; }
    int GetTextureEnable() const { return m_Saved.m_bTextureEnable; }

    // --- User strings instead of numbers: those from the centre point up, then those down --------

    /// Copies `count` strings and uses them; null lets go of those set before.
    void SetAxisLabelsStrings(const CString* strings, int count);
    void SetAxisLabelsStrings(std::span<const CString> strings) { InitTicStringsStorage(strings); }
    /// As above, but null does nothing. Raises "Object New Error" without memory or for a negative
    /// count.
    void InitTicStringsStorage(const CString* strings, int count);
    void InitTicStringsStorage(std::span<const CString> strings);
    /// Lets go of the strings; their number and the switch stay.
    void DeleteTicStringsStorage();
    void EnableAxisLabelsStrings(int on) { m_Saved.m_bStringsEnable = on; }
    int GetAxisLabelsStringEnable() const { return m_Saved.m_bStringsEnable; }
    int GetNumAxisLabelsStrings() const { return m_Saved.m_NumLabelsStrings; }
    /// The copies, owned here; null when there are none.
    CString* GetAxisLabelsStrings() const { return m_pLabelsStrings.get(); }

    /// Labels at values of their own instead of at the major tics, in data units; an empty span
    /// returns to the tics. Those outside of the limits are left out, their strings too.
    void SetAxisLabelsValues(std::span<const double> values);
    std::span<const double> GetAxisLabelsValues() const { return m_Added.values; }

    /// The suffixes of the engineering format: none, thousands, millions, (US) billions, trillions.
    void SetEngString(const CString& suffixes) { m_Added.m_EngString = suffixes; }
    CString GetEngString() const { return m_Added.m_EngString; }

    // --- Title -----------------------------------------------------------------------------------

    /// All of it at once, without the automatic choice of rotation and justification; the fourth
    /// number is ignored.
    void SetAxisTitle(int plane, int rotation, int dir, int ignored, int xJust, int yJust,
                      const RGBDType& color, const CString& title);
    void SetAxisTitleString(const CString& title);
    void GetAxisTitleString(CString& title) const;
    /// A code of TextPlane3D, as for labels. InitAxisLabels sets it from the axis.
    void SetAxisTitlePlane(int plane) { m_Saved.m_TitlePlane = plane; }
    int GetAxisTitlePlane() const { return m_Saved.m_TitlePlane; }
    /// Kept and saved; the title stands off in the direction of the labels.
    void SetAxisTitleDir(int dir) { m_Saved.m_TitleDir = dir; }
    int GetAxisTitleDir() const { return m_Saved.m_TitleDir; }
    void SetAxisTitleRotation(int degrees) { m_Saved.m_TitleRotation = degrees; }
    int GetAxisTitleRotation() const { return m_Saved.m_TitleRotation; }
    /// A code of TextJustify3D: 0 start or bottom, 1 centre, 2 end or top. Chosen anew at every
    /// drawing unless SetAxisTitle was called.
    void SetAxisTitleXJust(int just) { m_Saved.m_TitleXJust = just; }
    int GetAxisTitleXJust() const { return m_Saved.m_TitleXJust; }
    void SetAxisTitleYJust(int just) { m_Saved.m_TitleYJust = just; }
    int GetAxisTitleYJust() const { return m_Saved.m_TitleYJust; }
    void SetAxisTitleSize(double size) { m_Saved.m_TitleSize = size; }
    double GetAxisTitleSize() const { return m_Saved.m_TitleSize; }
    void SetAxisTitleColor(const RGBDType& c) { m_Saved.m_TitleColor = c; }
    RGBDType GetAxisTitleColor() const { return m_Saved.m_TitleColor; }
    void SetAxisTitleFlipX(int flip) { m_Saved.m_TitleFlipX = flip; }
    int GetAxisTitleFlipX() const { return m_Saved.m_TitleFlipX; }
    void SetAxisTitleFlipY(int flip) { m_Saved.m_TitleFlipY = flip; }
    int GetAxisTitleFlipY() const { return m_Saved.m_TitleFlipY; }

    // --- Calculation and drawing -----------------------------------------------------------------

    /// Builds the labels anew and draws them and the title.
    void DrawAxisLabels();
    /// Builds the label objects and places the title, by the scale of the axis. Nothing while the
    /// labels are not switched on.
    void CalcAxisLabels();
    /// Labels at the major tics: centre + i * n * tic space.
    void CalcLinAxisLabels();
    /// Labels at every decade of the centre point when the n-th tic is below 2, else at 1, 2 and 5
    /// times each decade; none, and no title, when it is 0.
    void CalcLogAxisLabels();
    /// The label objects of the last calculation, in the order of their calculation; null outside.
    CTextObj3D* GetLabelObj(int index) const { return m_LabelObjs.GetAt(index); }
    int GetNumLabelObjs() const { return m_LabelObjs.GetCount(); }
    CTextObj3D* GetTitleObj() const { return m_pTitleObj.get(); }
    /// Appends a label object and returns their number. Raises "Object New Error".
    int NewLabelObj(const CString& s);
    void FreeLabelObjs();
    /// The largest width of the label objects, in device units; 0 without any.
    double GetMaxLabelLength() const;
    /// The plane of the title of an axis: x 1, y 2, z 1, others 0.
    static int CalcTitlePlane(int axisType);
    /// Turns the context's matrix into the plane of the labels; the chart's rotation is undone for
    /// plane 3.
    void TransformTextPlane(const point3Dtype& chartRotation);

    /// The record: fields, user strings and the title's own record. A failing medium raises "Disk
    /// I/O Error"; a null file does nothing.
    void Save(HANDLE file);
    void Load(HANDLE file);

    /// Hands what the plain record lacks, of this and of what it owns, to the chart file.
    void VisitAdded(detail::AddedFields& fields);

    template <class Archive>
    void Record(Archive& record);

 private:
    friend class CAxes3D;
    struct Run;

    CString AxisNumToString(double value, int format) const;
    int CXJAL3(int axisType, int plane, int rotation) const;
    int CYJAL3(int axisType, int plane, int rotation) const;
    void InitLabelJustTable();
    bool CanCalculate() const;
    Run StartRun() const;
    template <class Visit>
    void WalkLabels(const Run& run, Visit&& visit) const;
    CString LabelAt(int index, double value) const;
    bool HasNames() const { return m_pLabelsStrings != nullptr && m_Saved.m_bStringsEnable != 0; }
    void DrawCalculated();
    void FillContent(detail::AxisContent& content) const;
    void DrawPlaced(std::span<const detail::PlacedText> texts, const detail::TextPlace& place);
    double LoweredIntercept(double z) const;
    void CalcLabel(Run& run, double value);
    void calcticpoint(point3Dtype& p, double length, int dir) const;
    void calctitlepoint(point3Dtype& p, double length, int dir) const;
    int DirectionInBox() const;
    void CalcAxisTitle(const CAxis3D* axis, const point3Dtype& lastLabel);
    template <class Archive>
    void RecordStrings(Archive& record);

    /// The attributes, as records keep them.
    struct Saved {
        int m_nTransformID = 0;
        int m_AxisType = 0;
        int m_LabelsPlane = TEXTPLANE_VIEWER;
        int m_LabelsDir = DIR_MINUS_X;
        int m_LabelsRotation = 0;  ///< degrees
        int m_LabelsDecimals = 0;
        int m_LabelsFormat = LABELS_FIXED;
        int m_LabelsEnds = LABELS_AT_ALL;
        int m_LabelsXJust = TEXT_JUSTIFY_AUTO;
        int m_LabelsYJust = TEXT_JUSTIFY_AUTO;
        int m_NumLabelsStrings = 0;
        int m_TitlePlane = TEXTPLANE_VIEWER;
        int m_TitleDir = DIR_MINUS_X;
        int m_TitleRotation = 0;
        int m_TitleXJust = TEXT_START;
        int m_TitleYJust = TEXT_CENTER;
        int m_bAutoTitle = 1;  ///< rotation and justification of the title follow the axis
        double m_LabelsTicOffset = 1.5;  ///< in units of the tic length or the wall thickness
        double m_LabelsSize = 1.0;
        double m_TitleSize = 1.0;
        int m_JustTable[3][4][2][2] = {};  ///< of InitLabelJustTable
        int m_bLabelsEnable = 0;
        int m_bTextureEnable = 0;
        int m_bStringsEnable = 0;
        int m_LabelsFlipX = 0;
        int m_LabelsFlipY = 0;
        int m_TitleFlipX = 0;
        int m_TitleFlipY = 0;
        RGBDType m_LabelsColor = {0.0, 0.0, 0.0, 1.0};
        RGBDType m_TitleColor;  ///< alpha is 0, and has no effect
    };

    /// The attributes that records do not have.
    struct Added {
        int m_LabelsNthTic = 1;
        CString m_EngString = " KMBT";
        std::vector<double> values;  ///< data units
        double halo = 0.0;           ///< ems
    };

    COpenGL* m_pOpenGL = nullptr;
    CAxis3D* m_pAxis = nullptr;
    CTransform3D* m_pTransform = nullptr;
    ObjectList<CTextObj3D> m_LabelObjs;
    Saved m_Saved;
    std::unique_ptr<CTextObj3D> m_pTitleObj;
    std::unique_ptr<CString[]> m_pLabelsStrings;
    Added m_Added;
    int m_nSignature = kSignature;
};

}  // namespace varnel
