// CPolysurface: a mesh of points and of polygons that refer to them by number.
//
// Points are in data values (x, y, z and a value w that travels with the point); polygons lie over
// the x-y plane and carry two colours each. A surface is made from scattered points, which
// DelaunaySurface then joins by triangles, from a grid of points given row by row, from a function
// or from z values over an even grid; or as a copy or a coarser version of another surface. Surface
// and contour charts read the polygons back one by one.
//
// An operation on a surface with nothing open does nothing and returns 0; so do the others for a
// point or polygon number that does not exist.
//
// Copies share what they have in common until one of them is changed, and what a grid says of its
// polygons is not stored before a table is asked for (FindPSPolygon, GetAdjacentPolygonPntr): a
// large grid has its points in memory once, 32 bytes each, and little else.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"
#include "varnel/surface/copy_on_write.h"

namespace varnel {

namespace detail {
class AddedFields;
class PolygonReader;
}  // namespace detail

/// How the cells of a grid become polygons.
enum GridType3D : int {
    GRID_QUADRILATERALS = 0,
    GRID_TRIANGLES = 1,
};

class VARNEL_API CPolysurface {
 public:
    static constexpr int kSignature = 1414;

    // --- Construction: every allocation that fails raises "Array New Error" ("OpenPolysurface") --

    /// Opens nothing.
    CPolysurface() = default;
    /// Loads a file of its own; see Load.
    explicit CPolysurface(const CString& file);
    /// Loads from an open file; see Load.
    explicit CPolysurface(HANDLE file);
    /// Scattered points, with room for their triangles; see SetPolysurfacePoints and
    /// DelaunaySurface, which the caller calls next.
    CPolysurface(const point3Dtype* pts, int start, int n);
    explicit CPolysurface(std::span<const point3Dtype> pts);
    /// A mesh of triangles, three point numbers each, counter-clockwise seen from above, with the
    /// points' w as their values; triangles that name a point that does not exist are left out.
    CPolysurface(std::span<const point3Dtype> pts, std::span<const int> triangles);
    /// Room for points and polygons, all points (0, 0, 0, 0).
    CPolysurface(int numPoints, int maxPolygons, int pointsPerPolygon);
    /// A grid of points; see ConvertRG2PS.
    CPolysurface(const point3Dtype* pts, int rows, int cols, int gridType);
    CPolysurface(std::span<const point3Dtype> pts, int rows, int cols, int gridType);
    /// A function over an even grid; see CreatePolysurfaceFunction.
    CPolysurface(int rows, int cols, double x0, double y0, double x1, double y1,
                 double (*f)(double, double));
    /// z values over an even grid; see CreatePolysurfaceEvenGrid.
    CPolysurface(int rows, int cols, double x0, double y0, double x1, double y1, const double* z,
                 int gridType);
    CPolysurface(int rows, int cols, double x0, double y0, double x1, double y1,
                 std::span<const double> z, int gridType);
    /// A copy; see CopyPolysurface.
    explicit CPolysurface(const CPolysurface* src);
    /// A coarser version of a grid; see ReducePolysurface.
    CPolysurface(const CPolysurface* src, int factor);
    CPolysurface(const CPolysurface& src);
    CPolysurface& operator=(const CPolysurface& src);
    ~CPolysurface();

    int GetSignature() const { return m_Magic; }

    /// Makes this a surface over a grid of rows x cols points, point r * cols + c in row r and
    /// column c. `type` GRID_QUADRILATERALS (0) makes one quadrilateral a cell from the points
    /// given, GRID_TRIANGLES (1) two triangles; 2 and 3 do the same over the points that are
    /// already stored, and ignore `pts`; any other makes no polygons. Cells and their polygons are
    /// numbered row by row; polygons are blue with black as second colour. Raises "Object New
    /// Error" when nothing is open afterwards, and "Parameter Error" when fewer points are stored
    /// than the grid has.
    void ConvertRG2PS(const point3Dtype* pts, int rows, int cols, int type);
    /// "Parameter Error" also for a number of points that is not rows x cols.
    void ConvertRG2PS(std::span<const point3Dtype> pts, int rows, int cols, int type);

    /// z (and w) values over an even grid from (x0, y0) to (x1, y1), row by row, as quadrilaterals
    /// (type 0) or triangles (1), with the neighbour table. Raises "Parameter Error" for fewer than
    /// 2 rows or columns or null values.
    void CreatePolysurfaceEvenGrid(int rows, int cols, double x0, double y0, double x1, double y1,
                                   const double* z, int type);
    /// "Parameter Error" also for a number of values that is not rows x cols.
    void CreatePolysurfaceEvenGrid(int rows, int cols, double x0, double y0, double x1, double y1,
                                   std::span<const double> z, int type);

    /// z = w = f(x, y) over an even grid, joined by DelaunaySurface with the neighbour table.
    /// Raises "Parameter Error" for fewer than 2 rows or columns or a null function.
    void CreatePolysurfaceFunction(int rows, int cols, double x0, double y0, double x1, double y1,
                                   double (*f)(double, double));

    /// Makes this a deep copy. A null source does nothing.
    void CopyPolysurface(const CPolysurface* src);

    /// Makes this a grid of src rows / f by src columns / f points, triangles whatever `type` says:
    /// each point has the mean z of f x f points of the source and the w of the last of them. The z
    /// limits stay 0. Raises "Parameter Error" for f < 1 and for a source without its grid's
    /// points, "Array New Error", and "Object New Error" when no point is left. A null source does
    /// nothing.
    void ReducePolysurface(const CPolysurface* src, int f, int type);

    // --- Points, from 0; the last four of the storage are spare ones ---------------------------

    /// Copies n points into the places from `start` on, as far as there are places (spare ones
    /// included).
    void SetPolysurfacePoints(const point3Dtype* pts, int start, int n);
    void SetPolysurfacePoints(std::span<const point3Dtype> pts, int start);
    void SetOnePolysurfacePoint(int i, const point3Dtype& p);
    /// p becomes (0, 0, 0, 0) when there is no such point.
    void GetOnePolysurfacePoint(int i, point3Dtype& p) const;
    /// The stored points, GetPSNumPoints() and four spare ones; owned by the surface, and valid
    /// until it changes. Null when nothing is open. Copies of a surface whose points were given out
    /// to be written have points of their own; a const surface's remain shared. Raises "Array New
    /// Error" when the points are shared and there is no memory for others.
    point3Dtype* GetPSPoints();
    const point3Dtype* GetPSPoints() const { return m_pPoints.Get(); }
    /// Grows whenever places of points or polygons may have changed, for what is computed from them
    /// and kept. A pointer to the points must not be written through later than it was got.
    long long GetRevision() const { return m_Revision; }
    int GetPSNumPoints() const { return m_Saved.m_NumPoints == 0 ? 0 : m_Saved.m_NumPoints - 4; }
    /// The values w of the points, as many as are given or there are points.
    void SetPSValues(std::span<const double> values);
    /// w = (coordinate - offset) * scale for every stored point; axis 0 x, 1 y, 2 z, any other does
    /// nothing.
    void CopyXYorZtoV(double scale, double offset, int axis);

    // --- Polygons, from 0 ------------------------------------------------------------------------

    /// Sets polygon i: n point numbers and two colours, and counts one polygon more. A polygon for
    /// which there is no room, or that names a point that does not exist, is left out. Raises "Bad
    /// Polysurface Error" when the tables are missing.
    void AddPolysurfacePolygon(int i, const int* indices, int n, const RGBDType& first,
                               const RGBDType& second);
    void AddPolysurfacePolygon(int i, std::span<const int> indices, const RGBDType& first,
                               const RGBDType& second);
    void SetPolysurfaceColors(int i, const RGBDType& first, const RGBDType& second);
    /// The n points of polygon i, its first point again (pts has room for n + 1, see
    /// GetPSLargestPolygon), and its colours. Raises "Bad Polysurface Error" when the tables are
    /// missing.
    void GetPolysurfacePolygon(int i, point3Dtype* pts, int& n, RGBDType& first,
                               RGBDType& second) const;
    /// As GetPolysurfacePolygon, without the colours.
    void GPSPolygon(int i, point3Dtype* pts, int& n) const;
    /// The n point numbers of polygon i, none repeated, and its colours. Raises "Bad Polysurface
    /// Error" when the tables are missing.
    void GetPSPolygonIndices(int i, int* indices, int& n, RGBDType& first, RGBDType& second) const;
    /// The point numbers of polygon i in the surface's own table, valid until it changes. The first
    /// call for a grid makes the table, and raises "Array New Error" when there is no memory.
    const int* FindPSPolygon(int i, int& n) const {
        if (AreCellsImplied()) StoreCells();
        const bool exists = i >= 0 && i < m_Saved.m_MaxPolygons;
        n = exists ? m_pPolygons[i].count : 0;
        return exists ? m_pIndices.Get() + m_pPolygons[i].start : nullptr;
    }
    /// The colours of a polygon of the surface, GetPSNumPolygons() of them.
    void FindPSColors(int i, RGBDType& first, RGBDType& second) const {
        const PolygonColors& colors = m_pColors ? m_pColors[i] : m_Saved.m_CommonColors;
        first = colors.first;
        second = colors.second;
    }
    /// The mean x (axis 0), y (1) or z (2) of polygon i's points; 0 for any other axis.
    double GetPSPMean(int i, int axis) const;
    /// Takes all polygons away; the room for them stays.
    void ResetPolysurfacePolygons();
    int GetPSNumPolygons() const { return m_Saved.m_NumPolygons; }
    int GetPSMaxPolygons() const { return m_Saved.m_MaxPolygons; }
    int GetPSPointsPerPolygon() const { return m_Saved.m_PointsPerPolygon; }
    /// The most points that any of the polygons has had; a buffer for one more holds each of them
    /// closed.
    int GetPSLargestPolygon() const { return m_Saved.m_LargestPolygon; }

    // --- Neighbours: three to a polygon, entry j across its edge from point j to the next

    /// Makes the neighbour table of a grid of triangles; nothing without a grid. (On quadrilaterals
    /// the entries mean nothing.) Raises "Array New Error" ("AllocAdjacentPolygonList").
    void CreateRGAdjacentPolygonList();
    /// The three neighbours of polygon i, -1 where there is none.
    void GetAdjacentPolyList(int i, int* three) const;
    /// The whole table, GetPSMaxPolygons() x 3, owned by the surface and made when it is first
    /// asked for; null when there is none.
    int* GetAdjacentPolygonPntr();
    const int* GetAdjacentPolygonPntr() const;

    // --- The grid that the surface was made from

    BOOL GetEvenGridFlag() const { return m_Saved.m_EvenGridFlag; }
    int GetGridType() const { return m_Saved.m_GridType; }
    int GetRGRows() const { return m_Saved.m_RGRows; }
    int GetRGColumns() const { return m_Saved.m_RGColumns; }
    double GetRGMinX() const { return m_Saved.m_RGMinX; }
    double GetRGMaxX() const { return m_Saved.m_RGMaxX; }
    double GetRGMinY() const { return m_Saved.m_RGMinY; }
    double GetRGMaxY() const { return m_Saved.m_RGMaxY; }
    // The z limits are those of the values that are finite, 0 when none is.
    double GetRGMinZ() const { return m_Saved.m_RGMinZ; }
    double GetRGMaxZ() const { return m_Saved.m_RGMaxZ; }
    double GetRGStepX() const { return m_Saved.m_RGStepX; }
    double GetRGStepY() const { return m_Saved.m_RGStepY; }
    double GetRGRangeX() const { return m_Saved.m_RGRangeX; }
    double GetRGRangeY() const { return m_Saved.m_RGRangeY; }
    double GetRGRangeZ() const { return m_Saved.m_RGRangeZ; }

    /// Whether charts draw the surface as lines only. Saved with a view, not with a surface alone.
    void SetWireFrame(BOOL on) { m_Added.m_WireFrame = on; }
    BOOL GetWireFrame() const { return m_Added.m_WireFrame; }
    /// Hands the attributes that the plain record lacks to the chart file.
    void VisitAdded(detail::AddedFields& fields);

    // --- Triangulation ---------------------------------------------------------------------------

    /// Replaces the polygons by the Delaunay triangles of the points in the x-y plane, counter-
    /// clockwise, blue with white as second colour, and with `adjacency` makes the neighbour table
    /// (without it there is none afterwards). The triangles fill the convex hull of the points. Of
    /// points at the same place only one is joined to others, points that are not finite are not;
    /// fewer than three places, or places on one line, give no triangles. Coordinates below 1e-141
    /// of the largest count as 0. The first three spare points get the corners of a triangle far
    /// outside, in units of the points' larger extent. Raises "Array New Error" ("InitDelaunay",
    /// "Deltri", "bsort", "AllocAdjacentPolygonList").
    void DelaunaySurface(BOOL adjacency);

    // --- Files: the surface's record, in a chart file or as a file of its own

    /// Raises "Disk I/O Error" ("Save"); a null file does nothing.
    void Save(HANDLE file);
    /// Creates or replaces the named file. Raises "Error Opening File for Output" ("Save").
    void Save(const CString& fileName);
    /// Replaces the surface by the one in the file. A record whose tables are not all there, or do
    /// not fit together, gives a surface with nothing open. Raises "Disk I/O Error" ("Load"); a
    /// null file does nothing.
    void Load(HANDLE file);
    /// Raises "Error Opening File for Input" ("Load").
    void Load(const CString& fileName);

 private:
    struct Polygon {
        std::int32_t count = 0;
        std::int32_t start = 0;  ///< of its point numbers in m_pIndices
        bool operator==(const Polygon&) const = default;
    };
    struct PolygonColors {
        RGBDType first;
        RGBDType second;
    };
    /// The polygons over the cells of a grid, row by row.
    ///     q3 ---- q2
    ///      | \    |      one quadrilateral q0 q1 q2 q3, or the triangles q0 q1 q3 and q1 q2 q3
    ///      |    \ |
    ///     q0 ---- q1
    struct GridCells {
        std::int32_t rows = 0;     ///< of points
        std::int32_t columns = 0;  ///< of points
        std::int32_t corners = 0;  ///< of a polygon, 4 or 3; 0 for no polygons

        int Count() const {
            return corners == 0 ? 0 : (rows - 1) * (columns - 1) * (corners == 3 ? 2 : 1);
        }
        int RowOf(int polygon) const {
            return (corners == 3 ? polygon / 2 : polygon) / (columns - 1);
        }
        /// The point numbers of a polygon in that row of cells, and how many.
        int Corners(int polygon, int row, int* numbers) const {
            const int q0 = (corners == 3 ? polygon / 2 : polygon) + row;
            const int q3 = q0 + columns;
            const bool upper = corners == 3 && polygon % 2 != 0;
            numbers[0] = upper ? q0 + 1 : q0;
            numbers[1] = upper ? q3 + 1 : q0 + 1;
            numbers[2] = corners == 4 ? q3 + 1 : q3;
            numbers[3] = q3;
            return corners;
        }
        /// The neighbours of triangle i.
        void Neighbours(int i, int* three) const;
    };
    friend class detail::PolygonReader;

    enum class Tables { STORED, LATER };
    void OpenPolysurface(long long numPoints, long long maxPolygons, int pointsPerPolygon,
                         Tables tables = Tables::STORED);
    void ClosePolysurface();
    void OpenPolygons(long long maxPolygons, int pointsPerPolygon, Tables tables = Tables::STORED);
    void OpenTables();
    bool AreCellsImplied() const { return m_CellsImplied.load(std::memory_order_acquire); }
    bool AreNeighboursImplied() const {
        return m_NeighboursImplied.load(std::memory_order_acquire);
    }
    void StoreCells() const;
    void StoreNeighbours() const;
    void ForgetImpliedTables();
    const int* Corners(int i, int* scratch, int& n) const;
    void RequirePolygons(const char* operation) const;
    bool IsPolygon(int i) const { return i >= 0 && i < m_Saved.m_MaxPolygons; }

    void SetColors(int i, const PolygonColors& colors, const char* operation);
    const PolygonColors& GetColors(int i) const;

    template <class Value>
    void CreateEvenGrid(int rows, int cols, double x0, double y0, double x1, double y1,
                        Value&& value, const char* operation, Tables tables);
    void SetGridLimits();
    void SetGridZLimits();
    void AddGridPolygons(bool triangles);

    void AllocAdjacentPolygonList();
    void FreeAdjacentPolygonList();

    template <class Archive>
    bool Record(Archive& record);
    template <class Archive>
    void RecordPolygon(Archive& record, int i);
    bool CheckTables();

    /// What a record holds of the surface besides its tables, and what closing sets afresh.
    struct Saved {
        std::int32_t m_NumPoints = 0;  ///< spare points included
        std::int32_t m_MaxPolygons = 0;
        std::int32_t m_NumPolygons = 0;
        std::int32_t m_IndexCapacity = 0;
        std::int32_t m_PointsPerPolygon = 0;  ///< nominal
        std::int32_t m_IndexCount = 0;
        std::int32_t m_LargestPolygon = 0;  ///< not in the record, but computed from it
        BOOL m_AdjacentPolyListValid = 0;
        // The grid, in data units.
        BOOL m_EvenGridFlag = 0;
        std::int32_t m_GridType = 1;
        std::int32_t m_RGRows = 0;
        std::int32_t m_RGColumns = 0;
        double m_RGMinX = 0.0;
        double m_RGMaxX = 0.0;
        double m_RGMinY = 0.0;
        double m_RGMaxY = 0.0;
        double m_RGStepX = 0.0;
        double m_RGStepY = 0.0;
        double m_RGRangeX = 0.0;
        double m_RGRangeY = 0.0;
        double m_RGMinZ = 0.0;
        double m_RGMaxZ = 0.0;
        double m_RGRangeZ = 0.0;
        // As long as all polygons have the same colours, which is how surfaces are made, they are
        // kept once: 64 bytes a polygon would be most of a large surface's memory.
        PolygonColors m_CommonColors;
        bool m_HasCommonColors = false;
        // What the tables that are not stored say; neighbours are those of triangles.
        GridCells m_Cells;
        GridCells m_NeighbourCells;
    };

    struct Added {
        BOOL m_WireFrame = 0;
    };

    Saved m_Saved;
    Added m_Added;
    // The tables, as long as the counts say.
    CopyOnWrite<point3Dtype> m_pPoints;
    mutable CopyOnWrite<Polygon> m_pPolygons;
    mutable CopyOnWrite<std::int32_t> m_pIndices;
    CopyOnWrite<PolygonColors> m_pColors;  ///< none while all have the common ones
    mutable CopyOnWrite<std::int32_t> m_pAdjacentPolyList;
    // Whether the tables of polygons, and of neighbours, are yet to be stored. A const surface may
    // be asked for them by several threads.
    mutable std::atomic<bool> m_CellsImplied{false};
    mutable std::atomic<bool> m_NeighboursImplied{false};
    long long m_Revision = 0;
    int m_Magic = kSignature;
};

}  // namespace varnel
