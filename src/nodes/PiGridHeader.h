#pragma once
class PbGrid2D;
class PbGrid3D;
class PiMeshSink;
class PiMeshSource;

// The header of a grid given by coordinate arrays: its sizes, then one
// array per axis, holding either one value per node or one value per index
// along the axis, and, for a surface grid, the 2D/3D flag and one z per
// node.
class PiGridHeader {
public:
    struct Layout {
        const char* sizes;     // comment of the sizes line
        const char* arrays[3]; // comments of the x, y and z arrays
        bool perNode;          // x and y (and z in 3D) hold one value per node
    };

    // A surface grid with getGeometry(numX, numY, x, y, z).
    template <class Grid>
    static void write2D(PiMeshSink& sink, const Layout& layout, const Grid& grid) {
        int numX, numY;
        const float *x, *y, *z;
        grid.getGeometry(numX, numY, x, y, z);
        write2D(sink, layout, numX, numY, x, y, z);
    }
    static bool read2D(PiMeshSource& source, const Layout& layout, PbGrid2D& grid);
    static void write3D(PiMeshSink& sink, const Layout& layout, const PbGrid3D& grid);
    static bool read3D(PiMeshSource& source, const Layout& layout, PbGrid3D& grid);

private:
    static void write2D(PiMeshSink& sink, const Layout& layout, int numX, int numY, const float* x,
                        const float* y, const float* z);
};
