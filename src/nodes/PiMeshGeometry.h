#pragma once
class PbCartesianGrid2D;
class PbCartesianGrid3D;
class PbFixedCellMesh2D;
class PbHexahedronMesh3D;
class PbIndexedMesh2D;
class PbIndexedMesh3D;
class PbIrregularMesh1D;
class PbParalCartesianGrid2D;
class PbParalCartesianGrid3D;
class PbPolarGrid2D;
class PbRegularCartesianGrid2D;
class PbRegularCartesianGrid3D;
class PbRegularMesh1D;
class PbTetrahedronMesh3D;

// The geometry of a mesh (its sizes, coordinates and cells, not its sets),
// compared with that of another mesh of its class or copied into one,
// straight from the meshes' own arrays.  Floats compare by value, NaN equal
// to NaN.  A copy into a duplicating mesh owns its arrays.
class PiMeshGeometry {
public:
    static bool same(const PbCartesianGrid2D& a, const PbCartesianGrid2D& b);
    static void copy(const PbCartesianGrid2D& from, PbCartesianGrid2D& to);
    static bool same(const PbParalCartesianGrid2D& a, const PbParalCartesianGrid2D& b);
    static bool same(const PbPolarGrid2D& a, const PbPolarGrid2D& b);
    static void copy(const PbPolarGrid2D& from, PbPolarGrid2D& to);
    static bool same(const PbRegularCartesianGrid2D& a, const PbRegularCartesianGrid2D& b);
    static void copy(const PbRegularCartesianGrid2D& from, PbRegularCartesianGrid2D& to);
    static bool same(const PbIndexedMesh2D& a, const PbIndexedMesh2D& b);
    static void copy(const PbIndexedMesh2D& from, PbIndexedMesh2D& to);
    static void copy(const PbFixedCellMesh2D& from, PbFixedCellMesh2D& to);

    static bool same(const PbCartesianGrid3D& a, const PbCartesianGrid3D& b);
    static void copy(const PbCartesianGrid3D& from, PbCartesianGrid3D& to);
    static bool same(const PbParalCartesianGrid3D& a, const PbParalCartesianGrid3D& b);
    static bool same(const PbRegularCartesianGrid3D& a, const PbRegularCartesianGrid3D& b);
    static void copy(const PbRegularCartesianGrid3D& from, PbRegularCartesianGrid3D& to);
    static bool same(const PbIndexedMesh3D& a, const PbIndexedMesh3D& b);
    static void copy(const PbIndexedMesh3D& from, PbIndexedMesh3D& to);
    static bool same(const PbTetrahedronMesh3D& a, const PbTetrahedronMesh3D& b);
    static void copy(const PbTetrahedronMesh3D& from, PbTetrahedronMesh3D& to);
    static bool same(const PbHexahedronMesh3D& a, const PbHexahedronMesh3D& b);
    static void copy(const PbHexahedronMesh3D& from, PbHexahedronMesh3D& to);

    static bool same(const PbIrregularMesh1D& a, const PbIrregularMesh1D& b);
    static void copy(const PbIrregularMesh1D& from, PbIrregularMesh1D& to);
    static bool same(const PbRegularMesh1D& a, const PbRegularMesh1D& b);
    static void copy(const PbRegularMesh1D& from, PbRegularMesh1D& to);
};
