// CDIBObj3D: a picture on a flat rectangle inside a chart, an image on a wall or a logo on a plane.
//
// Three points span the rectangle: point 1, its neighbour point 2 along z, and the opposite corner
// point 3. Its sides run along z and along the line from point 1 to point 3 seen from above. The
// points are data coordinates, which move with the scale of the transform, or normalized ones (see
// transform.h), which do not. The picture stands upright with its lower left corner at point 1 and
// is drawn without light. Copies share the picture, not the place.
#pragma once

#include <memory>

#include "varnel/bitmap/dib.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"

namespace varnel {

namespace detail {
class AddedFields;
}

class COpenGL;
class CTransform3D;

class VARNEL_API CDIBObj3D {
 public:
    static constexpr int kSignature = 1010;

    /// How often InitDIBObj succeeded; the first word of every record.
    static int nSelfID;

    /// No picture, context or transform; draws nothing before InitDIBObj.
    CDIBObj3D();
    /// The picture of a file on the default rectangle. Context and transform are not owned and not
    /// checked. Raises "Object New Error" ("CDIBObj3D") without memory, and what CDib raises.
    CDIBObj3D(COpenGL* gl, CTransform3D* transform, const CString& file);

    int GetSignature() const { return m_Magic; }

    /// Gives every attribute its default and lets go of the picture; context and transform stay.
    void InitDIBObjDefaults();

    /// Binds the object to a live context ("OpenGL Parameter Error") and transform ("Transform
    /// Parameter Error"), neither owned, and loads the picture of the file that is named ("Object
    /// New Error" without memory, and what CDib raises). After a Load, a file that cannot be opened
    /// is told through the notice channel instead, and the picture is empty: black. Every call that
    /// succeeds counts in the number that records begin with.
    void InitDIBObj(COpenGL* gl, CTransform3D* transform);

    /// Names another file and loads it at once. Raises "Object New Error" ("SetDIBFilename")
    /// without memory, and what CDib raises; then the object keeps the new name and has no picture.
    void SetDIBFilename(const CString& file);
    CString GetDIBFilename() const { return m_Saved.m_DIBFilename; }

    /// Where the pixels of the next file that is loaded are looked for, a code of DibOffset: 0 (the
    /// default) right after the colour table, 1 where the file says.
    void SetDIBOffset(int offset) { m_Added.offset = offset; }
    int GetDIBOffset() const { return m_Added.offset; }

    /// The picture, null when none was loaded. Lives as long as an object has it.
    const CDib* GetDib() const { return m_pDib.get(); }

    /// Places the rectangle in data coordinates.
    void SetPlanePoints(const point3Dtype& p1, const point3Dtype& p2, const point3Dtype& p3);
    void GetPlanePoints(point3Dtype& p1, point3Dtype& p2, point3Dtype& p3) const;
    /// Places the rectangle in normalized coordinates. Default (0, 0, 0), (0, 0, 1), (1, 0, 1).
    void SetNormPlanePoints(const point3Dtype& p1, const point3Dtype& p2, const point3Dtype& p3);
    /// The normalized corners given, or those of the last drawing.
    void GetNormPlanePoints(point3Dtype& p1, point3Dtype& p2, point3Dtype& p3) const;

    /// Repeats the picture x times in each direction; the second argument has no effect.
    void SetRepeatFactors(int x, int y);
    void GetRepeatFactors(int& x, int& y) const;

    /// The identifier of the object's transform, by which records name it.
    int GetTransformID() const { return m_Saved.m_TransformID; }
    void SetTransformID(int id) { m_Saved.m_TransformID = id; }
    CTransform3D* GetTransform() const { return m_pTransform; }

    /// Draws the picture. Nothing is drawn without picture, context or transform, or where a corner
    /// is not finite.
    void DrawDIBObj();

    /// Writes the record: 212 bytes and the file's name. A failing medium raises "Disk I/O Error";
    /// a null file does nothing.
    void Save(HANDLE file);
    /// Reads a record. The picture itself follows with InitDIBObj.
    void Load(HANDLE file);

    template <class Archive>
    void Record(Archive& record);

    /// Hands the attributes that the record lacks to the chart file. Where that brings another
    /// place of the pixels, the picture is loaded again.
    void VisitAdded(detail::AddedFields& fields);

 private:
    void LoadPicture(const char* operation);
    DibOffset PixelOffset() const;
    std::shared_ptr<CDib> OpenSavedPicture(const char* operation) const;

    /// The attributes, as records keep them.
    struct Saved {
        int m_TransformID = 0;
        point3Dtype m_PlanePoint1 = {0.0, 0.0, 0.0, 0.0};  ///< data coordinates
        point3Dtype m_PlanePoint2 = {0.0, 0.0, 1.0, 0.0};
        point3Dtype m_PlanePoint3 = {1.0, 0.0, 1.0, 0.0};
        point3Dtype m_NormPlanePoint1 = {0.0, 0.0, 0.0, 0.0};  ///< normalized ones
        point3Dtype m_NormPlanePoint2 = {0.0, 0.0, 1.0, 0.0};
        point3Dtype m_NormPlanePoint3 = {1.0, 0.0, 1.0, 0.0};
        int m_RepeatX = 1;
        int m_RepeatY = 1;
        BOOL m_NormFlag = 0;  ///< the normalized points hold
        CString m_DIBFilename;
    };

    /// The attributes that records do not have.
    struct Added {
        int offset = DIB_IGNORE_OFFSET;
    };

    COpenGL* m_pOpenGL = nullptr;
    CTransform3D* m_pTransform = nullptr;
    std::shared_ptr<CDib> m_pDib;
    Saved m_Saved;
    Added m_Added;
    bool m_FromFile = false;  ///< the name comes from a chart file and was not loaded yet
    CString m_ChartFile;      ///< which one
    int m_Magic = kSignature;
};

}  // namespace varnel
